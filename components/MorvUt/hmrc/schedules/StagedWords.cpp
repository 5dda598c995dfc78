#include "MorvUt/hmrc/schedules/StagedWords.h"

#include <string>

#include "MorvUt/hmrc/schedules/PensionTypes.h"
#include "MorvUt/hmrc/staging/Summaries.h"
#include "MorvUt/mappings/TypeMappings.h"

namespace HmrcApi
{
namespace
{

struct Words
{
    int number;
    const char* name;
};

// By HMRC's numbers, see BenefitNumber and AllowanceNumber.
constexpr Words kBenefits[] = {
    {8, "Employer Provided Services"},
    {28, "Benefit in Kind (total)"},
    {29, "Car Fuel Benefit"},
    {30, "Medical Insurance"},
    {31, "Car Benefit"},
    {32, "Telephone Benefit"},
    {33, "Service Benefit"},
    {34, "Taxable Expenses Benefit"},
    {35, "Van Benefit"},
    {36, "Van Fuel Benefit"},
    {37, "Beneficial Loan"},
    {38, "Accommodation"},
    {39, "Assets"},
    {40, "Asset Transfer"},
    {41, "Educational Services"},
    {42, "Entertaining"},
    {43, "Expenses"},
    {44, "Mileage"},
    {45, "Non-Qualifying Relocation Expenses"},
    {46, "Nursery Places"},
    {47, "Other Items"},
    {48, "Payments on Employee's Behalf"},
    {49, "Personal Incidental Expenses"},
    {50, "Qualifying Relocation Expenses"},
    {51, "Professional Subscription (paid by the employer)"},
    {52, "Income Tax Paid but not Deducted from Director's Remuneration"},
    {53, "Travel and Subsistence"},
    {54, "Vouchers and Credit Cards"},
    {117, "Non-Cash Benefit"},
    {1009, "Company Cars and Vans"},
    {1010, "Fuel for Company Cars and Vans"},
    {1011, "Private Medical and Dental Insurance"},
    {1012, "Vouchers, Credit Cards and Excess Mileage Allowance"},
    {1013, "Goods and Other Assets Provided by the Employer"},
    {1014, "Accommodation Provided by the Employer"},
    {1015, "Other Benefits"},
    {1016, "Expenses Payments Received and Balancing Charges"},
};
constexpr Words kAllowances[] = {
    {56, "Flat Rate Job Expenses"},
    {57, "Professional Subscriptions"},
    {101, "Earlier Years' Adjustment"},
};

template<std::size_t N>
CString NameIn(const Words (&table)[N], int number, const std::string& sent)
{
    for (const Words& row : table)
        if (row.number == number)
            return row.name;
    return sent;
}

} // namespace

CString DisplayName(const StagedBenefit& benefit) { return NameIn(kBenefits, benefit.number, benefit.type); }
CString DisplayName(const StagedAllowance& allowance) { return NameIn(kAllowances, allowance.number, allowance.type); }

CString DisplayName(const StagedPension& pension)
{
    if (!pension.payer.empty())
        return pension.payer;
    const PensionSchedule* const schedule = ScheduleOf(pension.kind);
    if (SummaryOf(pension) != Summary::None || !schedule ||
        (IsStatePensionKind(pension.kind) && !pension.reference.empty()))
        return pension.reference;
    return schedule->description && *schedule->description ? schedule->description : schedule->name;
}

CString DisplayReference(const StagedPension& pension)
{
    const bool isWords =
        !ScheduleOf(pension.kind) || IsStatePensionKind(pension.kind) || SummaryOf(pension) != Summary::None;
    return isWords ? CString() : CString(pension.reference);
}

CString KeyOf(const ReturnBenefit& benefit)
{
    const char* key = nullptr;
    return GetMapShortNameFromIndex(mapNewEmployBenefitsGrid, &key, benefit.code)
               ? CString(key)
               : CString(std::to_string(benefit.code));
}

CString DisplayName(const ReturnBenefit& benefit)
{
    const char* name = nullptr;
    return GetMapLongNameFromIndex(mapNewEmployBenefitsGrid, &name, benefit.code) ? CString(name) : KeyOf(benefit);
}

CString DisplayName(const ReturnPension& pension)
{
    const char* name = "";
    if (!pension.payer.IsEmpty())
        return pension.payer;
    if (pension.description.IsEmpty())
        GetMapLongNameFromIndex(mapPSBTypes, &name, pension.type);
    return pension.description + name;
}

bool IsClass1Final(const StagedNationalInsurance& insurance, short year, const Kiln::CDate& today)
{
    const Kiln::CAmt& earnings = insurance.class1Earnings;
    return !earnings.IsValid() || !earnings.IsZero() || today >= Kiln::CDate(year, 9, 1);
}

} // namespace HmrcApi
