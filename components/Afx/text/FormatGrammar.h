#pragma once

// The grammar of format strings: one reader for the compiler, which checks literals, and for the texts that are made.

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <type_traits>

#include "Afx/text/Ascii.h"

namespace Afx
{

/// What an argument of a format is.
enum class FormatKind : std::uint8_t
{
    Signed,
    Unsigned,
    Real,
    Text,
    Char
};

/// That of an argument of type `T`. Text stands for every class too: what is no text does not become a FormatArg.
template<class T>
constexpr FormatKind FormatKindOf() noexcept
{
    if constexpr (std::is_same_v<T, char>)
        return FormatKind::Char;
    else if constexpr (std::signed_integral<T>)
        return FormatKind::Signed;
    else if constexpr (std::unsigned_integral<T>)
        return FormatKind::Unsigned;
    else
        return std::is_floating_point_v<T> ? FormatKind::Real : FormatKind::Text;
}

} // namespace Afx

namespace Afx::Detail
{

/// Characters; a wider field or longer precision is a caller's mistake.
inline constexpr int kLongestFormatField = 512;

enum class FormatSize : std::uint8_t
{
    Int,
    Long,
    Int64
};

struct Placeholder
{
    std::string_view text;       // as it stands in the format
    const char* fault = nullptr; // why it is none
    int width = 0;
    int precision = -1; // none
    FormatSize size = FormatSize::Int;
    bool left = false, zero = false, plus = false, space = false;
    char conversion = '\0';
};

/// Reads one placeholder, behind its per cent sign.
class PlaceholderReader
{
public:
    /// `at` is the place of the per cent sign in `format` and moves behind the placeholder, if there is one.
    static constexpr Placeholder Read(std::string_view format, std::size_t& at) noexcept
    {
        PlaceholderReader reader(format, at + 1);
        reader.ReadParts(at);
        at = reader.m_at;
        return reader.m_place;
    }

private:
    constexpr PlaceholderReader(std::string_view format, std::size_t at) noexcept : m_format(format), m_at(at) {}

    constexpr void ReadParts(std::size_t start) noexcept
    {
        m_place.text = m_format.substr(start, 2);
        while (More() && ReadFlag(m_format[m_at]))
            ++m_at;
        m_place.width = ReadNumber();
        if (Take("."))
            m_place.precision = ReadNumber();
        if (m_place.fault)
            return;
        if (Take("I64") || Take("ll"))
            m_place.size = FormatSize::Int64;
        else if (Take("l"))
            m_place.size = FormatSize::Long;
        m_place.text = m_format.substr(start, m_at + 1 - start);
        if (!More()) {
            m_place.fault = "is not complete";
            return;
        }
        m_place.conversion = m_format[m_at++];
        if (std::string_view("diuxXcsfg").find(m_place.conversion) == std::string_view::npos)
            m_place.fault = "is unknown";
    }
    constexpr bool ReadFlag(char c) noexcept
    {
        m_place.left |= c == '-';
        m_place.zero |= c == '0';
        m_place.plus |= c == '+';
        m_place.space |= c == ' ';
        return c == '-' || c == '0' || c == '+' || c == ' ';
    }
    /// Digits at this place; 0 when there are none.
    constexpr int ReadNumber() noexcept
    {
        int number = 0;
        for (; !m_place.fault && More() && IsDigit(m_format[m_at]); ++m_at) {
            number = number * 10 + (m_format[m_at] - '0');
            if (number > kLongestFormatField)
                m_place.fault = "is wider than 512 characters";
        }
        return number;
    }
    constexpr bool More() const noexcept { return m_at < m_format.size(); }
    constexpr bool Take(std::string_view word) noexcept
    {
        if (m_format.substr(m_at, word.size()) != word)
            return false;
        m_at += word.size();
        return true;
    }

    std::string_view m_format;
    std::size_t m_at;
    Placeholder m_place;
};

/// Why a placeholder with that letter does not take an argument of that kind; null when it does.
constexpr const char* WhyNotArgument(char conversion, FormatKind kind) noexcept
{
    const bool isWhole = kind == FormatKind::Signed || kind == FormatKind::Unsigned;
    switch (conversion) {
    case 's':
        return kind == FormatKind::Text ? nullptr : "takes a text";
    case 'c':
        return isWhole || kind == FormatKind::Char ? nullptr : "takes a character";
    case 'f':
    case 'g':
        return kind == FormatKind::Real ? nullptr : "takes a floating-point number";
    default:
        return isWhole ? nullptr : "takes a whole number";
    }
}

/// Whether the per cent sign at this place has another behind it: the two write one.
constexpr bool IsPerCentSign(std::string_view format, std::size_t at) noexcept
{
    return at + 1 < format.size() && format[at + 1] == '%';
}

/// Whether `format` takes arguments of those kinds, so many and in that order. Values that do not fit a placeholder's
/// size remain to be seen.
constexpr bool FitsFormat(std::string_view format, const FormatKind* kinds, std::size_t count) noexcept
{
    std::size_t used = 0;
    for (std::size_t at = format.find('%'); at != std::string_view::npos; at = format.find('%', at)) {
        if (IsPerCentSign(format, at)) {
            at += 2;
            continue;
        }
        const Placeholder place = PlaceholderReader::Read(format, at);
        if (place.fault || used == count || WhyNotArgument(place.conversion, kinds[used]))
            return false;
        ++used;
    }
    return used == count;
}

template<class... Args>
constexpr bool FitsFormat(std::string_view format) noexcept
{
    constexpr FormatKind kinds[sizeof...(Args) + 1] = {FormatKindOf<Args>()...};
    return FitsFormat(format, kinds, sizeof...(Args));
}

} // namespace Afx::Detail
