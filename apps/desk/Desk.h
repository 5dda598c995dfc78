#pragma once

// The desktop program, apart from its windows.

#include <string>

#include "Afx/system/Application.h"

namespace Desk
{

/// The application object; the profile keeps the tax year, and what each user's screens looked like.
class DeskApp : public CWinApp
{};

struct DeskOptions
{
    std::string practice;   // empty: it is asked for
    std::string base;       // loopback address in place of HMRC's; empty: HMRC
    std::string helpFolder; // of the pages that Help opens
};

/// Opens the practice, signs a user in, and lets the user work until the list of clients is closed. A practice or a
/// user that is cancelled ends it. The window system is installed, the library started; both are the caller's to end.
void Run(const DeskOptions& options);

} // namespace Desk
