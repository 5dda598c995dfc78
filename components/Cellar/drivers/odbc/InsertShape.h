#pragma once

// What a translated INSERT inserts.

#include <cstdint>
#include <string_view>

namespace Cellar::Odbc
{

enum class InsertShape : std::uint8_t
{
    None,   // no INSERT
    OneRow, // VALUES and one pair of brackets, nothing behind
    Rows,   // VALUES and several
    Query
};
InsertShape ShapeOf(std::string_view statement) noexcept;

} // namespace Cellar::Odbc
