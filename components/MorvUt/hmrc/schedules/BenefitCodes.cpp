#include "MorvUt/hmrc/schedules/BenefitCodes.h"

#include "MorvUt/mappings/TypeMappings.h"

namespace HmrcApi
{
namespace
{

constexpr int kOtherItems = 180;

struct BenefitRow
{
    int hmrcNumber;
    int code;
};
// By HMRC's number. Several of HMRC's may share one code: they are added up.
constexpr BenefitRow kBenefits[] = {
    {8, 140},   // EmployerProvidedServices
    {28, 170},  // TotalBenefitInKind; which code is open to review
    {29, 80},   // CarFuelBenefit
    {30, 120},  // MedicalInsurance
    {31, 70},   // CarBenefit
    {32, 240},  // TelephoneBenefit
    {33, 140},  // ServiceBenefit
    {34, 260},  // TaxableExpenseBenefit; open to review
    {35, 90},   // VanBenefit
    {36, 95},   // VanFuelBenefit
    {37, 100},  // BeneficialLoan
    {38, 50},   // Accommodation
    {39, 150},  // Assets
    {40, 10},   // AssetTransfer
    {41, 200},  // EducationalService
    {42, 220},  // Entertaining
    {43, 260},  // ExpensesPay; open to review
    {44, 60},   // Mileage
    {45, 250},  // NonQualifyingRelocationExpense
    {46, 170},  // NurseryPlaces
    {47, 180},  // OtherItems
    {48, 20},   // PaymentEmployeesBehalf
    {49, 260},  // PersonalIncidentExpenses; open to review
    {50, 130},  // QualifyingRelocationExpenses
    {51, 160},  // EmployerProvidedProfessionalSubscription
    {52, 190},  // IncomeTaxPaidNotDeductedFromDirectorsRemuneration
    {53, 210},  // TravelAndSubsistence
    {54, 40},   // VoucherAndCreditCards
    {117, 170}, // NonCashBenefit: it carries Class 1A contributions
    // Sums of the benefits interface, one to one with the boxes 9 to 16 of the employment pages.
    {1009, 70},  // company cars and vans
    {1010, 80},  // fuel for them
    {1011, 120}, // private medical and dental insurance
    {1012, 40},  // vouchers, credit cards, excess mileage allowance
    {1013, 10},  // goods and other assets
    {1014, 50},  // accommodation
    {1015, 170}, // other benefits
    {1016, 260}, // expenses payments and balancing charges
};

/// Which codes are of which box of the employment pages (SA102, 9 to 14 and 16), by the code of HMRC's sum; all others
/// are of box 15.
constexpr BenefitRow kBoxes[] = {{70, 70}, {90, 70},  {80, 80}, {95, 80},   {120, 120}, {40, 40},  {60, 40},
                                 {10, 10}, {150, 10}, {50, 50}, {210, 260}, {220, 260}, {260, 260}};
constexpr int kOtherBenefits = 170;

} // namespace

int BoxCode(int code) noexcept
{
    for (const BenefitRow& row : kBoxes)
        if (row.hmrcNumber == code)
            return row.code;
    return kOtherBenefits;
}

int BenefitCode(int hmrcNumber) noexcept
{
    for (const BenefitRow& row : kBenefits)
        if (row.hmrcNumber == hmrcNumber)
            return row.code;
    return kOtherItems;
}

const char* BenefitCaption(int code) noexcept
{
    const char* caption = "";
    GetMapLongNameFromIndex(mapNewEmployBenefitsGrid, &caption, code);
    return caption;
}

} // namespace HmrcApi
