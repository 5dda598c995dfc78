#pragma once

// Numbers in a text that a user gave.

#include <charconv>
#include <string_view>
#include <system_error>

namespace Morv
{

/// The whole of `text` as a number of base ten: no blanks, no plus, nothing behind it.
template<class Number>
bool ReadWhole(std::string_view text, Number& value)
{
    const auto read = std::from_chars(text.data(), text.data() + text.size(), value);
    return read.ec == std::errc() && read.ptr == text.data() + text.size();
}

} // namespace Morv
