// HMRC's numbers of the types of benefits and allowances ("individual's additional benefits and deductions"), and ours
// of the sums of benefits that it gives without one.

#include "HmrcApi/records/Responses.h"

namespace HmrcApi
{
namespace
{

struct IabdType
{
    std::string_view name;
    int number;
};

// Source: the type list of HMRC's public record service.
constexpr IabdType kBenefits[] = {
    {"EmployerProvidedServices", 8},
    {"TotalBenefitInKind", 28},
    {"CarFuelBenefit", 29},
    {"MedicalInsurance", 30},
    {"CarBenefit", 31},
    {"TelephoneBenefit", 32},
    {"ServiceBenefit", 33},
    {"TaxableExpenseBenefit", 34},
    {"VanBenefit", 35},
    {"VanFuelBenefit", 36},
    {"BeneficialLoan", 37},
    {"Accommodation", 38},
    {"Assets", 39},
    {"AssetTransfer", 40},
    {"EducationalService", 41},
    {"Entertaining", 42},
    {"ExpensesPay", 43},
    {"Mileage", 44},
    {"NonQualifyingRelocationExpense", 45},
    {"NurseryPlaces", 46},
    {"OtherItems", 47},
    {"PaymentEmployeesBehalf", 48},
    {"PersonalIncidentExpenses", 49},
    {"QualifyingRelocationExpenses", 50},
    {"EmployerProvidedProfessionalSubscription", 51},
    {"IncomeTaxPaidNotDeductedFromDirectorsRemuneration", 52},
    {"TravelAndSubsistence", 53},
    {"VoucherAndCreditCards", 54},
    {"NonCashBenefit", 117},
    // Of the benefits interface: 1000 and the box of the employment pages (SA102).
    {"companyCarsAndVansBenefit", 1009},
    {"fuelForCompanyCarsAndVansBenefit", 1010},
    {"privateMedicalDentalInsurance", 1011},
    {"vouchersCreditCardsExcessMileageAllowance", 1012},
    {"goodsEtcProvidedByEmployer", 1013},
    {"accommodationProvidedByEmployer", 1014},
    {"otherBenefits", 1015},
    {"expensesPaymentsReceived", 1016},
};

constexpr IabdType kAllowances[] = {
    {"FlatRateJobExpenses", 56},
    {"ProfessionalSubscriptions", 57},
    {"EarlierYearsAdjustment", 101},
};

template<std::size_t N>
int NumberOf(const IabdType (&types)[N], std::string_view name) noexcept
{
    for (const IabdType& type : types)
        if (type.name == name)
            return type.number;
    return 0;
}

} // namespace

int BenefitNumber(std::string_view iabdType) noexcept { return NumberOf(kBenefits, iabdType); }

int AllowanceNumber(std::string_view iabdType) noexcept { return NumberOf(kAllowances, iabdType); }

} // namespace HmrcApi
