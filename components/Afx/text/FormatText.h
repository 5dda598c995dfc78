#pragma once

// Format strings with typed arguments.

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "Afx/Export.h"
#include "Afx/text/FormatGrammar.h"

class CString;

namespace Afx
{

/// One argument of `CString::Format`, with its type, so that a wrong placeholder is found and not guessed.
class FormatArg
{
public:
    using Kind = FormatKind;

    FormatArg() noexcept : m_kind(Kind::Unsigned), m_unsigned(0) {} // stands where there are no arguments
    template<std::signed_integral T>
    requires(!std::same_as<T, char>) FormatArg(T value)
    noexcept : m_kind(Kind::Signed), m_signed(value) {}
    template<std::unsigned_integral T>
    requires(!std::same_as<T, char>) FormatArg(T value)
    noexcept : m_kind(Kind::Unsigned), m_unsigned(value) {}
    FormatArg(char value) noexcept : m_kind(Kind::Char), m_signed(value) {}
    FormatArg(double value) noexcept : m_kind(Kind::Real), m_real(value) {}
    FormatArg(const char* value) noexcept : m_kind(Kind::Text), m_text(value ? std::string_view(value) : "(null)") {}
    FormatArg(std::nullptr_t) = delete;
    FormatArg(std::string_view value) noexcept : m_kind(Kind::Text), m_text(value) {}
    FormatArg(const std::string& value) noexcept : m_kind(Kind::Text), m_text(value) {}
    inline FormatArg(const CString& value) noexcept;

    Kind GetKind() const noexcept { return m_kind; }
    std::int64_t Signed() const noexcept { return m_signed; }
    std::uint64_t Unsigned() const noexcept { return m_unsigned; }
    double Real() const noexcept { return m_real; }
    std::string_view Text() const noexcept { return m_text; }

private:
    Kind m_kind;
    union {
        std::int64_t m_signed;
        std::uint64_t m_unsigned;
        double m_real;
        std::string_view m_text;
    };
};

/// A format for arguments of those types. A literal that does not fit them (one too many, too few, a text for a number,
/// no placeholder that is known) does not compile; any other text is checked when it is filled, see AppendFormat. The
/// compiler takes an array of const char for a literal, so one that is not constexpr does not compile: give a pointer
/// to it, +array.
template<class... Args>
class FormatString
{
public:
    template<std::size_t N>
    consteval FormatString(const char (&literal)[N]) : m_text(literal)
    {
        if (!Detail::FitsFormat<Args...>(m_text))
            throw "the arguments do not fit the format"; // where the compiler stops
    }
    /// A buffer, up to its first zero.
    template<std::size_t N>
    FormatString(char (&buffer)[N]) noexcept : FormatString(buffer, 0)
    {}
    /// A pointer or a CString; null reads as the empty text.
    template<class Text>
    requires(!std::is_array_v<Text> && std::is_convertible_v<const Text&, const char*>) FormatString(const Text& text)
    noexcept : FormatString(static_cast<const char*>(text), 0) {}
    /// One that has come with other arguments of the same kinds.
    template<class... Others>
    FormatString(FormatString<Others...> other) noexcept : m_text(other.View())
    {}

    std::string_view View() const noexcept { return m_text; }

private:
    FormatString(const char* text, int) noexcept : m_text(text ? text : "") {}

    std::string_view m_text;
};

/// Appends `format` to `out`, each placeholder filled from `args`: %d %i %u %ld %lu %lld %llu %I64d %I64u %x %X %c %s
/// %f %g %% with flags (- 0 + space), width and precision (up to 512); the decimal point is always '.'.
/// %d takes any integer whose value fits an int, %ld a long, %I64d and %lld 64 bits; %u and %x likewise, unsigned.
/// Throws CInvalidArgException, with the placeholder in its message and nothing appended, when number, type or value of
/// the arguments does not fit the format.
AFX_API void AppendFormat(std::string& out, std::string_view format, const FormatArg* args, std::size_t count);

} // namespace Afx
