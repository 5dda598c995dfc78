#pragma once

// JSON text of what was read.

#include <string>

#include "HmrcApi/json/Json.h"

namespace Fuzz
{

inline std::string QuoteJson(const std::string& text)
{
    constexpr char kHex[] = "0123456789abcdef";
    std::string quoted = "\"";
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x20 || c == '"' || c == '\\')
            quoted.append("\\u00").append(1, kHex[byte >> 4]).append(1, kHex[byte & 15]);
        else
            quoted += c;
    }
    return quoted + '"';
}

inline std::string WriteJson(const HmrcApi::JsonValue& value)
{
    using Kind = HmrcApi::JsonValue::Kind;
    if (value.Is(Kind::Null))
        return "null";
    if (value.Is(Kind::Boolean))
        return value.boolean ? "true" : "false";
    if (value.Is(Kind::Number))
        return value.text;
    if (value.Is(Kind::Text))
        return QuoteJson(value.text);
    const bool isObject = value.Is(Kind::Object);
    std::string text(1, isObject ? '{' : '[');
    for (std::size_t i = 0; i < value.items.size(); ++i)
        text += (i > 0 ? "," : "") + (isObject ? QuoteJson(value.names.at(i)) + ':' : std::string()) +
                WriteJson(value.items[i]);
    return text + (isObject ? '}' : ']');
}

} // namespace Fuzz
