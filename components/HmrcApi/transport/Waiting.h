#pragma once

// Waiting that the user can end.

#include <functional>
#include <string>

#include "HmrcApi/Export.h"

namespace HmrcApi
{

/// Waits through Afx::Clock::Sleep in short slices; false as soon as `cancelled` (which may be empty) says so.
HMRCAPI_API bool WaitUnless(const std::function<bool()>& cancelled, unsigned milliseconds);

/// Shows the window system's wait window while it lives.
class HMRCAPI_API WaitWindow
{
public:
    explicit WaitWindow(const std::string& text);
    ~WaitWindow();
    WaitWindow(const WaitWindow&) = delete;
    WaitWindow& operator=(const WaitWindow&) = delete;

    /// The user chose Cancel; false without a window system.
    static bool IsCancelled();
};

} // namespace HmrcApi
