#pragma once

// Text as ODBC takes it: UTF-16.

#include <string>
#include <string_view>

namespace Cellar::Odbc
{

/// Nothing is left out: what is no UTF-8 is read as Windows-1252, as everywhere.
std::u16string ToWide(std::string_view utf8);
/// Appends it in UTF-8; half a pair of surrogates becomes U+FFFD.
void AppendUtf8(std::string& out, std::u16string_view wide);

} // namespace Cellar::Odbc
