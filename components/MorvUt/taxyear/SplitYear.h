#pragma once

// The base of years whose boundaries are not 6 April.

#include <cstdint>

#include "Kiln/CDate.h"
#include "MorvUt/Export.h"

/// A year that a derived class bounds in its own way, numbered by the calendar year in which it ends. Null until it is
/// created; a later Create may move it either way. Copies are member by member.
///
/// A derived class says what `GetYearPeriod` covers and brings its constructors; docs/tax-years.md has an example.
class MORVUT_API SplitYear
{
public:
    SplitYear(const SplitYear&) noexcept = default;
    SplitYear(SplitYear&&) noexcept = default;
    SplitYear& operator=(const SplitYear&) noexcept = default;
    SplitYear& operator=(SplitYear&&) noexcept = default;

    /// The first and last day of the year numbered `yearEnd`.
    virtual Kiln::DatePeriod GetYearPeriod(short yearEnd) const = 0;

    /// "2023/24" for 2024.
    CString Format() const;
    Kiln::CDate GetStart() const;
    Kiln::CDate GetEnd() const;
    short GetYearEnd() const noexcept { return m_yearEnd; } // 0 while null
    bool IsDateInYear(const Kiln::CDate& date) const;       // false for a date that is not valid

    bool IsNull() const noexcept { return m_state == State::Null; }
    bool IsInvalid() const noexcept { return m_state == State::Invalid; }
    bool IsValid() const noexcept { return m_state == State::Valid; }

protected:
    SplitYear() noexcept = default;
    explicit SplitYear(short year) noexcept { Create(year); }
    ~SplitYear() = default; // not virtual: nobody owns one through its base

    /// Takes the year, 1802 to 2099. Otherwise false and invalid, with the number left as it was.
    bool Create(short year) noexcept;
    /// Finds the year that `date` lies in: its calendar year is tried first, then the year before, then the year after,
    /// so that of overlapping years the first in this order wins. False and invalid when it lies in none of them; the
    /// number is then the calendar year + 1 (0 for a date that is not valid).
    bool Create(const Kiln::CDate& date);

private:
    enum class State : std::int32_t
    {
        Null = 1,
        Invalid = 2,
        Valid = 3
    };

    State m_state = State::Null;
    std::int16_t m_yearEnd = 0;
};
