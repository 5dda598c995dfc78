#include "Schedules.h"

#include <algorithm>

#include "Afx/windows/MessageBox.h"
#include "Kiln/controls/DateEdit.h"
#include "MorvUt/context/BusyPractice.h"
#include "MorvUt/hmrc/schedules/ReturnYear.h"
#include "MorvUt/hmrc/schedules/StagedWords.h"
#include "MorvUt/taxyear/DateRules.h"
#include "sheets/Sheets.h"

namespace Desk
{
namespace
{

using Kiln::CAmt;

struct KindRow
{
    ScheduleKind kind;
    const char* name;
    bool isOfPartnership;
    bool canBeNew;
    bool (*open)(const ScheduleOwner& owner, long id);
};

/// In the order of ScheduleKind.
constexpr KindRow kKinds[] = {
    {ScheduleKind::Employment, "Employment", false, true, &OpenEmployment},
    {ScheduleKind::Pension, "Pension or benefit", false, true, &OpenPension},
    {ScheduleKind::Interest, "Interest", false, true, &OpenInterest},
    {ScheduleKind::ForeignDividend, "Foreign dividend", false, true, &OpenForeignDividend},
    {ScheduleKind::ChangeOfBasis, "Change of basis", false, true, &OpenChangeOfBasis},
    {ScheduleKind::InvestmentIncome, "Investment income", true, false, &OpenInvestmentIncome},
};

const KindRow& RowOf(ScheduleKind kind) noexcept { return kKinds[static_cast<std::size_t>(kind)]; }

void ListHmrcKinds(std::vector<ScheduleLine>& lines, const HmrcApi::ReturnYear& own)
{
    for (const auto& row : own.employments)
        lines.push_back({ScheduleKind::Employment, row.id, row.employer, row.reference, row.pay, row.tax});
    for (const auto& row : own.pensions)
        lines.push_back({ScheduleKind::Pension, row.id, DisplayName(row), row.reference, row.amount, row.tax});
}

void ListTyped(std::vector<ScheduleLine>& lines, long form)
{
    Brix::CNewInterest interest;
    for (interest.Open({{Brix::CNewInterest::kTaxFormID, form}}, {{Brix::CNewInterest::kOrdering}}); !interest.IsEOL();
         interest.MoveNext())
        lines.push_back({ScheduleKind::Interest, interest.GetID(), interest.GetName(), {}, interest.GetIncome(), {}});
    Brix::CForeignDividend dividend;
    for (dividend.Open({{Brix::CForeignDividend::kTaxFormID, form}}, {{Brix::CForeignDividend::kOrdering}});
         !dividend.IsEOL(); dividend.MoveNext())
        lines.push_back({ScheduleKind::ForeignDividend, dividend.GetID(), dividend.GetCompany(),
                         dividend.GetCountryAbbr(), dividend.GetNet(), dividend.GetForeignTax()});
    Brix::CChangeOfBasis basis;
    CAmt sum = CAmt::kZero;
    for (basis.Open({{Brix::CChangeOfBasis::kTaxFormID, form}}); !basis.IsEOL(); basis.MoveNext())
        if (basis.GetRow3().IsValid())
            sum = sum + basis.GetRow3();
    if (basis.GetCount() > 0)
        lines.push_back({ScheduleKind::ChangeOfBasis, form, "Change of basis", {}, sum, {}});
}

void ListOfPartnership(std::vector<ScheduleLine>& lines, const ScheduleOwner& owner)
{
    using Period = Brix::CBTaxAccountingPeriod;
    using Income = Brix::CBTaxNoTaxInvestmentIncome;
    Period periods;
    for (periods.Open({Quarry::Where::Under(Period::kBTaxProprietorID, Brix::CBTaxProprietor::Declaration(),
                                            {{Brix::CBTaxProprietor::kPClientID, owner.client.id}})},
                      {{Period::kStart}});
         !periods.IsEOL(); periods.MoveNext()) {
        if (!IsDateInTaxYear(periods.GetEnd(), owner.year))
            continue;
        Income income;
        for (income.Open({{Income::kBTaxAccountingPeriodID, periods.GetID()}}); !income.IsEOL(); income.MoveNext())
            lines.push_back({ScheduleKind::InvestmentIncome,
                             income.GetID(),
                             "Untaxed income, " + Kiln::FormatDateShown(periods.GetStart()) + " to " +
                                 Kiln::FormatDateShown(periods.GetEnd()),
                             {},
                             income.GetAmount(),
                             {}});
    }
}

} // namespace

const char* NameOf(ScheduleKind kind) noexcept { return RowOf(kind).name; }

std::vector<ScheduleKind> NewKindsOf(const ScheduleOwner& owner)
{
    std::vector<ScheduleKind> kinds;
    for (const KindRow& row : kKinds)
        if (row.canBeNew && row.isOfPartnership == owner.client.IsPartnership())
            kinds.push_back(row.kind);
    return kinds;
}

std::vector<ScheduleLine> ListSchedules(const ScheduleOwner& owner)
{
    std::vector<ScheduleLine> lines;
    if (owner.client.IsPartnership()) {
        ListOfPartnership(lines, owner);
        return lines;
    }
    const HmrcApi::ReturnYear own = HmrcApi::LoadReturnYear(ClientId(owner.client.id), owner.year);
    ListHmrcKinds(lines, own);
    if (own.taxFormId != 0)
        ListTyped(lines, own.taxFormId);
    return lines;
}

bool OpenSchedule(const ScheduleOwner& owner, ScheduleKind kind, long id)
try {
    return RowOf(kind).open(owner, id);
} catch (const Cellar::DatabaseError& error) {
    TellBusyOrThrow(error);
    return false;
}

} // namespace Desk
