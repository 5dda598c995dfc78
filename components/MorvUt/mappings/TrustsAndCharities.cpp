// Trusts, estates and charities.

#include "MorvUt/mappings/TypeMappings.h"
#include "MorvUt/mappings/UnnamedTables.h"

// One row a line.
// clang-format off

const TypeMapping mapTESTypes[] = {
    {10, "tesT_Estates", "Estates"},
    {20, "tesT_Settlements", "Settlements"},
    {30, "tesT_UKTrusts", "UK Trusts"},
    {40, "tesT_ChargeableOnSettlor", "Chargeable on Settlor"},
    kEndOfTable,
};

const TypeMapping Mappings::trustStatuses[] = {
    {10, "trustStatus_Accumulation", "Accumulation and Maintenance"},
    {20, "trustStatus_Bare", "Bare"},
    {30, "trustStatus_Discretionary", "Discretionary"},
    {40, "trustStatus_Interest", "Interest in Possession"},
    {50, "trustStatus_Other", "Other"},
    kEndOfTable,
};

const TypeMapping Mappings::trustEntitlements[] = {
    {0, "tent_None", "None"},
    {1, "tent_Settlor", "Settlor"},
    {2, "tent_LifeTenant", "Life Tenant"},
    {3, "tent_Absolute", "Absolute"},
    {4, "tent_Discretionary", "Discretionary"},
    {5, "tent_Other", "Other"},
    kEndOfTable,
};

const TypeMapping Mappings::charityRepayments[] = {
    {10, "chrR_AlreadyClaimedOnFormR68", "Already Claimed on Form R68"},
    {20, "chrR_TotalRepaymentPaymentDue", "Total Repayment/Payment Due"},
    {30, "chrR_FurtherRepaymentPaymentDue", "Further Repayment/Payment Due"},
    {40, "chrR_AmountsOverclaimed", "Amounts Overclaimed"},
    kEndOfTable,
};

const TypeMapping Mappings::charityIncome[] = {
    {10, "chrI_TotalTurnoverFromExemptTradingActivities", "Total Turnover from Exempt Trading Activities"},
    {20, "chrI_InvestmentIncome", "Investment Income"},
    {30, "chrI_UKLandAndBuildingsIncome", "UK Land and Buildings Income"},
    {40, "chrI_GiftAid", "Gift Aid"},
    {50, "chrI_OtherCharities", "Other Charities"},
    {60, "chrI_Legacies", "Legacies"},
    {70, "chrI_GiftsOfSharesOrSecuritiesReceived", "Gifts of Shares or Securities Received"},
    {80, "chrI_GiftsOfRealPropertyReceived", "Gifts of Real Property Received"},
    {90, "chrI_OtherSources", "Other Sources"},
    kEndOfTable,
};

const TypeMapping Mappings::charityExpenditure[] = {
    {500, "chrE_TradingCosts", "Trading Costs"},
    {510, "chrE_UKLandAndBuildings", "UK Land and Buildings"},
    {520, "chrE_AllGeneralAdministrationCosts", "All General Administration Costs"},
    {530, "chrE_AllGrantsAndDonationsMadeInTheUK", "All Grants and Donations Made in the UK"},
    {540, "chrE_AllGrantsAndDonationsMadeOutsideTheUK", "All Grants and Donations Made Outside the UK"},
    {550, "chrE_OthersNotEnteredElsewhere", "Other Expenditure Not Entered Elsewhere"},
    kEndOfTable,
};

const TypeMapping Mappings::charityAssets[] = {
    {10, "chrA_TangibleFixedAssets", "Tangible Fixed Assets"},
    {20, "chrA_UKInvestments", "UK Investments"},
    {30, "chrA_SharesInAndLoansToControlledCos", "Shares in and Loans to Controlled Companies"},
    {40, "chrA_OverseasInvestments", "Overseas Investments"},
    {50, "chrA_LoansAndNonTradeDebtors", "Loans and Non-Trade Debtors"},
    {60, "chrA_OtherCurrentAssets", "Other Current Assets"},
    kEndOfTable,
};
