#pragma once

// An amount split among several, by amount or by per cent, and a split that stands for itself.
//
// Percentages count in units of 10^-8 per cent, the eight decimals that are shown, so that their sums are exact.

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "Afx/text/CString.h"
#include "Kiln/CAmt.h"
#include "MorvUt/Export.h"

inline constexpr std::int64_t kUnitsOfAPercent = 100'000'000, kUnitsOfAll = 100 * kUnitsOfAPercent;

/// To the nearest unit, halves away from zero; nothing for NaN, infinity and what 64 bits cannot hold (beyond 92
/// thousand million per cent).
MORVUT_API std::optional<std::int64_t> PercentUnits(double percent) noexcept;
/// The same, or the nearest units that 64 bits can hold: nothing for NaN and infinity alone, so that what was typed
/// counts.
MORVUT_API std::optional<std::int64_t> NearestPercentUnits(double percent) noexcept;
/// Eight decimals, as in "33.33333333"; no sign of per cent.
MORVUT_API CString FormatPercentUnits(std::int64_t units);

/// What a cell for a percentage holds.
struct PercentShare
{
    enum class Kind : std::uint8_t
    {
        Empty,
        Percent,
        Error // of nothing there are no shares
    };
    Kind kind = Kind::Empty;
    std::int64_t units = 0; // of Percent

    bool IsPercent() const noexcept { return kind == Kind::Percent; }
    double Percent() const noexcept { return static_cast<double>(units) / static_cast<double>(kUnitsOfAPercent); }
    friend bool operator==(const PercentShare&, const PercentShare&) = default;
};

/// What `amount` is of `total`: empty for an amount that is not valid or zero, an error when there is no total (zero,
/// null or invalid) or the percentage is beyond all bounds.
MORVUT_API PercentShare PercentShareOf(const Kiln::CAmt& amount, const Kiln::CAmt& total) noexcept;
MORVUT_API std::vector<PercentShare> AmountsToPercents(std::span<const Kiln::CAmt> amounts, const Kiln::CAmt& total);

/// Gives each of `amounts`, which has one for each share, what its percentage is of `total` to the nearest penny (of
/// nothing when the total is not valid); null for an empty cell. Where the cell holds what PercentShareOf gives for the
/// amount, or an error, the amount stays: to look at a split in per cent changes no penny of it.
MORVUT_API void PercentsToAmounts(std::span<const PercentShare> shares, const Kiln::CAmt& total,
                                  std::span<Kiln::CAmt> amounts);

/// 100 per cent less the percentages, in units; cells without one are none. What 64 bits cannot hold is the nearest
/// that they can.
MORVUT_API std::int64_t PercentRemainder(std::span<const PercentShare> shares) noexcept;
/// The same of a default split, rounded once, so that three times 100 / 3 leave nothing: 100 per cent when there are no
/// rows. A NaN or infinity is none.
MORVUT_API std::int64_t PercentRemainder(std::span<const double> percents) noexcept;
/// Whether a default split may be kept without asking: nothing remains, to eight decimals.
MORVUT_API bool IsSplitComplete(std::span<const double> percents) noexcept;

/// Whether a remainder in per cent is only what rounding left, of `count` percentages half a unit each at most, while
/// the amounts add up (`amountLeft` is ShownRemainder's): nothing is left to allocate.
MORVUT_API bool IsRoundingOnly(std::int64_t units, std::size_t count, const Kiln::CAmt& amountLeft) noexcept;
