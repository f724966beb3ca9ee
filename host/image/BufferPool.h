#pragma once

#include <cstddef>
#include <memory>

namespace ombrelune {

struct ReturnToPool {
    std::size_t size = 0;
    void operator()(std::byte* buffer) const;
};

/// Picture memory, aligned to 64 bytes; goes back to the pool when it is let go. Contents are undefined.
using PooledBuffer = std::unique_ptr<std::byte, ReturnToPool>;

/// Takes a buffer of at least `size` bytes from the pool, or fresh from the system. Fresh pages cost three
/// times a copy, which is why they are kept. Null when memory is out or size is 0. Thread-safe.
PooledBuffer TakeBuffer(std::size_t size);

/// Picture memory in use at the moment, and the most there ever was, in bytes.
struct PoolUse {
    std::size_t now = 0, peak = 0;
};
PoolUse BuffersInUse();

/// Free buffers are kept as long as they and those in use stay within this many bytes (default 2 GiB); the
/// oldest goes first.
void SetPoolLimit(std::size_t bytes);

} // namespace ombrelune
