#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <map>
#include <mutex>
#include <thread>

namespace ombrelune::app {

/// Watches how long frames take, from a thread of its own.
class FrameTimeout {
public:
    using Clock = std::chrono::steady_clock;

    /// @param seconds    0 watches nothing
    /// @param onOverrun  called once, with the frame that took longer, by the watching thread
    FrameTimeout(double seconds, std::function<void(int frame)> onOverrun);
    ~FrameTimeout();
    FrameTimeout(FrameTimeout const&) = delete;
    FrameTimeout& operator=(FrameTimeout const&) = delete;

    /// The frame's time runs while this lives.
    class Scope {
    public:
        /// @param spent  what the frame took already
        Scope(FrameTimeout& timeout, int frame, double spent);
        ~Scope();
        Scope(Scope const&) = delete;
        Scope& operator=(Scope const&) = delete;

    private:
        FrameTimeout& timeout_;
        std::multimap<Clock::time_point, int>::iterator place_;
    };

private:
    void Watch();

    double seconds_;
    std::function<void(int)> onOverrun_;
    std::mutex lock_;
    std::condition_variable changed_;
    std::multimap<Clock::time_point, int> frames_; ///< by the time at which they have to be done
    bool ended_ = false;
    std::thread thread_;
};

} // namespace ombrelune::app
