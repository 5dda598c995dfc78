#pragma once

// The port behind which JSON is read: a tree of values whose numbers keep the text in which they were sent.

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "HmrcApi/Export.h"

namespace HmrcApi
{

/// One JSON value. Numbers stay text: an amount must not pass through binary floating point.
struct HMRCAPI_API JsonValue
{
    enum class Kind : unsigned char
    {
        Null,
        Boolean,
        Number,
        Text,
        Array,
        Object
    };

    Kind kind = Kind::Null;
    bool boolean = false;
    std::string text;               // of a text, or the number by the JSON grammar
    std::vector<JsonValue> items;   // of an array, or the values of an object's members
    std::vector<std::string> names; // of an object's members, in the order of `items`

    bool Is(Kind wanted) const noexcept { return kind == wanted; }
    /// The member `name` of an object; null when there is none, when it is JSON's null, or when this is no object.
    const JsonValue* Find(std::string_view name) const noexcept;
    friend bool operator==(const JsonValue&, const JsonValue&) = default; // numbers by their text
};

inline constexpr std::size_t kJsonDepth = 32;       // levels of nesting
inline constexpr std::size_t kJsonValues = 200'000; // values in one text; more would only fill the memory

/// Why a text is no JSON that we take.
struct JsonProblem
{
    std::string text; // for people; holds nothing of the JSON text
};

/// Reads one JSON text. Refused: what the grammar does not allow, invalid UTF-8, anything but white space after the
/// value, more than kJsonDepth levels or kJsonValues values, and an object with two members of one name (neither may be
/// guessed). A number of any size is taken.
HMRCAPI_API std::optional<JsonValue> ParseJson(std::string_view json, JsonProblem* problem = nullptr);

} // namespace HmrcApi
