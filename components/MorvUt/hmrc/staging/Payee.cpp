#include "MorvUt/hmrc/staging/Payee.h"

namespace HmrcApi
{

std::string StartOf(const Kiln::CDate& start) { return start.IsValid() ? TextOf(start) : std::string(); }

std::string FiguresOf(const Kiln::CAmt& pay, const Kiln::CAmt& tax)
{
    return pay.IsValid() || tax.IsValid() ? Joined({TextOf(pay), TextOf(tax)}) : std::string();
}

Payee PayeeOf(const StagedEmployment& item)
{
    return {item.reference,
            item.worksNumber,
            StartOf(item.start),
            FiguresOf(item.pay, item.tax),
            Joined({TextOf(item.end), TextOf(item.studentLoan)}),
            item.isWithdrawn};
}

Payee PayeeOf(const StagedPension& item)
{
    return {item.reference,  item.worksNumber, StartOf(item.date), FiguresOf(item.amount, item.tax), {},
            item.isWithdrawn};
}

Trait SameTrait(int round, const Payee& payee)
{
    switch (round) {
    case 0:
        return Joined({payee.Identity(), payee.start, payee.figures, payee.more});
    case 1:
        return payee.start.empty() ? Trait() : Joined({payee.Identity(), payee.start});
    case 2:
        return payee.figures.empty() ? Trait() : Joined({payee.Identity(), payee.figures});
    default:
        return payee.Identity();
    }
}

Trait ByStart(const Payee& payee) { return payee.start.empty() ? Trait() : Joined({payee.reference, payee.start}); }

Trait ByFigures(const Payee& payee)
{
    return payee.figures.empty() ? Trait() : Joined({payee.reference, payee.figures});
}

Counts CountByReference(const std::vector<Payee>& payees)
{
    Counts counts;
    for (const Payee& payee : payees)
        counts[payee.reference] += payee.isWithdrawn ? 0 : 1;
    return counts;
}

int CountOf(const Counts& counts, const std::string& text)
{
    const auto found = counts.find(text);
    return found == counts.end() ? 0 : found->second;
}

} // namespace HmrcApi
