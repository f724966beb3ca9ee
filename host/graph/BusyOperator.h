#pragma once

#include <mutex>
#include <stop_token>

namespace ombrelune {

class Operator;

/// Holds an operator while one of its functions runs, since a tool keeps what it works on in members: nobody
/// else, be it another renderer, enters it meanwhile. Whoever holds one waits for nothing but threads that
/// work for it, so there is no deadlock.
class BusyOperator {
public:
    explicit BusyOperator(Operator& op);
    /// Gives up when a stop is requested.
    BusyOperator(Operator& op, std::stop_token const& stop);
    /// Does not wait.
    BusyOperator(Operator& op, std::try_to_lock_t);
    ~BusyOperator();
    BusyOperator(BusyOperator const&) = delete;
    BusyOperator& operator=(BusyOperator const&) = delete;

    /// Whether it is held.
    explicit operator bool() const { return op_ != nullptr; }

private:
    void Take(Operator& op);

    Operator* op_ = nullptr;
};

} // namespace ombrelune
