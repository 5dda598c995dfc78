// Code tables of the employment schedules.

#include "MorvUt/mappings/TypeMappings.h"

const TypeMapping mapNewEmployBenefitsGrid[] = {
    {10, "empB_AssetsTransferred", "Assets Transferred"},
    {20, "empB_PaymentsMadeForEmployee", "Payments Made for Employee"},
    {30, "empB_TaxOnNotionalPayments", "Tax on Notional Payments"},
    {40, "empB_VouchersAndCreditCards", "Vouchers and Credit Cards"},
    {50, "empB_LivingAccommodation", "Living Accommodation"},
    {60, "empB_MileageAllowance", "Mileage Allowance"},
    {70, "empB_CarBenefit", "Car Benefit"},
    {80, "empB_FuelBenefit", "Fuel Benefit"},
    {90, "empB_CompanyVans", "Company Vans"},
    {95, "empB_CompanyVansFuelBenefit", "Company Vans Fuel Benefit"},
    {100, "empB_Loan", "Loan"},
    {120, "empB_PrivateMedicalAndDentalInsure", "Private Medical and Dental Insurance"},
    {130, "empB_QualifyingRelocation", "Qualifying Relocation"},
    {140, "empB_ServicesSuppliedToEmployee", "Services Supplied to Employee"},
    {150, "empB_AssetsAtEmployeesDisposal", "Assets at Employee's Disposal"},
    {160, "empB_ProfessionalFeesAndSubscriptions", "Professional Fees and Subscriptions"},
    {170, "empB_OtherItemsWithClass1A", "Other Items with Class 1A"},
    {180, "empB_OtherItemsNoClass1A", "Other Items No Class 1A"},
    {190, "empB_RemunerationTaxPaid", "Remuneration Tax Paid"},
    {200, "empB_EducationAssistance", "Education Assistance"},
    {210, "empB_TravelAndSubsistenceCosts", "Travel and Subsistence Costs"},
    {220, "empB_Entertainment", "Entertainment"},
    {230, "empB_BusinessTravelExpenses", "Business Travel Expenses"},
    {240, "empB_HomeTelephonePayments", "Home Telephone Payments"},
    {250, "empB_NonQualifyingRelocationExpenses", "Non-Qualifying Relocation Expenses"},
    {260, "empB_OtherExpenses", "Other Expenses"},
    {270, "empB_BalancingCharges", "Balancing Charges"},
    {0, nullptr, nullptr},
};
