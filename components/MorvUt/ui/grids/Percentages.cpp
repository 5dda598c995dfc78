#include "MorvUt/ui/grids/Percentages.h"

#include <cmath>
#include <limits>

#include "Afx/text/Numbers.h"

using Kiln::CAmt;

namespace
{

/// `left` - `units`, or the nearest number that there is.
std::int64_t LessUnits(std::int64_t left, std::int64_t units) noexcept
{
    using Limits = std::numeric_limits<std::int64_t>;
    std::int64_t result = 0;
    if (__builtin_sub_overflow(left, units, &result))
        return units > 0 ? Limits::min() : Limits::max();
    return result;
}

} // namespace

std::optional<std::int64_t> PercentUnits(double percent) noexcept
{
    return Afx::ToInt64(std::round(percent * static_cast<double>(kUnitsOfAPercent)));
}

std::optional<std::int64_t> NearestPercentUnits(double percent) noexcept
{
    using Limits = std::numeric_limits<std::int64_t>;
    if (!std::isfinite(percent))
        return std::nullopt;
    return PercentUnits(percent).value_or(percent < 0 ? Limits::min() : Limits::max());
}

CString FormatPercentUnits(std::int64_t units)
{
    const auto bits = static_cast<std::uint64_t>(units);
    const std::uint64_t magnitude = units < 0 ? 0 - bits : bits;
    constexpr auto kUnits = static_cast<std::uint64_t>(kUnitsOfAPercent);
    CString text;
    text.Format("%s%I64u.%08I64u", units < 0 ? "-" : "", magnitude / kUnits, magnitude % kUnits);
    return text;
}

PercentShare PercentShareOf(const CAmt& amount, const CAmt& total) noexcept
{
    if (!amount.IsValid() || amount.IsZero())
        return {};
    if (!total.IsValid() || total.IsZero())
        return {PercentShare::Kind::Error};
    const double percent = static_cast<double>(amount.GetValue()) / static_cast<double>(total.GetValue()) * 100.0;
    const auto units = PercentUnits(percent);
    return units ? PercentShare{PercentShare::Kind::Percent, *units} : PercentShare{PercentShare::Kind::Error};
}

std::vector<PercentShare> AmountsToPercents(std::span<const CAmt> amounts, const CAmt& total)
{
    std::vector<PercentShare> shares;
    for (const CAmt& amount : amounts)
        shares.push_back(PercentShareOf(amount, total));
    return shares;
}

void PercentsToAmounts(std::span<const PercentShare> shares, const CAmt& total, std::span<CAmt> amounts)
{
    const CAmt whole = total.IsValid() ? total : CAmt::kZero;
    for (std::size_t i = 0; i < shares.size(); ++i) {
        if (shares[i].kind == PercentShare::Kind::Error || shares[i] == PercentShareOf(amounts[i], total))
            continue;
        amounts[i] = shares[i].IsPercent() ? whole.PercentOf(shares[i].Percent(), 1) : CAmt();
    }
}

std::int64_t PercentRemainder(std::span<const PercentShare> shares) noexcept
{
    std::int64_t left = kUnitsOfAll;
    for (const PercentShare& share : shares)
        if (share.IsPercent())
            left = LessUnits(left, share.units);
    return left;
}

std::int64_t PercentRemainder(std::span<const double> percents) noexcept
{
    double sum = 0;
    for (const double percent : percents)
        sum += std::isfinite(percent) ? percent : 0;
    using Limits = std::numeric_limits<std::int64_t>;
    return PercentUnits(100 - sum).value_or(sum > 0 ? Limits::min() : Limits::max());
}

bool IsSplitComplete(std::span<const double> percents) noexcept { return PercentRemainder(percents) == 0; }

bool IsRoundingOnly(std::int64_t units, std::size_t count, const CAmt& amountLeft) noexcept
{
    const auto most = static_cast<std::int64_t>(count / 2);
    return units >= -most && units <= most && amountLeft.IsNull();
}
