#pragma once

// How a command ends other than well.

#include <stdexcept>
#include <string>

namespace Morv
{

enum class Exit : int
{
    Done = 0,
    Refused = 1,        // refused, or errors were reported
    BadInput = 2,       // bad arguments or input
    CannotOpen = 3,     // the practice cannot be opened or written
    HmrcUnreachable = 4 // no request got an answer
};

/// Ends the command with one line: what, where, how to mend it.
class CommandError : public std::runtime_error
{
public:
    CommandError(Exit exitCode, std::string errorCode, const std::string& message, std::string remedy)
        : std::runtime_error(message), exit(exitCode), code(std::move(errorCode)), action(std::move(remedy))
    {}

    Exit exit;
    std::string code;   // for programs, e.g. UNKNOWN_CLIENT
    std::string action; // what the user can do
};

} // namespace Morv
