#pragma once

// National Insurance numbers and Unique Taxpayer References.

#include "Afx/text/CString.h"
#include "MorvUt/Export.h"

/// The text has the shape of a National Insurance number: AB123456C, AB123456 or 12A34567. Letters of either case;
/// which letters, and whether the number was ever issued, is not looked at. Blanks are refused. Null reads as empty.
MORVUT_API bool IsValidNINumber(const char* text) noexcept;

/// The text is a Unique Taxpayer Reference: ten digits, the first of which is the check digit of the others. Null reads
/// as empty.
MORVUT_API bool IsValidUTR(const char* text) noexcept;

/// Why the two refuse a text, for the user: what is wrong, with place and length; empty when they take it. A text that
/// is refused is never repeated, so the reason may be logged.
MORVUT_API CString WhyNotNINumber(const char* text);
MORVUT_API CString WhyNotUTR(const char* text);
