#pragma once

namespace ombrelune {

/// Root of the engines.
class KProcess {
public:
    KProcess() = default;
    virtual ~KProcess() = default;
    KProcess(KProcess const&) = delete;
    KProcess& operator=(KProcess const&) = delete;

    virtual void Init(int /*step*/) {}
    virtual void Process() {}
};

} // namespace ombrelune
