#pragma once

// Passwords of the practice's users, as they are kept: PBKDF2-HMAC-SHA256 with a salt of its own for each.

#include <string_view>

#include "Afx/text/CString.h"

namespace Desk
{

inline constexpr int kShortestPassword = 8; // characters

/// "pbkdf2-sha256$600000$SALT$KEY", salt and key in hexadecimal. Throws std::runtime_error without a cipher.
CString HashPassword(std::string_view password);
/// Whether `hash` was made of that password; false for a text that is no such hash. A tenth of a second or more.
bool IsPassword(std::string_view password, const CString& hash);

} // namespace Desk
