#pragma once

// What a request can change.

#include <deque>
#include <map>
#include <optional>
#include <set>
#include <string>

#include "Faults.h"
#include "RequestLog.h"
#include "Tokens.h"

namespace Sandbox
{

/// What the server is started with; a reset keeps it.
struct Options
{
    std::string scenario; // answers every identifier and year that is not primed; empty: those have no data
    Now now = [] { return std::chrono::steady_clock::now(); };
    Issued issued{}; // told of each code and token that is given out; for tests that look for them where none may be
    std::chrono::milliseconds delay{0}; // before each answer but those below /sandbox, as a distant server's
};

/// What a test has switched.
struct Switches
{
    bool denyAuthorisation = false;              // the user says no on the authorise page
    bool refuseRefresh = false;                  // every refresh token counts as withdrawn
    bool refreshInProgress = false;              // every refresh meets another one
    bool throttle = false;                       // the automatic limit of three requests in a second
    std::optional<std::set<std::string>> maySee; // identifiers that the token's user may see; nothing: all
};

/// Everything that a request can change.
struct State
{
    explicit State(const Options& options) : tokens(options.now, options.issued) {}

    Tokens tokens;
    Faults faults;
    RequestLog requests;
    Switches switches;
    std::map<std::string, std::string> primed;  // by data path: the body
    std::map<std::string, std::string> answers; // by data path: a body put there as it is; goes before `primed`
    int testUsers = 0;                          // made so far
    std::deque<TimePoint> recent;               // requests that passed the limit within the last second
};

} // namespace Sandbox
