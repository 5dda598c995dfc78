// Schedules of the return for HMRC's items that it lacks.

#include <algorithm>
#include <limits>

#include "MorvUt/hmrc/detail/PayeAnswer.h"
#include "MorvUt/hmrc/detail/PayeMatches.h"
#include "Quarry/Session.h"
#include "Shellkit/Identity.h"

namespace HmrcApi
{
namespace
{

/// How a staged pension or benefit becomes a schedule: codes of mapPSBCategorys and mapPSBTypes.
struct NewPsb
{
    long mtdType;
    long section;
    long type;
    const char* description; // null: HMRC's own text
};
constexpr NewPsb kNewPsbs[] = {
    {CPAYEPrepop::MTD_None, 200, kStatePensionType, nullptr},
    {CPAYEPrepop::MTD_PrivatePension, 200, 1050, nullptr},
    {CPAYEPrepop::MTD_JobseekersAllowance, 300, 1090, ""},
    {CPAYEPrepop::MTD_IncapacityBenefit, 300, 1140, "Taxable Incapacity Benefit"},
    {CPAYEPrepop::MTD_EmploymentAndSupportAllowance, 300, 1140, "Employment and Support Allowance"},
};

const NewPsb& NewPsbOf(long mtdType)
{
    return *std::find_if(std::begin(kNewPsbs), std::end(kNewPsbs),
                         [&](const NewPsb& row) { return row.mtdType == mtdType; });
}

/// One more than the highest ordering number in use; stays at the greatest number there is.
template<class List>
int NextOrdering(RowsUnder<List>& schedules)
{
    int highest = 0;
    for (int row = 0; row < schedules.GetCount(); ++row)
        highest = std::max(highest, schedules[row].GetOrdering());
    return highest == std::numeric_limits<int>::max() ? highest : highest + 1;
}

template<class List>
int NextOrdering(ClientId client, short year)
{
    RowsUnder<List> schedules(TaxFormIds(client, year), List::kTaxFormID);
    return NextOrdering(schedules);
}

/// The staged figures. The reference stays HMRC's own: where it is not enough, the works number stands beside it.
void FillEmployment(Brix::CNewEmploy& schedule, const Brix::CMTD_Employments& staged)
{
    schedule.SetPAYEReference(staged.GetPAYEReference().IsEmpty() ? staged.GetKey() : staged.GetPAYEReference());
    schedule.SetWorksNumber(staged.GetWorksNumber());
    schedule.SetStart(staged.GetStart());
    schedule.SetEnd(staged.GetEnd());
    schedule.SetPay(staged.GetPay());
    schedule.SetTax(staged.GetTax());
    schedule.SetStudentLoan(staged.GetStudentLoan());
    schedule.SetFromHMRC(true);
}

void AddBenefits(long newEmployId, long stagedEmploymentId)
{
    Brix::CNewEmployBenefits list;
    for (const auto& [code, total] : StagedBenefits(stagedEmploymentId)) {
        list.AddNew();
        list.SetNewEmployID(newEmployId);
        list.SetType(code);
        list.SetBenefit(total.amount);
        list.SetEstimate(total.isEstimate);
        list.Update();
    }
}

CString NoteOfRepeated(const Brix::CMTD_PensionStateBenefits& staged)
{
    CString note;
    note.Format("%s: HMRC sent more than one item with the same %s; one schedule stands for them, with the figures of "
                "the first.",
                PsbName(staged.GetMTDType()),
                CPAYEPrepop::IsTaxableSocialSecurityBenefit(staged.GetMTDType()) ? "date or without a date"
                                                                                 : "reference");
    return note;
}

} // namespace

void CPAYEPrepop::CreateNewSchedules()
{
    m_created = {};
    Quarry::CTransaction transaction;
    try {
        CreateNewEmploymentSchedules();
        CreateNewPensionStateBenefitSchedules_PrivatePensions();
        CreateNewPensionStateBenefitSchedules_TaxableSocialSecurityBenefits();
        CreateNewPensionStateBenefitSchedules_Other();
        transaction.Commit();
    } catch (...) {
        m_created = {};
        throw;
    }
}

void CPAYEPrepop::CreateNewEmploymentSchedules()
{
    EmploymentMatches matches(GetClient(), GetYear());
    int ordering = NextOrdering(matches.schedules);
    Brix::CNewEmploy list;
    for (int row = 0; row < matches.staged.GetCount(); ++row) {
        if (matches.scheduleOf[static_cast<std::size_t>(row)] != kNoSchedule)
            continue;
        const Brix::CMTD_Employments& staged = matches.staged[row];
        CreateNewEmploymentSchedule(list, ordering, staged.GetKey(), staged.GetEmployerName());
        FillEmployment(list, staged);
        list.Update();
        AddBenefits(list.GetID(), staged.GetID());
        ++m_created.employments;
    }
}

void CPAYEPrepop::CreateNewEmploymentSchedule(Brix::CNewEmploy& schedules, int& ordering, const char* identifyingText,
                                              const char* employerName)
{
    schedules.AddNew();
    schedules.SetTaxFormID(EnsureTaxForm(GetClient(), GetYear()));
    schedules.SetClientID(GetClient().Get());
    schedules.SetYear(GetYear());
    schedules.SetGUID(Shellkit::FormatGuid(Shellkit::NewGuid()));
    schedules.SetOrdering(ordering);
    schedules.SetPAYEReference(identifyingText);
    schedules.SetEmployerName(employerName);
    if (ordering < std::numeric_limits<int>::max())
        ++ordering;
}

void CPAYEPrepop::CreateNewPensionStateBenefitSchedule(long section, long type, Kiln::CAmt amount, Kiln::CAmt tax,
                                                       bool estimate, const char* payerName, const char* payerReference,
                                                       Kiln::CDate date, const char* description)
{
    Brix::CPensionStateBenefits list;
    list.AddNew();
    list.SetTaxFormID(EnsureTaxForm(GetClient(), GetYear()));
    list.SetClientID(GetClient().Get());
    list.SetYear(GetYear());
    list.SetOrdering(NextOrdering<Brix::CPensionStateBenefits>(GetClient(), GetYear()));
    list.SetSection(static_cast<int>(section));
    list.SetType(static_cast<int>(type));
    list.SetDescription(description);
    list.SetReference(payerReference);
    list.SetPayer(payerName);
    list.SetStart(date);
    list.SetAmount(amount);
    list.SetTax(tax);
    list.SetEstimate(estimate);
    list.Update();
    ++m_created.pensionsAndBenefits;
}

void CPAYEPrepop::CreateNewPsbSchedules(bool (*isOfKind)(long mtdType))
{
    PsbMatches matches(GetClient(), GetYear());
    for (int row = 0; row < matches.staged.GetCount(); ++row) {
        const Brix::CMTD_PensionStateBenefits& staged = matches.staged[row];
        if (!isOfKind(staged.GetMTDType()))
            continue;
        if (matches.isRepeated[static_cast<std::size_t>(row)])
            m_created.notes.push_back(NoteOfRepeated(staged));
        if (!matches.isNew[static_cast<std::size_t>(row)])
            continue;
        const NewPsb& how = NewPsbOf(staged.GetMTDType());
        const bool isState = how.mtdType == MTD_None; // its text is the description, and it has no payer's reference
        const CString own = isState ? staged.GetReference() : staged.GetPayer();
        CreateNewPensionStateBenefitSchedule(how.section, how.type, staged.GetAmount(), staged.GetTax(), false,
                                             staged.GetPayer(), isState ? CString() : staged.GetReference(),
                                             staged.GetStart(), how.description ? how.description : own.GetString());
    }
}

void CPAYEPrepop::CreateNewPensionStateBenefitSchedules_PrivatePensions()
{
    CreateNewPsbSchedules([](long type) { return IsPrivatePension(type); });
}

void CPAYEPrepop::CreateNewPensionStateBenefitSchedules_TaxableSocialSecurityBenefits()
{
    CreateNewPsbSchedules([](long type) { return IsTaxableSocialSecurityBenefit(type); });
}

void CPAYEPrepop::CreateNewPensionStateBenefitSchedules_Other()
{
    CreateNewPsbSchedules([](long type) { return type == MTD_None; });
}

} // namespace HmrcApi
