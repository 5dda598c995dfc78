// Underwriters: members of Lloyd's.

#include "MorvUt/mappings/TypeMappings.h"

// One row a line.
// clang-format off

const TypeMapping mapLloydsIncomeGrid[] = {
    {1, "lI_ReceiptsFromLloydsCentralFund", "Receipts from Lloyd's Central Fund"},
    {2, "lI_CompensationReceipts", "Compensation Receipts"},
    {3, "lI_OtherLloydsNonSyndicateIncome", "Other Lloyd's Non-Syndicate Income"},
    {4, "lI_LateNotifiedStopLossRecoveries", "Late Notified Stop Loss Recoveries"},
    {5, "lI_RefundsOfSpecialContributions", "Refunds of Special Contributions"},
    {6, "lI_AggregateSyndicateProfit", "Aggregate Syndicate Profit"},
    {7, "lI_SyndicateForeignTax", "Syndicate Foreign Tax"},
    {8, "lI_NetWithdrawalFromNSRF", "Net Withdrawal from New-Style Special Reserve Fund"},
    {9, "lI_PersonalStopLossRecoveries", "Personal Stop Loss Recoveries"},
    {10, "lI_RepaymentsOfForeignTaxPaidByDeduction", "Repayments of Foreign Tax Paid by Deduction"},
    {11, "lI_RefundsOfSpecialContributionsResigned", "Refunds of Special Contributions, Resigned"},
    {12, "lI_RefundsOfSpecialContributionsContinuing", "Refunds of Special Contributions, Continuing"},
    kEndOfTable,
};

const TypeMapping mapLloydsExpenditureGrid[] = {
    {1, "lE_StopLossPremiums", "Stop Loss Premiums"},
    {2, "lE_BankGuaranteesLetterOfCreditFees", "Bank Guarantee and Letter of Credit Fees"},
    {3, "lE_AggregateSyndicateLosses", "Aggregate Syndicate Losses"},
    {4, "lE_LloydsMembersAssociationsExpenses", "Lloyd's Members' Associations Expenses"},
    {5, "lE_RepaymentsToCentralFund", "Repayments to Central Fund"},
    {6, "lE_PersonalQuotaSharePremiums", "Personal Quota Share Premiums"},
    {7, "lE_EstateProtectionPlanPayments", "Estate Protection Plan Payments"},
    {8, "lE_InterestOnLoansToFundUnderwriting", "Interest on Loans to Fund Underwriting"},
    {9, "lE_NetTransferToNSRF", "Net Transfer to New-Style Special Reserve Fund"},
    {10, "lE_MembersAgentProfitCommissionSalaries", "Members' Agent's Profit Commission and Salaries"},
    {11, "lE_AccountancyFees", "Accountancy Fees"},
    {12, "lE_OtherLloydsExpenses", "Other Lloyd's Expenses"},
    {13, "lE_PersonalQuotaShareandExeatPremiums", "Personal Quota Share and Exeat Premiums"},
    kEndOfTable,
};

const TypeMapping mapLloydsForeignTaxGrid[] = {
    {1, "lF_SyndicateAndPersonalForeignTax", "Syndicate and Personal Foreign Tax"},
    {2, "lF_USFederalIncomeTax", "US Federal Income Tax"},
    {3, "lF_CanadianFederalIncomeTax", "Canadian Federal Income Tax"},
    {4, "lF_AdditionalPaymentsOfForeignTax", "Additional Payments of Foreign Tax"},
    {5, "lF_RefundsOfForeignTax", "Refunds of Foreign Tax"},
    {6, "lF_USIncomeTaxPaid", "US Income Tax Paid"},
    {7, "lF_CanadianIncomeTaxPaid", "Canadian Income Tax Paid"},
    {8, "lF_SyndicateForeignTax", "Syndicate Foreign Tax"},
    {9, "lF_ForeignTaxOnPersonalFundIncome", "Foreign Tax on Personal Fund Income"},
    kEndOfTable,
};
