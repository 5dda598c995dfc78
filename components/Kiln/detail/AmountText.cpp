#include "Kiln/detail/AmountText.h"

#include <algorithm>
#include <limits>

#include "Afx/text/Ascii.h"

namespace Kiln::Detail
{
namespace
{

constexpr int kPoundDigits = 15; // of 922,337,203,685,477
constexpr int kDecimals = 4;
constexpr std::string_view kPoundSign = "\xC2\xA3"; // £
constexpr std::uint64_t kPowersOfTen[] = {1, 10, 100, 1000, 10'000};

using Afx::IsBlank;
using Afx::IsDigit;

/// Reads one text, from left to right.
class AmountReader
{
public:
    explicit AmountReader(std::string_view text) noexcept : m_at(text.data()), m_end(text.data() + text.size()) {}

    AmountText Read() noexcept;

private:
    AmountText Refuse(AmountFault fault) const noexcept
    {
        return {fault, 0, std::string_view(m_at, static_cast<std::size_t>(m_end - m_at))};
    }
    bool Is(char c) const noexcept { return m_at != m_end && *m_at == c; }
    bool Take(char c) noexcept
    {
        const bool is = Is(c);
        m_at += is;
        return is;
    }
    bool IsPound() const noexcept { return m_end - m_at >= 2 && m_at[0] == kPoundSign[0] && m_at[1] == kPoundSign[1]; }
    bool TakePound() noexcept
    {
        const bool is = IsPound();
        m_at += is ? 2 : 0;
        return is;
    }
    void SkipBlanks() noexcept
    {
        while (m_at != m_end && IsBlank(*m_at))
            ++m_at;
    }
    AmountFault ReadFront() noexcept;
    AmountFault ReadPounds() noexcept;
    AmountFault ReadDecimals() noexcept;
    AmountFault ReadBack() noexcept;
    AmountFault Leftover() const noexcept;
    AmountFault NoDigits() const noexcept;

    const char* m_at;
    const char* m_end;
    bool m_pound = false, m_sign = false, m_minus = false, m_bracket = false, m_isOpen = false;
    bool m_hasDigit = false;
    std::uint64_t m_value = 0; // of the digits read
};

/// £, sign and opening bracket, in any order, each at most once.
AmountFault AmountReader::ReadFront() noexcept
{
    for (; m_at != m_end && !IsDigit(*m_at); SkipBlanks()) {
        if (Is('-') || Is('+')) {
            if (m_sign || m_bracket)
                return AmountFault::Signs;
            m_sign = true;
            m_minus = Take('-') || !Take('+');
        } else if (Is('(')) {
            if (m_sign || m_bracket)
                return AmountFault::Signs;
            m_bracket = m_isOpen = m_minus = Take('(');
        } else if (m_pound || !TakePound()) {
            break;
        } else {
            m_pound = true;
        }
    }
    return AmountFault::None;
}

/// Digits before the point, with commas between groups of three or with none.
AmountFault AmountReader::ReadPounds() noexcept
{
    int significant = 0, group = 0;
    bool hasComma = false;
    for (; m_at != m_end; ++m_at) {
        if (IsDigit(*m_at)) {
            m_hasDigit = true;
            ++group;
            m_value = m_value * 10 + static_cast<unsigned>(*m_at - '0');
            significant += m_value != 0;
            if (significant > kPoundDigits)
                return AmountFault::TooLarge;
        } else if (*m_at == ',') {
            if (hasComma ? group != 3 : group < 1 || group > 3)
                return AmountFault::Commas;
            hasComma = true;
            group = 0;
        } else {
            break;
        }
    }
    return hasComma && group != 3 ? AmountFault::Commas : AmountFault::None;
}

AmountFault AmountReader::ReadDecimals() noexcept
{
    int count = 0;
    if (Take('.'))
        for (; m_at != m_end && IsDigit(*m_at); ++m_at) {
            m_hasDigit = true;
            if (count < kDecimals) {
                m_value = m_value * 10 + static_cast<unsigned>(*m_at - '0');
                ++count;
            } else if (*m_at != '0') {
                return AmountFault::Decimals;
            }
        }
    m_value *= kPowersOfTen[kDecimals - count]; // 19 digits at most: fits
    return AmountFault::None;
}

/// A sign behind, or the closing bracket, and nothing after it.
AmountFault AmountReader::ReadBack() noexcept
{
    SkipBlanks();
    if (m_bracket)
        m_isOpen = !Take(')');
    else if (!m_sign && (Is('-') || Is('+')))
        m_minus = Take('-') || !Take('+');
    SkipBlanks();
    return Leftover();
}

/// What is wrong with the text where the amount has ended; None when the text has ended too.
AmountFault AmountReader::Leftover() const noexcept
{
    if (m_at == m_end)
        return m_isOpen ? AmountFault::Bracket : AmountFault::None;
    if (*m_at == '-' || *m_at == '+')
        return AmountFault::Signs;
    if (*m_at == '(' || *m_at == ')')
        return AmountFault::Bracket;
    if (*m_at == ',')
        return AmountFault::Commas;
    return IsDigit(*m_at) || *m_at == '.' || IsPound() ? AmountFault::Place : AmountFault::Character;
}

/// The same when no digit was read before.
AmountFault AmountReader::NoDigits() const noexcept
{
    if (m_at != m_end && Leftover() == AmountFault::Character)
        return AmountFault::Character;
    return std::any_of(m_at, m_end, IsDigit) ? AmountFault::Place : AmountFault::NoDigits;
}

AmountText AmountReader::Read() noexcept
{
    if (const AmountFault fault = ReadFront(); fault != AmountFault::None)
        return Refuse(fault);
    if (const AmountFault fault = ReadPounds(); fault != AmountFault::None)
        return Refuse(fault);
    if (const AmountFault fault = ReadDecimals(); fault != AmountFault::None)
        return Refuse(fault);
    if (!m_hasDigit)
        return Refuse(NoDigits());
    if (const AmountFault fault = ReadBack(); fault != AmountFault::None)
        return Refuse(fault);
    constexpr auto kMax = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
    if (m_value > kMax + m_minus)
        return Refuse(AmountFault::TooLarge);
    return {AmountFault::None, static_cast<std::int64_t>(m_minus ? 0 - m_value : m_value), {}};
}

/// Digits, perhaps a point and two more, a minus in front at most: what programs write and most people type. False, and
/// nothing decided, for anything else.
bool ReadUsual(std::string_view text, std::int64_t& value) noexcept
{
    const bool minus = text.starts_with('-');
    const char* at = text.data() + minus;
    const char* const end = text.data() + text.size();
    const char* const first = at;
    std::uint64_t number = 0; // of too many digits it is not used
    for (; at != end && IsDigit(*at); ++at)
        number = number * 10 + static_cast<unsigned>(*at - '0');
    const bool hasPence = end - at == 3 && *at == '.' && IsDigit(at[1]) && IsDigit(at[2]);
    if (at == first || at - first >= kPoundDigits || (at != end && !hasPence))
        return false;
    number = number * 100 + static_cast<unsigned>(hasPence ? (at[1] - '0') * 10 + (at[2] - '0') : 0);
    value = static_cast<std::int64_t>(number) * (minus ? -100 : 100);
    return true;
}

} // namespace

AmountText ReadAmount(std::string_view text) noexcept
{
    if (std::int64_t value = 0; ReadUsual(text, value))
        return {AmountFault::None, value, {}};
    while (!text.empty() && IsBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && IsBlank(text.back()))
        text.remove_suffix(1);
    if (text.empty())
        return {AmountFault::Blank, 0, {}};
    return AmountReader(text).Read();
}

} // namespace Kiln::Detail
