#include "MorvUt/context/detail/AccruedFigures.h"

#include <vector>

#include "Brix/Records.h"
#include "MorvUt/taxyear/DateRules.h"

namespace Context::Detail
{
namespace
{

using namespace Brix;
using Kiln::CAmt;

const AccruedFigures kNothing{CAmt(0), CAmt(0), CAmt(0), CAmt(0)};

CAmt OrZero(const CAmt& amount) { return amount.IsValid() ? amount : CAmt::kZero; }

/// The sum of the lines under a row.
template<class Lines>
CAmt SumUnder(int ownerColumn, long owner)
{
    CAmt sum = CAmt::kZero;
    Lines lines;
    for (lines.Open({{ownerColumn, owner}}); !lines.IsEOL(); lines.MoveNext())
        sum = sum + OrZero(lines.GetIncome());
    return sum;
}

/// The income of an interest row, or of its joint row, by the type of the interest row.
template<class Row, class Lines, int ownerColumn>
CAmt InterestOf(const Row& row, int type)
{
    const bool isOfLines = type == 1100 || type == 1110;
    const CAmt income = isOfLines ? SumUnder<Lines>(ownerColumn, row.GetID()) : OrZero(row.GetIncome());
    return income < CAmt::kZero ? CAmt::kZero : income;
}

CAmt OwnInterest(const CNewInterest& row)
{
    return InterestOf<CNewInterest, CNewInterestGrid, CNewInterestGrid::kNewInterestID>(row, row.GetType());
}

CAmt JointInterest(const CNewInterestJoint& row, int type)
{
    using Lines = CNewInterestJointGrid;
    return InterestOf<CNewInterestJoint, Lines, Lines::kNewInterestJointID>(row, type);
}

template<class Row>
AccruedFigures FiguresOf(const Row& row, const CAmt& income)
{
    return {row.GetBFWD(), OrZero(row.GetAddition()), OrZero(row.GetDeduction()), income};
}

template<class Rows>
bool IsSource(const Rows& row, const AccruedSource& source)
{
    return row.GetName() == source.name && (row.GetFlagA() == 1) == source.flagA &&
           (row.GetFlagB() != 0) == source.flagB;
}

AccruedFigures OfInterest(long form, const AccruedSource& source)
{
    CNewInterest rows;
    for (rows.Open({{CNewInterest::kTaxFormID, form}}); !rows.IsEOL(); rows.MoveNext())
        if (IsSource(rows, source))
            return FiguresOf(rows, OwnInterest(rows));
    return kNothing;
}

AccruedFigures OfJointInterest(long form, const AccruedSource& source)
{
    CNewInterest rows;
    for (rows.Open({{CNewInterest::kTaxFormID, form}}); !rows.IsEOL(); rows.MoveNext()) {
        CNewInterestJoint joint;
        if (IsSource(rows, source) && joint.Open({{CNewInterestJoint::kNewInterestID, rows.GetID()}}))
            return FiguresOf(joint, JointInterest(joint, rows.GetType()));
    }
    return kNothing;
}

AccruedFigures OfForeignIncome(long form, const AccruedSource& source)
{
    using Lines = COtherForeignIncomeGrid;
    COtherForeignIncome rows;
    for (rows.Open({{COtherForeignIncome::kTaxFormID, form}}); !rows.IsEOL(); rows.MoveNext())
        if (IsSource(rows, source))
            return FiguresOf(rows, SumUnder<Lines>(Lines::kOtherForeignIncomeID, rows.GetID()));
    return kNothing;
}

/// The income of the first interest row of this name, whatever its flags.
CAmt InterestNamed(long form, const CString& name)
{
    CNewInterest rows;
    for (rows.Open({{CNewInterest::kTaxFormID, form}}); !rows.IsEOL(); rows.MoveNext())
        if (rows.GetName() == name)
            return OwnInterest(rows);
    return CAmt::kZero;
}

/// The accounting periods of a partnership's businesses that end in the tax year.
std::vector<long> PeriodsEndingIn(short year, long partnership)
{
    std::vector<long> ending;
    CBTaxAccountingPeriod periods;
    periods.Open({Quarry::Where::Under(CBTaxAccountingPeriod::kBTaxProprietorID, CBTaxProprietor::Declaration(),
                                       {{CBTaxProprietor::kPClientID, partnership}})});
    for (; !periods.IsEOL(); periods.MoveNext())
        if (IsDateInTaxYear(periods.GetEnd(), year))
            ending.push_back(periods.GetID());
    return ending;
}

/// A client's part of a partnership's untaxed investment income.
CAmt InvestmentIncome(long client, long partnership, short year)
{
    using Income = CBTaxNoTaxInvestmentIncome;
    using Split = CBTaxNoTaxInvestmentIncomeSplit;
    CAmt sum = CAmt::kZero;
    if (partnership == 0) // no partnership, as in the proprietor records of clients
        return sum;
    for (const std::vector<long>& periods : Quarry::Where::InPieces(PeriodsEndingIn(year, partnership))) {
        Split parts;
        parts.Open({{Split::kClientID, client},
                    Quarry::Where::Under(Split::kBTaxNoTaxInvestmentIncomeID, Income::Declaration(),
                                         {Quarry::Where::In(Income::kBTaxAccountingPeriodID, periods)})});
        for (; !parts.IsEOL(); parts.MoveNext())
            sum = sum + OrZero(parts.GetOverride() ? parts.GetShareOverride() : parts.GetShare());
    }
    return sum;
}

AccruedFigures OfPartnership(long form, const AccruedSource& source, short year)
{
    enum Kind
    {
        OfInterestRow = 0,
        OfShare = 1
    };
    CPartnershipAccruedIncome rows;
    for (rows.Open({{CPartnershipAccruedIncome::kTaxFormID, form}}); !rows.IsEOL(); rows.MoveNext()) {
        if (rows.GetName() != source.name)
            continue;
        const int kind = rows.GetKind();
        return FiguresOf(rows, kind == OfInterestRow ? InterestNamed(form, source.name)
                               : kind == OfShare     ? InvestmentIncome(source.clientId, rows.GetPClientID(), year)
                                                     : CAmt::kZero);
    }
    return kNothing;
}

} // namespace

AccruedFigures ReadAccruedFigures(const AccruedSource& source, short year)
{
    CTaxForm form;
    if (!form.Open({{CTaxForm::kClientID, source.clientId}, {CTaxForm::kYear, year}}))
        return kNothing;
    switch (source.type) {
    case SchedTypeInterest:
        return OfInterest(form.GetID(), source);
    case SchedTypeJointInterest:
        return OfJointInterest(form.GetID(), source);
    case SchedTypeForeign:
        return OfForeignIncome(form.GetID(), source);
    case SchedTypePartnership:
        break;
    }
    return OfPartnership(form.GetID(), source, year);
}

} // namespace Context::Detail
