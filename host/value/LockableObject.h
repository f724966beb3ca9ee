#pragma once

#include <mutex>

namespace ombrelune {

/// Base of objects that several threads fill.
class LockableObject {
public:
    void ObtainLock() { mutex_.lock(); }
    void ReleaseLock() { mutex_.unlock(); }

private:
    std::mutex mutex_;
};

} // namespace ombrelune
