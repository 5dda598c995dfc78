#pragma once

// The one place that knows the operating system: Windows types and their equals elsewhere.

#include <cstdint>

#ifdef _WIN32
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>
#include <wtypes.h> // DECIMAL
// <windows.h> renames these to their A or W forms; they are names of our methods.
#undef SetWindowText
#undef GetWindowText
#undef LoadString
#undef GetMessage
#undef TextOut
#undef GetObject
#undef DrawText
#undef GetClassName
#undef GetComputerName
#undef SetComputerName
#undef GetCurrentTime
#undef FormatMessage
#undef MessageBox
#undef GetProfileInt
#undef GetProfileString
#undef WriteProfileString
#else
using __int64 = std::int64_t;

/// The two parameters of a window message.
using WPARAM = std::uintptr_t;
using LPARAM = std::intptr_t;

/// A globally unique identifier, with the members of the Windows type.
struct GUID
{
    std::uint32_t Data1;
    std::uint16_t Data2;
    std::uint16_t Data3;
    std::uint8_t Data4[8];

    friend bool operator==(const GUID&, const GUID&) = default;
};

/// OLE's decimal number: 96 bits of magnitude, over 10 to the power of `scale` (0 to 28).
struct DECIMAL
{
    std::uint8_t scale;
    std::uint8_t sign; // 0x80: negative
    std::uint32_t Hi32;
    std::uint64_t Lo64;
};

/// A device context's handle; only ever passed through.
using HDC = void*;
#endif
