// Employments: pay, benefits, expenses, compensation, share schemes.

#include "MorvUt/mappings/TypeMappings.h"
#include "MorvUt/mappings/UnnamedTables.h"

// One row a line.
// clang-format off

const TypeMapping EmpStatusRefs[] = {
    {0, "DIRECTOR", "Director"},
    {1, "EMPLOYEE", "Employee"},
    kEndOfTable,
};

const TypeMapping EmpTypeRefs[] = {
    {0, "CASE1", "Case I"},
    {1, "CASE2", "Case II"},
    {2, "CASE3", "Case III"},
    kEndOfTable,
};

const TypeMapping mapNewEmployUKIncomeGrid[] = {
    {10, "empUKI_TaxableUKPay", "Taxable UK Pay"},
    {20, "empUKI_Tips", "Tips"},
    {30, "empUKI_OtherPayments", "Other Payments"},
    kEndOfTable,
};

// Two codes have two keys each; by code the first is found.
const TypeMapping mapNewEmployForeignAspectsGrid[] = {
    {10, "empFA_GrossForeignPay", "Gross Foreign Pay"},
    {20, "empFA_AmountNotTaxable", "Amount not Taxable"},
    {30, "empFA_SeafarersForeignEarningsDeduction", "Seafarers' Foreign Earnings Deduction"},
    {40, "empFA_LessSeafarersDeductionRestriction", "Less Seafarers' Deduction Restriction"},
    {50, "empFA_ForeignTaxWithNoTaxCreditReliefClaimed", "Foreign Tax with No Tax Credit Relief Claimed"},
    {50, "empFA_ForeignTaxClaimedAsADeduction", "Foreign Tax Claimed as a Deduction"},
    {60, "empFA_AssessableIncome", "Assessable Income"},
    {70, "empFA_ForeignTaxClaimedAsTaxCreditRelief", "Foreign Tax Claimed as Tax Credit Relief"},
    {70, "empFA_ForeignTaxAvailableForFTCRelief", "Foreign Tax Available for Foreign Tax Credit Relief"},
    kEndOfTable,
};

const TypeMapping mapNewEmployBenefitsGrid[] = {
    {10, "empB_AssetsTransferred", "Assets Transferred"},
    {20, "empB_PaymentsMadeForEmployee", "Payments Made for Employee"},
    {30, "empB_TaxOnNotionalPayments", "Tax on Notional Payments"},
    {40, "empB_VouchersAndCreditCards", "Vouchers and Credit Cards"},
    {50, "empB_LivingAccommodation", "Living Accommodation"},
    {60, "empB_MileageAllowance", "Mileage Allowance"},
    {70, "empB_CarBenefit", "Car Benefit"},
    {80, "empB_FuelBenefit", "Car Fuel Benefit"},
    {90, "empB_CompanyVans", "Company Vans"},
    {95, "empB_CompanyVansFuelBenefit", "Van Fuel Benefit"},
    {100, "empB_Loan", "Interest-Free and Low-Interest Loans"},
    {120, "empB_PrivateMedicalAndDentalInsure", "Private Medical and Dental Insurance"},
    {130, "empB_QualifyingRelocation", "Qualifying Relocation Expenses"},
    {140, "empB_ServicesSuppliedToEmployee", "Services Supplied to Employee"},
    {150, "empB_AssetsAtEmployeesDisposal", "Assets Placed at Employee's Disposal"},
    {160, "empB_ProfessionalFeesAndSubscriptions", "Professional Fees and Subscriptions"},
    {170, "empB_OtherItemsWithClass1A", "Other Items (Class 1A)"},
    {180, "empB_OtherItemsNoClass1A", "Other Items (Non-Class 1A)"},
    {190, "empB_RemunerationTaxPaid", "Income Tax Paid but Not Deducted from Director's Remuneration"},
    {200, "empB_EducationAssistance", "Education Assistance"},
    {210, "empB_TravelAndSubsistenceCosts", "Travel and Subsistence Costs"},
    {220, "empB_Entertainment", "Entertainment"},
    {230, "empB_BusinessTravelExpenses", "General Expenses Allowance for Business Travel"},
    {240, "empB_HomeTelephonePayments", "Home Telephone Payments"},
    {250, "empB_NonQualifyingRelocationExpenses", "Non-Qualifying Relocation Expenses"},
    {260, "empB_OtherExpenses", "Other Expenses Payments"},
    {270, "empB_BalancingCharges", "Balancing Charges"},
    kEndOfTable,
};

const TypeMapping mapNewEmployExpensesGrid[] = {
    {10, "empE_TravelAndSubsistenceCosts", "Travel and Subsistence Costs"},
    {20, "empE_FixedDeductonsForExpenses", "Fixed Deductions for Expenses"},
    {30, "empE_ProfessionalFeesAndSubscriptions", "Professional Fees and Subscriptions"},
    {40, "empE_OtherExpenses", "Other Expenses"},
    {50, "empE_CapitalAllowances", "Capital Allowances"},
    kEndOfTable,
};

// The older schedule; wording of SA101.
const TypeMapping mapEmploymentBenefits[] = {
    {0, "EB_ASTFD", "Assets Transferred"},
    {1, "EB_PMADE", "Payments Made for Employee"},
    {2, "EB_VCCTK", "Vouchers, Credit Cards and Tokens"},
    {3, "EB_LIVAC", "Living Accommodation"},
    {4, "EB_MIALW", "Mileage Allowance"},
    {5, "EB_CARBN", "Company Cars"},
    {6, "EB_FUELB", "Fuel for Company Cars"},
    {7, "EB_CMPVA", "Company Vans"},
    {8, "EB_IFLLO", "Interest-Free and Low-Interest Loans"},
    {9, "EB_MOBPH", "Mobile Phones"},
    {10, "EB_PMEDT", "Private Medical or Dental Insurance"},
    {11, "EB_OTBEN", "Other Benefits"},
    {12, "EB_OEXPA", "Expenses Payments Received"},
    {13, "EB_BACHG", "Balancing Charges"},
    kEndOfTable,
};

const TypeMapping mapEmploymentExpenses[] = {
    {0, "EE_TRASC", "Travel and Subsistence Costs"},
    {1, "EE_FDEXP", "Fixed Deductions for Expenses"},
    {2, "EE_PRFAS", "Professional Fees and Subscriptions"},
    {3, "EE_OTEXP", "Other Expenses"},
    {4, "EE_CPALW", "Capital Allowances"},
    kEndOfTable,
};

const TypeMapping mapEmploymentCompensationPayments[] = {
    {0, "EC_TOTLS", "Total Lump Sum"},
    {1, "EC_COENT", "Contractual Entitlements"},
    {2, "EC_NAPRB", "Non-Approved Retirement Benefits"},
    {3, "EC_SIOTM", "Other Sums Received on Termination"},
    kEndOfTable,
};

const TypeMapping mapEmploymentCompensationRelief[] = {
    {0, "EC_FRSEX", "Foreign Service Exemption"},
    {1, "EC_FRRED", "Foreign Service Reduction"},
    {2, "EC_DISEX", "Disability Exemption"},
    {3, "EC_ACTXC", "Accident, Taxed or Contribution"},
    {4, "EC_GENEX", "General Exemption"},
    kEndOfTable,
};

// Sections of form P11D.
const TypeMapping EmpP11DBenefitsRefs[] = {
    {0, "ASSTRAN", "Assets Transferred"},
    {1, "PAYMADE", "Payments Made for Employee"},
    {2, "TXNOTION", "Tax on Notional Payments"},
    {3, "VOUCCTR", "Vouchers and Credit Cards"},
    {4, "LIVACC", "Living Accommodation"},
    {5, "MLGALLRE", "Mileage Allowance"},
    {6, "CARBEN", "Car Benefit"},
    {7, "FUELBEN", "Car Fuel Benefit"},
    {8, "COMPVAN", "Company Vans"},
    {9, "INFRLIL1", "Interest-Free and Low-Interest Loan 1"},
    {10, "INFRLIL2", "Interest-Free and Low-Interest Loan 2"},
    {11, "PRIVMED", "Private Medical and Dental Insurance"},
    {12, "QUALRELO", "Qualifying Relocation Expenses"},
    {13, "SERVEMP", "Services Supplied to Employee"},
    {14, "ASSTEMP", "Assets Placed at Employee's Disposal"},
    {15, "PROFEES", "Professional Fees and Subscriptions"},
    {16, "OTHRITEM", "Other Items"},
    {17, "TXPAIDDI", "Income Tax Paid but Not Deducted from Director's Remuneration"},
    {18, "EDUASSIS", "Education Assistance"},
    {19, "TRAVSUBS", "Travel and Subsistence Costs"},
    {20, "ENTERTAI", "Entertainment"},
    {21, "GENEXPEN", "General Expenses Allowance for Business Travel"},
    {22, "TELEPHON", "Payments for Use of Home Telephone"},
    {23, "NOQUALRE", "Non-Qualifying Relocation Expenses"},
    {24, "OTHEXP", "Other Expenses Payments"},
    {25, "BALCHARG", "Balancing Charges"},
    kEndOfTable,
};

const TypeMapping mapBeneficialLoanTypes[] = {
    {1, "bl_Repayment", "Repayment"},
    {2, "bl_Interest", "Interest"},
    {3, "bl_FurtherAdvance", "Further Advance"},
    kEndOfTable,
};

const TypeMapping Mappings::classifiedBenefits[] = {
    {10, "cbTypeBeneficialLoan", "Beneficial Loan"},
    {20, "cbTypeCarFuel", "Car Fuel"},
    {30, "cbTypeLivingAccommodation", "Living Accommodation"},
    {40, "cbTypeVan", "Van"},
    {50, "cbTypeClergyServiceBenefitCap", "Clergy Service Benefit Cap"},
    kEndOfTable,
};

const TypeMapping ShareSchTypes[] = {
    {0, "APSRELOP", "Approved Savings-Related Share Options"},
    {1, "APDIOPT", "Approved Discretionary Share Options"},
    {2, "UNAPOPT", "Unapproved Share Options"},
    {3, "SHACQU", "Shares Acquired"},
    {4, "EMI", "Enterprise Management Incentives"},
    {5, "AESOP", "All-Employee Share Ownership Plan"},
    kEndOfTable,
};

const TypeMapping ShareSchEvents[] = {
    {0, "GRANT", "Grant"},
    {1, "EXERCISE", "Exercise"},
    {2, "CANREL", "Cancellation or Release"},
    {3, "ACQASPAY", "Acquired as Pay"},
    {4, "ACQASBEN", "Acquired as Benefit"},
    {5, "POACQCHG", "Post-Acquisition Charge"},
    {6, "SAORTSFR", "Sale or Transfer"},
    {7, "CEASED", "Ceased"},
    kEndOfTable,
};
