#pragma once

// The UK tax year, the range of years that the suite supports, and its two numberings.

#include <cstdint>
#include <type_traits>

#include "Kiln/CDate.h"
#include "MorvUt/Export.h"
#include "MorvUt/taxyear/YearTitles.h"

inline constexpr short kFirstRealTaxYear = 1991;
inline constexpr short kLastRealTaxYear = 2025;
inline constexpr short kDefaultRealTaxYear = 2024;

/// The first and the last supported tax year, 1991 and 2025, as real years (the calendar year in which the year ends).
MORVUT_API short GetMinRealTaxYear() noexcept;
MORVUT_API short GetMaxRealTaxYear() noexcept;
/// The last supported tax year as a relative year: 34.
MORVUT_API short GetMaxTaxYear() noexcept;
/// The number of supported tax years: 35.
MORVUT_API short GetNumTaxYears() noexcept;
/// The real year to work in when nothing else was chosen: 2024.
MORVUT_API short GetDefaultRealTaxYear() noexcept;

/// Real year = relative year + 1991. Neither checks the range; both wrap at 16 bits.
constexpr short ToRelativeTaxYear(short real) noexcept { return static_cast<short>(real - kFirstRealTaxYear); }
constexpr short ToRealTaxYear(short relative) noexcept { return static_cast<short>(relative + kFirstRealTaxYear); }
/// The same for callers that link them.
MORVUT_API short ConvertRealToRelativeTaxYear(short real) noexcept;
MORVUT_API short ConvertRelativeToRealTaxYear(short relative) noexcept;

/// A tax year: 6 April of the year before to 5 April of the real year that names it, so that `TaxYear(2024)` is
/// 2023/24. Any 16-bit year is taken, also outside the supported range. The default is the null year, 0 and not valid.
/// Comparisons look at the year alone: the null year equals `TaxYear(0)`. Source: ITA 2007 s 4(3).
class TaxYear
{
public:
    constexpr TaxYear() noexcept = default;
    constexpr explicit TaxYear(short realYear) noexcept : m_year(realYear), m_valid(1) {}
    static constexpr TaxYear GetFirstTaxYear() noexcept { return TaxYear(kFirstRealTaxYear); }
    static constexpr TaxYear GetLastTaxYear() noexcept { return TaxYear(kLastRealTaxYear); }

    constexpr short GetRealTaxYear() const noexcept { return m_year; }
    constexpr short GetRelativeTaxYear() const noexcept { return ToRelativeTaxYear(m_year); }
    /// Made from a year; says nothing about the supported range.
    constexpr bool IsValid() const noexcept { return m_valid != 0; }

    /// Both ends belong to the year; not valid dates for years that dates cannot hold (before 101, after 9999).
    Kiln::CDate GetStart() const noexcept { return Kiln::CDate(m_year - 1, 4, 6); }
    Kiln::CDate GetEnd() const noexcept { return Kiln::CDate(m_year, 4, 5); }
    Kiln::DatePeriod GetPeriod() const noexcept { return Kiln::DatePeriod(GetStart(), GetEnd()); }
    /// "2023/24" for 2024, "1999/00" for 2000.
    CString Format() const { return FormatYearString42Digit(m_year); }

    friend constexpr bool operator==(TaxYear a, TaxYear b) noexcept { return a.m_year == b.m_year; }
    friend constexpr bool operator<(TaxYear a, TaxYear b) noexcept { return a.m_year < b.m_year; }
    friend constexpr bool operator>(TaxYear a, TaxYear b) noexcept { return b < a; }
    friend constexpr bool operator<=(TaxYear a, TaxYear b) noexcept { return !(b < a); }
    friend constexpr bool operator>=(TaxYear a, TaxYear b) noexcept { return !(a < b); }

    // Moving by years wraps at 16 bits and leaves a null year null.
    constexpr TaxYear& operator+=(short years) noexcept
    {
        m_year = static_cast<short>(m_year + years);
        return *this;
    }
    constexpr TaxYear& operator-=(short years) noexcept
    {
        m_year = static_cast<short>(m_year - years);
        return *this;
    }
    constexpr TaxYear& operator++() noexcept { return *this += 1; }
    constexpr TaxYear& operator--() noexcept { return *this -= 1; }
    constexpr TaxYear operator++(int) noexcept
    {
        const TaxYear before = *this;
        ++*this;
        return before;
    }
    constexpr TaxYear operator--(int) noexcept
    {
        const TaxYear before = *this;
        --*this;
        return before;
    }
    friend constexpr TaxYear operator+(TaxYear year, short years) noexcept { return year += years; }
    friend constexpr TaxYear operator-(TaxYear year, short years) noexcept { return year -= years; }

private:
    std::int16_t m_year = 0;
    std::uint8_t m_valid = 0;
};
static_assert(std::is_trivially_copyable_v<TaxYear> && sizeof(TaxYear) == 4);
static_assert(!std::is_convertible_v<short, TaxYear>); // a relative year must not slip in as a real one
