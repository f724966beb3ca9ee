#include "apps/ombrelune/FrameTimeout.h"

#include <algorithm>

namespace ombrelune::app {

FrameTimeout::FrameTimeout(double seconds, std::function<void(int frame)> onOverrun)
    : seconds_(std::min(seconds, 1e8)), onOverrun_(std::move(onOverrun))
{
    if (seconds_ > 0.0) thread_ = std::thread([this] { Watch(); });
}

FrameTimeout::~FrameTimeout()
{
    {
        std::lock_guard guard(lock_);
        ended_ = true;
    }
    changed_.notify_all();
    if (thread_.joinable()) thread_.join();
}

FrameTimeout::Scope::Scope(FrameTimeout& timeout, int frame, double spent) : timeout_(timeout)
{
    auto const left = std::chrono::duration<double>(timeout.seconds_ - spent);
    auto const end = Clock::now() + std::chrono::duration_cast<Clock::duration>(left);
    std::lock_guard guard(timeout_.lock_);
    place_ = timeout_.frames_.emplace(end, frame);
    timeout_.changed_.notify_all();
}

FrameTimeout::Scope::~Scope()
{
    std::lock_guard guard(timeout_.lock_);
    timeout_.frames_.erase(place_);
}

void FrameTimeout::Watch()
{
    std::unique_lock guard(lock_);
    while (!ended_) {
        if (frames_.empty()) {
            changed_.wait(guard);
            continue;
        }
        auto const [end, frame] = *frames_.begin();
        if (Clock::now() < end) {
            changed_.wait_until(guard, end);
            continue;
        }
        guard.unlock();
        return onOverrun_(frame);
    }
}

} // namespace ombrelune::app
