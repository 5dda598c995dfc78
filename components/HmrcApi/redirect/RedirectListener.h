#pragma once

// The port at which the user's browser hands over HMRC's answer to an authorisation.

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "HmrcApi/Export.h"

namespace HmrcApi
{

/// What the browser brought.
struct RedirectAnswer
{
    enum class Kind : unsigned char
    {
        Code,
        Denied, // the user refused, or HMRC did
        TimedOut,
        Cancelled
    };
    Kind kind = Kind::TimedOut;
    std::string code;
    std::string description; // why it was denied
};

/// Listens on http://localhost:PORT/callback, on 127.0.0.1 and on ::1, while it lives. An answer without the right
/// state gets an error page and changes nothing, so that no other page can end the dialogue.
class HMRCAPI_API IRedirectListener
{
public:
    virtual ~IRedirectListener();
    virtual unsigned short Port() const noexcept = 0;
    /// Waits for the answer, at most `milliseconds`; asks `cancelled` (which may be empty) ten times a second.
    virtual RedirectAnswer Wait(unsigned milliseconds, const std::function<bool()>& cancelled) = 0;
};

/// Takes the first of `ports` that is free; null when none is, or where HttpProblem() says that nothing can be sent.
/// `state` is the value the answer must carry.
HMRCAPI_API std::unique_ptr<IRedirectListener> OpenRedirectListener(const std::vector<unsigned short>& ports,
                                                                    const std::string& state);

} // namespace HmrcApi
