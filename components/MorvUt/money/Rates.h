#pragma once

// Gross, net and tax at a rate; percentages; shares; a year's worth of an amount.
//
// Rates and percentages are in per cent: 20.0 means 20 %. Amounts are `Kiln::CAmt`, or pence as `__int64` (where a
// result that is not valid, or overflow, is 0), or pence as `double` and `long double`, for callers that hold them so.
// Figures are computed in double precision on every platform.

#include <concepts>

#include "Afx/Platform.h"
#include "Kiln/CAmt.h"
#include "Kiln/CDate.h"
#include "MorvUt/Export.h"

// Grossing up. Results are whole pence, halves up: the figure is cut to the penny, and one penny added when 0.5 or more
// was dropped.

/// What leaves `net` after tax at `rate`: net / ((100 - rate) / 100). £80 at 20 % is £100. 0 for a net below 0 or not
/// valid; the net itself, parts of a penny included, at rate 0. Rate 100, NaN and overflow give an invalid amount (0).
/// Source: ITA 2007 s 998.
MORVUT_API Kiln::CAmt GrossFromNet(const Kiln::CAmt& net, double rate) noexcept;
MORVUT_API double GrossFromNet(const double& net, double rate) noexcept;
MORVUT_API long double GrossFromNet(const long double& net, double rate) noexcept;
MORVUT_API __int64 GrossFromNet(const __int64& net, double rate) noexcept;

/// The figure that `tax` is `rate` per cent of: tax * (100 / rate). £20 at 20 % is £100. 0 for a tax below 0 or not
/// valid, and at rate 0.
MORVUT_API Kiln::CAmt GrossFromTax(const Kiln::CAmt& tax, double rate) noexcept;
MORVUT_API long double GrossFromTax(const long double& tax, double rate) noexcept;
MORVUT_API __int64 GrossFromTax(const __int64& tax, double rate) noexcept;

/// `rate` per cent of `gross` to the nearest penny, halves away from zero; 0 at rate 0.
MORVUT_API Kiln::CAmt TaxFromGross(const Kiln::CAmt& gross, double rate);
MORVUT_API __int64 TaxFromGross(const __int64& gross, double rate);

/// The gross figure less the net, never a percentage of its own: net + tax is always the gross.
MORVUT_API Kiln::CAmt TaxFromNet(const Kiln::CAmt& net, double rate) noexcept;
MORVUT_API __int64 TaxFromNet(const __int64& net, double rate) noexcept;

/// A field for tax that holds an auto amount (see Pence.h). What the user typed, and an empty field, stay. Otherwise
/// the tax is calculated from `net` and returned as a calculated amount, or as the marker AUTO when it is 0.
MORVUT_API __int64 CalculateAutoTax(__int64 net, __int64 taxField, double rate) noexcept;

// Percentages and shares.

/// Not rounded: percent / 100 * amount.
MORVUT_API long double PercentOf(long double amount, double percent) noexcept;
/// To the nearest penny, halves away from zero.
MORVUT_API __int64 PercentOf(__int64& pence, double percent);
/// The same for pence that are constant, computed on the spot, or in the other type of 64 bits. Every other type of
/// number goes to the first one.
template<std::signed_integral Pence>
requires(sizeof(Pence) == sizeof(__int64)) __int64 PercentOf(const Pence& pence, double percent)
{
    __int64 copy = pence;
    return PercentOf(copy, percent);
}

/// Takes `amount` out of `available`, at most what there is; returns what was taken. 500 out of 300 is 300 and leaves
/// 0. An amount that is not valid (or NaN) takes nothing and returns an empty amount (0).
MORVUT_API Kiln::CAmt Allocate(const Kiln::CAmt& amount, Kiln::CAmt& available) noexcept;
MORVUT_API double Allocate(const double& amount, double& available) noexcept;
MORVUT_API long double Allocate(const long double& amount, long double& available) noexcept;
MORVUT_API __int64 Allocate(const __int64& amount, __int64& available) noexcept;

MORVUT_API void ZeroIfNegative(double& value) noexcept;
MORVUT_API void ZeroIfNegative(long double& value) noexcept;
MORVUT_API void ZeroIfNegative(__int64& value) noexcept;

/// One owner's share of a joint amount, cut to the penny. The percentage counts to two decimals, halves up. With
/// `remainder` (not 0) the owner gets what the other one's share leaves: P with 0 and 100 - P with 1 add up to the
/// amount. £10.01 at 50 % is £5.00, and £5.01 with the remainder.
/// They do not add up when the third decimal of P is exactly 5, since both percentages round up then: round P to two
/// decimals first.
/// A null amount stays null; percent 0 gives 0; NaN, infinity and overflow give an invalid amount.
MORVUT_API Kiln::CAmt JointSpousePercentOf(const Kiln::CAmt& amount, double percent, int remainder) noexcept;
/// The same in pounds, cut to the penny; 0 where the above is not valid.
MORVUT_API double JointSpousePercentOf(double amount, double percent, int remainder) noexcept;

// A year's worth.

/// Scales an amount earned from `from` to `to`, both included, to a year, to the nearest penny. A period from 6 April
/// 2012 on counts as part of 366 days when it begins or ends on 29 February, or when both the two years after its start
/// and the two years before its end hold a leap day; else of 365. Before that a year has 365 days and the leap day is
/// not counted. £1,000 in 73 days of 2014/15 is £5,000.
/// The amount itself when a date is not valid or no day is left to count.
MORVUT_API Kiln::CAmt AnnualiseAmount(const Kiln::CAmt& amount, Kiln::CDate from, Kiln::CDate to);
MORVUT_API __int64 AnnualiseAmount(__int64 amount, Kiln::CDate from, Kiln::CDate to);

// From the practice's reference data; defined in the room that reads it.

/// The turnover below which accounts need no detail, in a real tax year: of a sole trader, or with `second` not 0 of a
/// partnership; with `first` not 0 the older, lower one. £15,000 for 2008 with `first`, and when the practice holds no
/// year at all. A year without a record takes that of the latest year, or of the earliest when it lies before it.
/// Reads the current connection; throws Cellar::DatabaseError.
MORVUT_API Kiln::CAmt GetTurnoverDiscloseLevel(short year, int first, int second);
