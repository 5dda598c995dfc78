#pragma once

// Message boxes that are answered and not shown, because the program itself says what they say.

#include <memory>

#include "Afx/windows/WindowSystem.h"

namespace Desk
{

/// While it lives. Everything else, such as the wait window and its Cancel, is the window system's from before.
class QuietMessages
{
public:
    QuietMessages();
    ~QuietMessages();
    QuietMessages(const QuietMessages&) = delete;
    QuietMessages& operator=(const QuietMessages&) = delete;
};

} // namespace Desk
