#include "HmrcApi/interfaces/Examples.h"

namespace HmrcApi
{
namespace
{

// The figures of HMRC's test scenarios, totals with earlier-year updates included.
// clang-format off

constexpr std::string_view kEverything = R"json({
  "employments": [
    { "employerPayeReference": "123/AB456", "employerName": "Company XYZ", "worksNumber": "A123456", "endDate": "2017-08-20", "taxablePayTotal": 22551.05, "taxTotal": 900.38, "studentLoan": 284.85,
      "companyBenefits": [
        { "benefitType": "CarBenefit", "amount": 44.00, "isForecastBenefit": false },
        { "benefitType": "CarFuelBenefit", "amount": 99.00, "isForecastBenefit": false },
        { "benefitType": "MedicalInsurance", "amount": 64.00, "isForecastBenefit": false } ] },
    { "employerPayeReference": "456/AB456", "employerName": "Company ABC", "worksNumber": "00191048716", "startDate": "2017-09-05", "taxablePayTotal": 8650.20, "taxTotal": 224.99,
      "companyBenefits": [
        { "benefitType": "VoucherAndCreditCards", "amount": 80.00, "isForecastBenefit": true },
        { "benefitType": "EmployerProvidedServices", "amount": 125.00, "isForecastBenefit": true },
        { "benefitType": "Accommodation", "amount": 375.00, "isForecastBenefit": true } ] } ],
  "privatePensions": [
    { "employerPayeReference": "321/AB456", "employerName": "Pension Provider XYZ", "worksNumber": "P654321", "endDate": "2017-12-10", "taxablePayTotal": 10150.62, "taxTotal": 2563.18 },
    { "employerPayeReference": "654/AB456", "employerName": "Pension Provider ABC", "worksNumber": "1320", "startDate": "2015-03-04", "taxablePayTotal": 3874.42, "taxTotal": 0.00 } ],
  "taxableSocialSecurityBenefits": [
    { "benefitType": "JobseekersAllowance", "employerPayeReference": "475/BB00987", "startDate": "2017-05-01", "endDate": "2017-07-31", "taxablePayTotal": 2010.10, "taxTotal": 502.02 },
    { "benefitType": "IncapacityBenefit", "employerPayeReference": "892/BA500", "startDate": "2017-08-14", "taxablePayTotal": 800.64, "taxTotal": 200.16 },
    { "benefitType": "EmploymentAndSupportAllowance", "employerPayeReference": "267/ESA500", "endDate": "2018-03-20", "taxablePayTotal": 456.11, "taxTotal": 118.04 } ],
  "taxFreeAllowances": [
    { "allowanceType": "FlatRateJobExpenses", "amount": 200.00 },
    { "allowanceType": "ProfessionalSubscriptions", "amount": 100.00 },
    { "allowanceType": "EarlierYearsAdjustment", "amount": 155.00 } ],
  "statePension": { "grossAmount": 3910.01, "typeDescription": "State Pension",
    "lumpSum": { "startDate": "2018-03-05", "endDate": "2019-04-04", "taxablePayTotal": 10520.80, "taxTotal": 2520.60 } }
})json";

constexpr std::string_view kEverythingMissingPayAndTax = R"json({
  "employments": [
    { "employerPayeReference": "123/AB456", "employerName": "Company XYZ", "worksNumber": "A123456", "endDate": "2017-08-20",
      "companyBenefits": [
        { "benefitType": "CarBenefit", "isForecastBenefit": false },
        { "benefitType": "CarFuelBenefit", "isForecastBenefit": false },
        { "benefitType": "MedicalInsurance", "amount": 64.00, "isForecastBenefit": false } ] },
    { "employerPayeReference": "456/AB456", "employerName": "Company ABC", "worksNumber": "00191048716", "startDate": "2017-09-05", "taxablePayTotal": 8650.20, "taxTotal": 224.99,
      "companyBenefits": [
        { "benefitType": "VoucherAndCreditCards", "amount": 80.00, "isForecastBenefit": true },
        { "benefitType": "EmployerProvidedServices", "amount": 125.00, "isForecastBenefit": true },
        { "benefitType": "Accommodation", "amount": 375.00, "isForecastBenefit": true } ] } ],
  "privatePensions": [
    { "employerPayeReference": "321/AB456", "employerName": "Pension Provider XYZ", "worksNumber": "P654321", "endDate": "2017-12-10" },
    { "employerPayeReference": "654/AB456", "employerName": "Pension Provider ABC", "worksNumber": "1320", "startDate": "2015-03-04", "taxablePayTotal": 3874.42, "taxTotal": 0.00 } ],
  "taxableSocialSecurityBenefits": [
    { "benefitType": "JobseekersAllowance", "employerPayeReference": "475/BB00987", "startDate": "2017-05-01", "endDate": "2017-07-31", "taxablePayTotal": 2010.10, "taxTotal": 502.02 },
    { "benefitType": "IncapacityBenefit", "employerPayeReference": "892/BA500", "startDate": "2017-08-14", "taxablePayTotal": 800.64, "taxTotal": 200.16 },
    { "benefitType": "EmploymentAndSupportAllowance", "employerPayeReference": "267/ESA500", "endDate": "2018-03-20", "taxablePayTotal": 456.11, "taxTotal": 118.04 } ],
  "taxFreeAllowances": [
    { "allowanceType": "FlatRateJobExpenses", "amount": 200.00 },
    { "allowanceType": "ProfessionalSubscriptions", "amount": 100.00 },
    { "allowanceType": "EarlierYearsAdjustment", "amount": 155.00 } ],
  "statePension": { "typeDescription": "State Pension",
    "lumpSum": { "startDate": "2018-03-05", "endDate": "2019-04-04" } }
})json";

constexpr std::string_view kEmployed = R"json({
  "employments": [
    { "employerPayeReference": "789/AB456", "employerName": "Company PQR", "worksNumber": "B987654", "startDate": "2015-07-08", "taxablePayTotal": 33100.82, "taxTotal": 7502.22, "studentLoan": 788.11,
      "companyBenefits": [
        { "benefitType": "Entertaining", "amount": 284.00, "isForecastBenefit": false },
        { "benefitType": "EmployerProvidedProfessionalSubscription", "amount": 82.00, "isForecastBenefit": false },
        { "benefitType": "PersonalIncidentExpenses", "amount": 71.00, "isForecastBenefit": false } ] } ],
  "privatePensions": [],
  "taxableSocialSecurityBenefits": [],
  "taxFreeAllowances": []
})json";

constexpr std::string_view kEmployed2 = R"json({
  "employments": [
    { "employerPayeReference": "789/AB456", "employerName": "Company EFG", "worksNumber": "C654321", "startDate": "2014-09-08", "endDate": "2017-06-30", "taxablePayTotal": 10502.81, "taxTotal": 205.21 },
    { "employerPayeReference": "789/AB456", "employerName": "Company EFG", "worksNumber": "C123456", "startDate": "2017-12-01", "taxablePayTotal": 8946.28, "taxTotal": 198.04 } ],
  "privatePensions": [],
  "taxableSocialSecurityBenefits": [],
  "taxFreeAllowances": [
    { "allowanceType": "FlatRateJobExpenses", "amount": 250.00 },
    { "allowanceType": "ProfessionalSubscriptions", "amount": 120.00 },
    { "allowanceType": "EarlierYearsAdjustment", "amount": 101.00 } ]
})json";

constexpr std::string_view kPensioner = R"json({
  "employments": [],
  "privatePensions": [
    { "employerPayeReference": "678/AB456", "employerName": "Pension Provider GHI", "worksNumber": "G987654", "startDate": "2015-01-01", "taxablePayTotal": 35987.23, "taxTotal": 8062.11 } ],
  "taxableSocialSecurityBenefits": [],
  "taxFreeAllowances": [],
  "statePension": { "grossAmount": 4650.67, "typeDescription": "State Pension",
    "lumpSum": { "startDate": "2012-06-01", "endDate": "2017-08-20", "taxablePayTotal": 30680.55, "taxTotal": 7521.12 } }
})json";

constexpr std::string_view kJobseeker = R"json({
  "employments": [
    { "employerPayeReference": "567/AB456", "employerName": "Company JKL", "worksNumber": "Q345678", "startDate": "2016-01-25", "endDate": "2017-06-11", "taxablePayTotal": 4560.95, "taxTotal": 1125.01 } ],
  "privatePensions": [],
  "taxableSocialSecurityBenefits": [
    { "benefitType": "JobseekersAllowance", "employerPayeReference": "475/BB00987", "startDate": "2017-06-12", "taxablePayTotal": 1040.84, "taxTotal": 270.16 } ],
  "taxFreeAllowances": []
})json";

constexpr std::string_view kHappyPath1 =
    R"json({ "class1": { "totalNICableEarnings": 10 }, "class2": { "totalDue": 20 }, "maxNICsReached": false })json";
constexpr std::string_view kHappyPath2 =
    R"json({ "class1": { "totalNICableEarnings": 17.00 }, "class2": { "totalDue": 319.57 }, "maxNICsReached": true })json";
// clang-format on

} // namespace

std::string_view CannedPayeAnswer(IEndpointOverride::ResponseType type) noexcept
{
    switch (type) {
    case IEndpointOverride::Everything:
        return kEverything;
    case IEndpointOverride::EverythingMissingPayAndTax:
        return kEverythingMissingPayAndTax;
    case IEndpointOverride::Employed:
        return kEmployed;
    case IEndpointOverride::Employed2:
        return kEmployed2;
    case IEndpointOverride::Pensioner:
        return kPensioner;
    case IEndpointOverride::Jobseeker:
        return kJobseeker;
    case IEndpointOverride::Live:
        break;
    }
    return {};
}

std::string_view CannedNationalInsuranceAnswer(IEndpointOverride::ResponseType type) noexcept
{
    if (CannedPayeAnswer(type).empty())
        return {};
    // The one scenario of someone without other income gets the answer below the maximum.
    return type == IEndpointOverride::Employed ? kHappyPath1 : kHappyPath2;
}

} // namespace HmrcApi
