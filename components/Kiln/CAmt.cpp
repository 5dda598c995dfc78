#include "Kiln/CAmt.h"

#include <cmath>
#include <limits>

#include "Afx/text/Numbers.h"
#include "Afx/text/Utf8.h"
#include "Kiln/detail/AmountText.h"

namespace Kiln
{
namespace
{

using Detail::AmountFault;

constexpr int kTenThousandthsPerPenny = 100;

/// The first character of a text, whole.
std::string_view FirstCharacter(std::string_view text) noexcept
{
    std::size_t length = text.empty() ? 0 : 1;
    while (length < text.size() && length < 4 && Afx::ContinuesCharacter(text[length]))
        ++length;
    return text.substr(0, length);
}

CAmt AmountOf(const Detail::AmountText& read) noexcept
{
    if (read.fault == AmountFault::None)
        return CAmt(read.value);
    return read.fault == AmountFault::Blank ? CAmt() : CAmt::Invalid();
}

CString Reason(const Detail::AmountText& read)
{
    CString reason;
    switch (read.fault) {
    case AmountFault::None:
        break;
    case AmountFault::Blank:
        return "No amount was given";
    case AmountFault::NoDigits:
        return "An amount needs digits, as in 1,234.56";
    case AmountFault::Signs:
        return "One sign is enough: -5, 5- or (5)";
    case AmountFault::Bracket:
        return "Brackets stand on both sides of an amount, as in (5)";
    case AmountFault::Commas:
        return "Commas stand between groups of three digits, as in 1,234,567.89; use a point for the pence";
    case AmountFault::Decimals:
        return "An amount has at most four decimals, as in 12.3456";
    case AmountFault::TooLarge:
        return "The amount is too large: 922,337,203,685,477.58 is the most";
    case AmountFault::Place:
        reason.Format("\"%s\" stands in the wrong place; write the amount as in 1,234.56",
                      FirstCharacter(read.badText));
        break;
    case AmountFault::Character:
        reason.Format("\"%s\" does not belong in an amount; write it as in 1,234.56", FirstCharacter(read.badText));
    }
    return reason;
}

} // namespace

constinit const CAmt CAmt::kZero{std::int64_t{0}};

CAmt CAmt::FromPence(std::int64_t pence) noexcept
{
    std::int64_t value = 0;
    if (__builtin_mul_overflow(pence, std::int64_t{kTenThousandthsPerPenny}, &value))
        return Invalid();
    return CAmt(value);
}

CAmt CAmt::Invalid() noexcept
{
    CAmt amount;
    amount.m_status = Status::Invalid;
    return amount;
}

bool CAmt::Parse(const CString& text)
{
    *this = AmountOf(Detail::ReadAmount(text.View()));
    return IsValid();
}

bool CAmt::Parse(const char* text)
{
    *this = AmountOf(Detail::ReadAmount(text ? text : ""));
    return IsValid();
}

CString CAmt::WhyNotAmount(const CString& text) { return Reason(Detail::ReadAmount(text.View())); }

CAmt CAmt::PercentOf(double percent, int roundFlag) const
{
    if (!IsValid())
        return *this;
    const double share = static_cast<double>(m_value) * percent / 100.0;
    if (roundFlag == 0) {
        const auto value = Afx::ToInt64(std::round(share));
        return value ? CAmt(*value) : Invalid();
    }
    const auto pence = Afx::ToInt64(std::round(share / kTenThousandthsPerPenny));
    return pence ? FromPence(*pence) : Invalid();
}

CString CAmt::Format() const
{
    if (!IsValid())
        return {};
    const auto bits = static_cast<std::uint64_t>(m_value);
    std::uint64_t rest = m_value < 0 ? 0 - bits : bits;
    int decimals = 4;
    for (; decimals > 2 && rest % 10 == 0; --decimals)
        rest /= 10;
    char buffer[24];
    char* first = buffer + sizeof buffer;
    // The decimals and their point, then at least one digit of pounds.
    for (int written = 0; written <= decimals || rest != 0; ++written) {
        if (written == decimals)
            *--first = '.';
        *--first = static_cast<char>('0' + rest % 10);
        rest /= 10;
    }
    if (m_value < 0)
        *--first = '-';
    return CString(std::string_view(first, static_cast<std::size_t>(buffer + sizeof buffer - first)));
}

CAmt operator+(const CAmt& a, const CAmt& b) noexcept
{
    std::int64_t sum = 0;
    if (!a.IsValid() || !b.IsValid() || __builtin_add_overflow(a.m_value, b.m_value, &sum))
        return CAmt::Invalid();
    return CAmt(sum);
}

CAmt operator-(const CAmt& a, const CAmt& b) noexcept
{
    std::int64_t difference = 0;
    if (!a.IsValid() || !b.IsValid() || __builtin_sub_overflow(a.m_value, b.m_value, &difference))
        return CAmt::Invalid();
    return CAmt(difference);
}

} // namespace Kiln
