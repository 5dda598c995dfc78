#pragma once

// Tables of what goes in and what comes out, kept as text beside the test.

#include <cstdlib>
#include <optional>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>

#include "support/Case.h"

namespace Test
{

/// \n, \r, \t, \b, \\ and \xHH as the characters for which they stand.
std::string Unescaped(const std::string& text);

/// A file that is named as under tests/.
std::string FileText(const std::string& file);

/// The rows below the line "[Suite.Test]", of the running test, in a file that is named as under tests/: fields parted
/// by tabs, in which characters may be escaped; lines that begin with # are no rows. The texts live
/// as long as the program. Throws when there are no rows.
const std::vector<std::vector<const char*>>& FieldsOf(const std::string& file);

/// A text as it stands, with "null" for no text; a number; 0 or 1; "none" for an optional without a value.
template<class T>
T FieldAs(const char* text)
{
    const bool isNone = std::string("none") == text;
    if constexpr (std::is_constructible_v<T, std::nullopt_t>)
        return isNone ? T() : T(FieldAs<typename T::value_type>(text));
    else if constexpr (!std::is_arithmetic_v<T>)
        return std::is_pointer_v<T> && std::string("null") == text ? T() : T(text);
    else {
        char* end = nullptr;
        const auto number = [&] {
            if constexpr (std::is_floating_point_v<T>)
                return std::strtod(text, &end);
            else
                return std::strtoll(text, &end, 10);
        }();
        if (end == text || *end != '\0')
            throw std::invalid_argument("no number: " + std::string(text));
        return static_cast<T>(number);
    }
}

/// The rows with their columns; the last one, which tells why the row is there, may be left out of it.
template<class... Columns>
std::vector<Row<Columns...>> Table(const std::string& file)
{
    std::vector<Row<Columns...>> rows;
    for (const auto& fields : FieldsOf(file)) {
        if (fields.size() != sizeof...(Columns) && fields.size() != sizeof...(Columns) + 1)
            throw std::invalid_argument("another number of columns: " + std::string(fields.at(0)));
        auto at = fields.begin();
        rows.push_back({FieldAs<Columns>(*at++)..., fields.size() > sizeof...(Columns) ? fields.back() : ""});
    }
    return rows;
}

} // namespace Test
