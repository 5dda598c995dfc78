#pragma once

// What windows are told and tell their parents: the constants and structures of Windows, and their equals elsewhere.

#include "Afx/Platform.h"

#ifndef _WIN32
/// A window's handle, which is its address.
using HWND = void*;
using LRESULT = std::intptr_t;

/// A key or a character on its way to the window that has the focus. `lParam` holds the modifiers (Afx::Modifier) that
/// are held down with the key.
struct MSG
{
    HWND hwnd;
    unsigned message; // WM_...
    WPARAM wParam;    // the key (VK_...) or the character
    LPARAM lParam;
};

/// What a control tells its parent beyond a command.
struct NMHDR
{
    HWND hwndFrom;
    std::uintptr_t idFrom;
    unsigned code; // NM_..., LVN_...
};

/// Where a window is about to stand; its handler may change it.
struct WINDOWPOS
{
    HWND hwnd;
    HWND hwndInsertAfter;
    int x, y, cx, cy;
    unsigned flags; // SWP_...
};

inline constexpr unsigned WM_KEYDOWN = 0x100, WM_CHAR = 0x102;
inline constexpr unsigned SWP_NOSIZE = 1, SWP_NOMOVE = 2, SWP_NOZORDER = 4;
inline constexpr int SW_HIDE = 0, SW_SHOW = 5;

inline constexpr unsigned VK_BACK = 8, VK_TAB = 9, VK_RETURN = 13, VK_ESCAPE = 27, VK_SPACE = 32, VK_PRIOR = 33,
                          VK_NEXT = 34, VK_END = 35, VK_HOME = 36, VK_LEFT = 37, VK_UP = 38, VK_RIGHT = 39,
                          VK_DOWN = 40, VK_DELETE = 46, VK_F1 = 112, VK_F2 = 113, VK_F4 = 115, VK_OEM_PERIOD = 190;

// What a control wants of the keys that its dialog would take.
inline constexpr unsigned DLGC_WANTARROWS = 1, DLGC_WANTTAB = 2, DLGC_WANTALLKEYS = 4, DLGC_HASSETSEL = 8,
                          DLGC_WANTCHARS = 128;

// Notifications in a command.
inline constexpr unsigned BN_CLICKED = 0, EN_SETFOCUS = 0x100, EN_KILLFOCUS = 0x200, EN_CHANGE = 0x300,
                          CBN_SELCHANGE = 1, CBN_KILLFOCUS = 4, CBN_EDITCHANGE = 5, CBN_DROPDOWN = 7, CBN_CLOSEUP = 8;
#endif

namespace Afx
{

/// The id of a command is the lowest bits of its first parameter, the notification stands above them.
inline constexpr unsigned kCommandIdBits = 16;
inline constexpr WPARAM kCommandIdMask = 0xFFFF;

/// Keys held down with another one; they add up.
enum Modifier : unsigned
{
    kShift = 1,
    kControl = 2,
    kAlt = 4
};

// Notifications of lists, with the numbers of the common controls.
inline constexpr unsigned kNotifyDoubleClick = static_cast<unsigned>(-3),
                          kNotifyItemChanged = static_cast<unsigned>(-101),
                          kNotifyColumnClick = static_cast<unsigned>(-108),
                          kNotifyKeyDown = static_cast<unsigned>(-155);

/// What a message map routes.
struct MapMessage
{
    enum class Kind
    {
        Command,
        Notify,
        PositionChanging
    };
    Kind kind = Kind::Command;
    unsigned id = 0;               // of the control, menu or key; Command and Notify
    unsigned code = 0;             // the notification
    NMHDR* header = nullptr;       // Notify
    LRESULT* result = nullptr;     // Notify
    WINDOWPOS* position = nullptr; // PositionChanging
};

} // namespace Afx
