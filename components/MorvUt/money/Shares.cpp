// Parts of an amount: what is allocated, and what each of two owners gets.

#include <cmath>
#include <limits>
#include <optional>

#include "Afx/text/Numbers.h"
#include "MorvUt/money/Rates.h"

namespace
{

using Kiln::CAmt;

constexpr std::int64_t kMax = std::numeric_limits<std::int64_t>::max();
constexpr double kWhole = 10'000; // hundredths of a per cent

/// `available` - `amount`, where the amount is the smaller: only the upper end can be passed.
std::int64_t Leave(std::int64_t available, std::int64_t amount) noexcept
{
    std::int64_t left = 0;
    return __builtin_sub_overflow(available, amount, &left) ? kMax : left;
}

template<class Real>
Real AllocateReal(Real amount, Real& available) noexcept
{
    if (std::isnan(amount))
        return 0;
    if (amount <= available) {
        available = amount == available ? 0 : available - amount; // infinity too leaves nothing of infinity
        return amount;
    }
    const Real taken = available;
    available = 0;
    return taken;
}

/// One owner's pence; nothing for a percentage that is no number, and on overflow.
std::optional<std::int64_t> ShareOf(std::int64_t pence, double percent, int remainder) noexcept
{
    const auto hundredths = Afx::ToInt64((percent + 0.005) * 100.0);
    if (!hundredths)
        return std::nullopt;
    const auto own = static_cast<double>(*hundredths);
    const auto total = static_cast<double>(pence);
    if (remainder == 0 || own == kWhole)
        return Afx::ToInt64(own * total / kWhole);
    const auto others = Afx::ToInt64((kWhole - own) * total / kWhole);
    std::int64_t left = 0;
    if (!others || __builtin_sub_overflow(pence, *others, &left))
        return std::nullopt;
    return left;
}

template<class Value>
void ZeroBelowZero(Value& value) noexcept
{
    if (value < 0)
        value = 0;
}

} // namespace

CAmt Allocate(const CAmt& amount, CAmt& available) noexcept
{
    if (!amount.IsValid())
        return {};
    if (amount <= available) {
        const CAmt taken = amount; // it may be `available` itself
        available = CAmt(Leave(available.GetValue(), taken.GetValue()));
        return taken;
    }
    const CAmt taken = available;
    available = CAmt::kZero;
    return taken;
}

double Allocate(const double& amount, double& available) noexcept { return AllocateReal<double>(amount, available); }

long double Allocate(const long double& amount, long double& available) noexcept
{
    return AllocateReal<long double>(amount, available);
}

__int64 Allocate(const __int64& amount, __int64& available) noexcept
{
    const __int64 taken = amount <= available ? amount : available;
    available = Leave(available, taken);
    return taken;
}

void ZeroIfNegative(double& value) noexcept { ZeroBelowZero(value); }
void ZeroIfNegative(long double& value) noexcept { ZeroBelowZero(value); }
void ZeroIfNegative(__int64& value) noexcept { ZeroBelowZero(value); }

CAmt JointSpousePercentOf(const CAmt& amount, double percent, int remainder) noexcept
{
    if (amount.IsNull())
        return amount;
    if (percent == 0.0)
        return CAmt::kZero;
    if (!amount.IsValid())
        return amount;
    const auto share = ShareOf(amount.GetPence(), percent, remainder);
    return share ? CAmt::FromPence(*share) : CAmt::Invalid();
}

double JointSpousePercentOf(double amount, double percent, int remainder) noexcept
{
    if (percent == 0.0)
        return 0.0;
    const auto pence = Afx::ToInt64(amount * 100.0);
    const auto share = pence ? ShareOf(*pence, percent, remainder) : std::nullopt;
    return share ? static_cast<double>(*share) / 100.0 : 0.0;
}
