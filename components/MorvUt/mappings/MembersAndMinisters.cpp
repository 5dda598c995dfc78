// Members of parliaments and assemblies; ministers of religion.

#include "MorvUt/mappings/TypeMappings.h"

// One row a line.
// clang-format off

const TypeMapping mapMembersTypeGrid[] = {
    {10, "mpT_Parliament", "UK Parliament"},
    {20, "mpT_WelshNationalAssembly", "National Assembly for Wales"},
    {30, "mpT_ScottishParliament", "Scottish Parliament"},
    {40, "mpT_NorthernIrelandAssembly", "Northern Ireland Assembly"},
    kEndOfTable,
};

const TypeMapping mapMembersBenefitsGrid[] = {
    {10, "mpB_TravelWarrantsVouchers", "Travel Warrants and Vouchers"},
    {15, "mpB_FamilyTravelCosts", "Family Travel Costs"},
    {20, "mpB_Accommodation", "Accommodation"},
    {30, "mpB_MileageAllowance", "Mileage Allowance"},
    {35, "mpB_TemporarySecretarialAllowance", "Temporary Secretarial Allowance"},
    {40, "mpB_NonCapitalOfficeCostsAllowance", "Non-Capital Office Costs Allowance"},
    {41, "mpB_NonCapitalOfficeCostsAllowance2K4", "Non-Capital Office Costs Allowance 2004"},
    {42, "mpB_NonCapitalIncidentalExpensesProvision", "Non-Capital Incidental Expenses Provision"},
    {43, "mpB_MembersSupportAllowNonCapital", "Members' Support Allowance, Non-Capital"},
    {50, "mpB_CapitalOfficeCostsAllowance", "Capital Office Costs Allowance"},
    {51, "mpB_CapitalOfficeCostsAllowance2K4", "Capital Office Costs Allowance 2004"},
    {52, "mpB_CapitalIncidentalExpensesProvision", "Capital Incidental Expenses Provision"},
    {53, "mpB_NonCapitalOfficeCostsAllowance2K9", "Non-Capital Office Costs Allowance 2009"},
    {54, "mpB_NonCapitalIncidentalExpensesProvision2K9", "Non-Capital Incidental Expenses Provision 2009"},
    {47, "mpB_MembersSupportAllowCapital", "Members' Support Allowance, Capital"},
    {48, "mpB_MembersSupportAllowCapital2K9", "Members' Support Allowance, Capital 2009"},
    {60, "mpB_FinancialAssistanceFund", "Financial Assistance Fund"},
    {65, "mpB_PartyLeadersAllowance", "Party Leaders' Allowance"},
    {67, "mpB_GroupSupportAllowance", "Group Support Allowance"},
    {70, "mpB_OtherCashReimbursements", "Other Cash Reimbursements"},
    {80, "mpB_OtherBenefits", "Other Benefits"},
    {90, "mpB_BalancingCharges", "Balancing Charges"},
    kEndOfTable,
};

const TypeMapping mapMembersExpensesGrid[] = {
    {10, "mpE_TravelWarrants", "Travel Warrants"},
    {15, "mpE_FamilyTravelCosts", "Family Travel Costs"},
    {20, "mpE_SecretarialAndClericalAssistance", "Secretarial and Clerical Assistance"},
    {30, "mpE_ResearchAssistance", "Research Assistance"},
    {40, "mpE_OfficeExpenses", "Office Expenses"},
    {43, "mpE_StaffCosts", "Staff Costs"},
    {47, "mpE_OfficeRunningCosts", "Office Running Costs"},
    {50, "mpE_OtherExpenses", "Other Expenses"},
    {60, "mpE_CapitalAllowances", "Capital Allowances"},
    kEndOfTable,
};

const TypeMapping mapMinistersIncomeGrid[] = {
    {1010, "miniI_SalaryOrStipend", "Salary or Stipend"},
    {1020, "miniI_Fees", "Fees"},
    {1030, "miniI_Offerings", "Offerings"},
    {1040, "miniI_GiftsAndGrants", "Gifts and Grants"},
    {1045, "miniI_VicarageExpensesPaidForYou", "Vicarage Expenses Paid for You"},
    {1050, "miniI_PersonalVicarageExpensesPaidForYou", "Personal Vicarage Expenses Paid for You"},
    {1055, "miniI_PersonalExpensesPaidForYou", "Personal Expenses Paid for You"},
    {1060, "miniI_LivingAccommodationVouchersEtc", "Living Accommodation, Vouchers etc."},
    {1070, "miniI_RoundSumExpensesAndRentAllowances", "Round Sum Expenses and Rent Allowances"},
    {1080, "miniI_ExcessMileageAllowancePassengerPayments", "Excess Mileage Allowance and Passenger Payments"},
    {1090, "miniI_AnyOtherIncomeAndBalancingCharges", "Any Other Income and Balancing Charges"},
    kEndOfTable,
};

const TypeMapping mapMinistersBenefitsGrid[] = {
    {2010, "miniB_CarProvidedForYou", "Car Provided for You"},
    {2020, "miniB_FuelForCar", "Fuel for Car"},
    {2030, "miniB_VicarageOrManseServices", "Vicarage or Manse Services"},
    {2040, "miniB_InterestFreeAndLowInterestLoans", "Interest-Free and Low-Interest Loans"},
    {2050, "miniB_OtherBenefits", "Other Benefits"},
    {2060, "miniB_ExpensesPaymentsReceived", "Expenses Payments Received"},
    kEndOfTable,
};

const TypeMapping mapMinistersExpensesGrid[] = {
    {3010, "miniE_Rent", "Rent"},
    {3020, "miniE_MaintenanceRepairsAndInsuranceOfVicarage", "Maintenance, Repairs and Insurance of Vicarage"},
    {3030, "miniE_TravellingAndCapitalAllowances", "Travelling and Capital Allowances"},
    {3040, "miniE_Books", "Books"},
    {3050, "miniE_StationeryPostageAndTelephone", "Stationery, Postage and Telephone"},
    {3060, "miniE_RobesAndExpensesOfDivineServices", "Robes and Expenses of Divine Services"},
    {3070, "miniE_Secretarial", "Secretarial Assistance"},
    {3080, "miniE_ServiceBenefitCap", "Service Benefit Cap"},
    {3090, "miniE_OtherExpenses", "Other Expenses"},
    kEndOfTable,
};

const TypeMapping mapMinistersOtherIncomeGrid[] = {
    {4010, "miniOI_ChaplaincyIncome", "Chaplaincy Income"},
    {4020, "miniOI_AnyOtherIncomeAsAMinister", "Any Other Income as a Minister"},
    {4030, "miniOI_ClergyPension", "Clergy Pension"},
    kEndOfTable,
};

const TypeMapping mapMinistersCompenPaymentsGrid[] = {
    {10, "miniCP_TotalLumpSum", "Total Lump Sum"},
    {20, "miniCP_ContractualEntitlements", "Contractual Entitlements"},
    {30, "miniCP_NonApprovedRetirementBenefits", "Non-Approved Retirement Benefits"},
    {40, "miniCP_OtherSumsReceivedOnTermination", "Other Sums Received on Termination"},
    kEndOfTable,
};

const TypeMapping mapMinistersCompenReliefGrid[] = {
    {10, "miniCR_ForeignServiceExemption", "Foreign Service Exemption"},
    {20, "miniCR_ForeignServiceReduction", "Foreign Service Reduction"},
    {30, "miniCR_DisabilityExemption", "Disability Exemption"},
    {40, "miniCR_AccidentTaxedOrContribution", "Accident, Taxed or Contribution"},
    {50, "miniCR_GeneralExemption", "General Exemption"},
    kEndOfTable,
};
