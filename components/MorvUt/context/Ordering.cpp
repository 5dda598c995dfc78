#include "MorvUt/context/Ordering.h"

#include <cstdint>
#include <limits>

#include "Brix/Records.h"
#include "Quarry/Session.h"

namespace
{

using namespace Brix;
using Cellar::SqlText;

SqlText ColumnName(const Quarry::Table& table, int ordinal) { return SqlText::Bracketed(table.Find(ordinal)->name); }

/// Selects the highest number of the rows under an owner; NULL where there are none.
SqlText HighestNumber(const Quarry::Table& rows, int ordering, int ownerColumn)
{
    return SqlText("SELECT MAX(COALESCE(") + ColumnName(rows, ordering) + ", 0)) FROM " +
           SqlText::Bracketed(rows.sqlName) + " WHERE " + ColumnName(rows, ownerColumn) + " = %ld";
}

/// The number of a new row of the record class `Rows`, which has the owner's id in `ownerColumn`.
template<class Rows, int ownerColumn>
int NextUnder(const Quarry::CDataList& owner)
{
    static const SqlText& select = *new SqlText(HighestNumber(Rows::Declaration(), Rows::kOrdering, ownerColumn));
    const Cellar::RowSet highest = Quarry::GetConnection().Queryf(select, owner.GetID());
    const std::int64_t number = Cellar::ToInt64(highest.rows.at(0).at(0)); // the embedded database holds 64 bits
    constexpr int kLast = std::numeric_limits<int>::max();
    return number < kLast ? static_cast<int>(number + 1) : kLast;
}

/// The same under a tax form.
template<class Rows>
int NextOnForm(const CTaxForm& form)
{
    return NextUnder<Rows, Rows::kTaxFormID>(form);
}

} // namespace

long GetCGTAcqOrderingNumber(const CCGT& owner) { return NextUnder<CCGTAcq, CCGTAcq::kCGTID>(owner); }

long GetEmployUKImcomeDetailsOrderingNumber(const CEmployUKIncome& owner)
{
    return NextUnder<CEmployUKIncomeDetails, CEmployUKIncomeDetails::kEmployUKIncomeID>(owner);
}

int GetNewEmployOrderingNumber(const CTaxForm& owner) { return NextOnForm<CNewEmploy>(owner); }

int GetNewInterestJointIncomeOrderingNumber(const CJointIncomeSourceTaxYear& owner)
{
    return NextUnder<CNewInterest, CNewInterest::kJointIncomeSourceTaxYearID>(owner);
}

int GetNewInterestOrderingNumber(const CTaxForm& owner) { return NextOnForm<CNewInterest>(owner); }

long GetNewInterestPaymentOrderingNumber(const CNewInterest& owner)
{
    return NextUnder<CNewInterestPayment, CNewInterestPayment::kNewInterestID>(owner);
}

int GetNewInterestUTOrderingNumber(const CTaxForm& owner) { return NextOnForm<CNewInterestUT>(owner); }

int GetOtherOutgoingsOrderingNumber(const CTaxForm& owner) { return NextOnForm<COtherOut>(owner); }

long GetPensionContributionPaymentOrderingNumber(const CPlan& owner)
{
    return NextUnder<CPlanPayment, CPlanPayment::kPlanID>(owner);
}

int GetPensionContributionsOrderingNumber(const CTaxForm& owner) { return NextOnForm<CPlan>(owner); }

long GetPensionStateBenefitDetailsOrderingNumber(const CPensionStateBenefits& owner)
{
    return NextUnder<CPSBDetails, CPSBDetails::kPensionStateBenefitsID>(owner);
}

int GetPensionStateBenefitsOrderingNumber(const CTaxForm& owner) { return NextOnForm<CPensionStateBenefits>(owner); }

int GetPropertyOrderingNumber(const CTaxForm& owner) { return NextOnForm<CPropUK>(owner); }
