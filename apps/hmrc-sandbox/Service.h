#pragma once

// HMRC's rules without a socket.

#include <mutex>

#include "Http.h"
#include "State.h"

namespace Sandbox
{

/// HMRC's rules without a socket: one answer for each request. May be called from any number of threads.
class Service
{
public:
    explicit Service(Options options);

    /// Never throws for what a request holds.
    Answer Handle(const Call& call);

private:
    std::mutex m_mutex; // over m_state
    Options m_options;
    State m_state;
};

} // namespace Sandbox
