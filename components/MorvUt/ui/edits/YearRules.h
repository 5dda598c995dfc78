#pragma once

// Which year a date means that was typed as day and month alone. Each answers a calendar year; whether it has that day
// is the caller's matter. `realYear` is a real tax year.

#include "Kiln/CDate.h"
#include "MorvUt/Export.h"

/// The year that puts the day in the tax year: 6 April to 31 December in realYear - 1, 1 January to 5 April in
/// realYear.
MORVUT_API int YearWithinTaxYear(int day, int month, short realYear) noexcept;

/// For Lloyd's underwriters, whose accounts are of calendar years: realYear - 1. Otherwise as YearWithinTaxYear.
MORVUT_API int UnderwritingYear(int day, int month, short realYear, bool isUnderwriting) noexcept;

/// The year that puts the day on its side of the partner's date, by whole days and as near as can be: not before it
/// when it comes `after` the partner's, else not behind it. The partner's own day is on both sides. Beside 1 June 2023
/// the 1 May is of 2024 when it comes after, the 1 July of 2022 when it comes before. Without a valid partner's date as
/// YearWithinTaxYear.
MORVUT_API int YearBeside(int day, int month, const Kiln::CDate& partner, bool after, short realYear) noexcept;
