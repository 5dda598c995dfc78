#include "MorvUt/money/Rates.h"

#include <cmath>
#include <limits>
#include <optional>

#include "Afx/text/Numbers.h"
#include "MorvUt/money/Pence.h"

namespace
{

using Kiln::CAmt;

/// Cut to whole pence, plus one when 0.5 or more was dropped. NaN and infinity stay what they are.
double RoundToPenny(double pence) noexcept
{
    const double whole = std::trunc(pence);
    return pence - whole >= 0.5 ? whole + 1.0 : whole;
}

double GrossOfNet(double pence, double rate) noexcept { return RoundToPenny(pence / ((100.0 - rate) / 100.0)); }

double GrossOfTax(double pence, double rate) noexcept { return RoundToPenny(pence * (100.0 / rate)); }

CAmt AmountOf(double pence) noexcept
{
    const auto whole = Afx::ToInt64(pence);
    return whole ? CAmt::FromPence(*whole) : CAmt::Invalid();
}

double FiniteOrZero(double value) noexcept { return std::isfinite(value) ? value : 0.0; }

/// The nearest double; infinity beyond its range.
double ToDouble(long double value) noexcept
{
    constexpr long double kMax = std::numeric_limits<double>::max();
    if (value > kMax || value < -kMax)
        return std::numeric_limits<double>::infinity();
    return static_cast<double>(value);
}

} // namespace

CAmt GrossFromNet(const CAmt& net, double rate) noexcept
{
    if (!net.IsValid() || net < CAmt::kZero)
        return CAmt::kZero;
    if (rate == 0.0)
        return net;
    return AmountOf(GrossOfNet(static_cast<double>(net.GetPence()), rate));
}

double GrossFromNet(const double& net, double rate) noexcept
{
    if (!(net >= 0.0))
        return 0.0;
    return rate == 0.0 ? net : FiniteOrZero(GrossOfNet(net, rate));
}

long double GrossFromNet(const long double& net, double rate) noexcept
{
    if (!(net >= 0.0L))
        return 0.0L;
    return rate == 0.0 ? net : FiniteOrZero(GrossOfNet(ToDouble(net), rate));
}

__int64 GrossFromNet(const __int64& net, double rate) noexcept
{
    return GrossFromNet(CAmt::FromPence(net), rate).GetPence();
}

CAmt GrossFromTax(const CAmt& tax, double rate) noexcept
{
    if (!tax.IsValid() || tax < CAmt::kZero || rate == 0.0)
        return CAmt::kZero;
    return AmountOf(GrossOfTax(static_cast<double>(tax.GetPence()), rate));
}

long double GrossFromTax(const long double& tax, double rate) noexcept
{
    if (!(tax >= 0.0L) || rate == 0.0)
        return 0.0L;
    return FiniteOrZero(GrossOfTax(ToDouble(tax), rate));
}

__int64 GrossFromTax(const __int64& tax, double rate) noexcept
{
    return GrossFromTax(CAmt::FromPence(tax), rate).GetPence();
}

CAmt TaxFromGross(const CAmt& gross, double rate) { return rate == 0.0 ? CAmt::kZero : gross.PercentOf(rate, 1); }

__int64 TaxFromGross(const __int64& gross, double rate)
{
    return TaxFromGross(CAmt::FromPence(gross), rate).GetPence();
}

CAmt TaxFromNet(const CAmt& net, double rate) noexcept
{
    const CAmt gross = GrossFromNet(net, rate);
    return gross.IsValid() && !gross.IsZero() ? gross - net : gross;
}

__int64 TaxFromNet(const __int64& net, double rate) noexcept
{
    return TaxFromNet(CAmt::FromPence(net), rate).GetPence();
}

__int64 CalculateAutoTax(__int64 net, __int64 taxField, double rate) noexcept
{
    if (taxField >= 0)
        return taxField;
    const __int64 tax = TaxFromNet(net, rate);
    return tax == 0 ? kAutoMarker : -tax; // pence of an amount: far from the ends of 64 bits
}

long double PercentOf(long double amount, double percent) noexcept { return percent / 100.0 * amount; }

__int64 PercentOf(__int64& pence, double percent) { return CAmt::FromPence(pence).PercentOf(percent, 1).GetPence(); }
