#include "MorvUt/ui/grids/Totals.h"

using Kiln::CAmt;

CAmt SumOf(std::span<const CAmt> amounts) noexcept
{
    CAmt sum = CAmt::kZero;
    for (const CAmt& amount : amounts)
        if (!amount.IsNull())
            sum = sum + amount;
    return sum;
}

CAmt ShownTotal(const CAmt& total) noexcept { return total.IsZero() ? CAmt() : total; }

CAmt ShownRemainder(const CAmt& total, std::span<const CAmt> shares) noexcept
{
    const CAmt sum = SumOf(shares);
    if (total.IsValid() && !total.IsZero())
        return ShownTotal(total - sum);
    return sum.IsZero() ? CAmt() : CAmt::Invalid();
}
