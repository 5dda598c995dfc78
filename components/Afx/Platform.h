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
// <windows.h> renames these to their A or W forms; they are names of our methods.
#undef SetWindowText
#undef GetWindowText
#undef LoadString
#undef GetMessage
#undef GetObject
#undef DrawText
#undef GetClassName
#undef GetComputerName
#undef FormatMessage
#undef MessageBox
#else
using __int64 = std::int64_t;

/// A globally unique identifier, with the members of the Windows type.
struct GUID
{
    std::uint32_t Data1;
    std::uint16_t Data2;
    std::uint16_t Data3;
    std::uint8_t Data4[8];

    friend bool operator==(const GUID&, const GUID&) = default;
};

/// A device context's handle; only ever passed through.
using HDC = void*;
#endif
