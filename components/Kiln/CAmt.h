#pragma once

// Amounts of money in ten-thousandths of a pound, with a status.

#include <cstdint>

#include "Afx/text/CString.h"
#include "Kiln/Export.h"

namespace Kiln
{

/// An amount in ten-thousandths of a pound (the OLE currency scale), or null, or invalid. The default is null.
/// Two amounts are equal when they have the same status and, when valid, the same value; the auto flag does not count.
class KILN_API CAmt
{
public:
    enum class Status : std::uint8_t
    {
        Valid,
        Null,
        Invalid
    };

    static const CAmt kZero;

    constexpr CAmt() noexcept = default;
    constexpr explicit CAmt(std::int64_t tenThousandths) noexcept : m_value(tenThousandths), m_status(Status::Valid) {}
    /// Invalid when `pence` times 100 does not fit 64 bits.
    static CAmt FromPence(std::int64_t pence) noexcept;
    static CAmt Invalid() noexcept;

    /// Reads an amount as users type it: blanks, £, one sign in front or behind or brackets, commas between groups of
    /// three, up to four decimals. True when it is one; otherwise invalid (null for an empty or blank text) and false.
    /// ".5" and "12." are amounts; decimals after the fourth may only be 0; "1,23" is none (a slip must not become a
    /// figure).
    bool Parse(const CString& text);
    bool Parse(const char* text); // null reads as empty
    /// Why `text` is no amount, and how to mend it, for the user. Empty when it is one.
    static CString WhyNotAmount(const CString& text);

    Status GetStatus() const noexcept { return m_status; }
    bool IsValid() const noexcept { return m_status == Status::Valid; }
    bool IsNull() const noexcept { return m_status == Status::Null; }
    bool IsZero() const noexcept { return IsValid() && m_value == 0; }
    /// The system calculated this amount (the user did not type it).
    bool IsAuto() const noexcept { return m_auto; }
    void SetAuto(bool isAuto) noexcept { m_auto = isAuto; }
    std::int64_t GetValue() const noexcept { return m_value; }       // ten-thousandths; 0 when not valid
    std::int64_t GetPence() const noexcept { return m_value / 100; } // truncated toward zero

    /// `percent` per cent of the amount: value * percent / 100.0 in that order. With `roundFlag` 1 to the nearest
    /// penny, with 0 to the ten-thousandth, halves away from zero. NaN, infinity and overflow give an invalid amount;
    /// not valid stays as it is.
    CAmt PercentOf(double percent, int roundFlag) const;

    /// "1234.56", with a minus in front when negative, more decimals only when there are any; empty when not valid.
    CString Format() const;

    /// Not valid on either side, or overflow, gives an invalid amount.
    friend KILN_API CAmt operator+(const CAmt& a, const CAmt& b) noexcept;
    friend KILN_API CAmt operator-(const CAmt& a, const CAmt& b) noexcept;
    friend bool operator==(const CAmt& a, const CAmt& b) noexcept
    {
        return a.m_status == b.m_status && (a.m_status != Status::Valid || a.m_value == b.m_value);
    }
    /// False unless both are valid.
    friend bool operator<(const CAmt& a, const CAmt& b) noexcept
    {
        return a.IsValid() && b.IsValid() && a.m_value < b.m_value;
    }
    friend bool operator<=(const CAmt& a, const CAmt& b) noexcept
    {
        return a.IsValid() && b.IsValid() && a.m_value <= b.m_value;
    }
    friend bool operator>(const CAmt& a, const CAmt& b) noexcept { return b < a; }
    friend bool operator>=(const CAmt& a, const CAmt& b) noexcept { return b <= a; }

private:
    std::int64_t m_value = 0;
    Status m_status = Status::Null;
    bool m_auto = false;
};

} // namespace Kiln
