// Interest, dividends and shares.

#include "MorvUt/mappings/TypeMappings.h"
#include "MorvUt/mappings/UnnamedTables.h"

// One row a line.
// clang-format off

const TypeMapping IntTypeRefs[] = {
    {0, "NTBANK", "Net Bank"},
    {1, "NSBORACC", "NSB Ordinary Account"},
    {2, "NSBINACC", "NSB Investment Account"},
    {3, "INCBONDS", "Income Bonds"},
    {4, "CAPBONDS", "Capital Bonds"},
    {5, "GRSBANK", "Gross Bank"},
    {6, "NONLBSRC", "Non-Listed Sources"},
    {7, "GRSUKSRC", "Gross UK Sources"},
    {8, "OTHRSRC", "Other Sources"},
    {9, "DEPBONDS", "Deposit Bonds"},
    {10, "FSTOPTBD", "First Option Bonds"},
    {11, "PENINCBD", "Pensioners' Guaranteed Income Bonds"},
    {12, "OTHUKGRS", "Other UK Gross"},
    {13, "OTHUKNET", "Other UK Net"},
    {14, "INGOVLN", "Government Loan Stock"},
    {15, "INUNTIN", "Unit Trust Interest"},
    {16, "FRSBNDS", "Fixed Rate Savings Bonds"},
    kEndOfTable,
};

const TypeMapping BTaxTaxedInvestmentIncomeEnums[] = {
    {1, "tiiFirstOptionBonds", "First Option Bonds"},
    {2, "tiiNetBanks", "Net Bank Interest"},
    {6, "tiiScheduleDviReceipts", "Schedule D Case VI Receipts"},
    {3, "tiiOtherUKSourcesNet", "Other UK Sources Net"},
    {7, "tiiForeignBankAndOther", "Foreign Bank and Other"},
    {8, "tiiFixedRateSavingsBonds", "Fixed Rate Savings Bonds"},
    {9, "tiiForeignSecurities", "Foreign Securities"},
    {10, "tiiGovLoanStock", "Government Loan Stock"},
    {11, "tiiSchDviCatA", "Schedule D Case VI Category A"},
    {12, "tiiSchDviCatB", "Schedule D Case VI Category B"},
    {200, "tiiIncomeUnitTrust", "Income Unit Trust"},
    {210, "tiiAccumulationUnitTrust", "Accumulation Unit Trust"},
    kEndOfTable,
};

const TypeMapping BTaxNoTaxInvestmentIncomeEnums[] = {
    {1, "ntinvCapitalBonds", "Capital Bonds"},
    {2, "ntinvDepositBonds", "Deposit Bonds"},
    {3, "ntinvGrossBanks", "Gross Bank Interest"},
    {6, "ntinvGrossOtherUKSource", "Gross Other UK Source"},
    {7, "ntinvIncomeBonds", "Income Bonds"},
    {8, "ntinvNSBInvestmentAccounts", "NSB Investment Accounts"},
    {9, "ntinvNSBOrdinaryAccounts", "NSB Ordinary Accounts"},
    {10, "ntinvScheduleDviReceipts", "Schedule D Case VI Receipts"},
    {4, "ntinvOtherUKSourcesGross", "Other UK Sources Gross"},
    {11, "ntinvGrossForeignBanksAndOther", "Gross Foreign Banks and Other"},
    {12, "ntinvGrossForeignDividends", "Gross Foreign Dividends"},
    {13, "ntinvGrossForeignSecurities", "Gross Foreign Securities"},
    {14, "ntinvSchDviCatA", "Schedule D Case VI Category A"},
    {15, "ntinvSchDviCatB", "Schedule D Case VI Category B"},
    {16, "ntinvEasyAccessSavingsAccounts", "Easy Access Savings Accounts"},
    {17, "ntinvOffshoreIncomeGain", "Offshore Income Gain"},
    {200, "ntinvIncomeUnitTrust", "Income Unit Trust"},
    {210, "ntinvAccumulationUnitTrust", "Accumulation Unit Trust"},
    kEndOfTable,
};

const TypeMapping Mappings::interestCategories[] = {
    {10, "intC_BanksBuildingSocieties", "Banks and Building Societies"},
    {20, "intC_NationalSavings", "National Savings"},
    {30, "intC_GiltsStocks", "Gilts and Stocks"},
    {40, "intC_PrivateLoansOther", "Private Loans and Other"},
    {50, "intC_UnitTrusts", "Unit Trusts"},
    kEndOfTable,
};

const TypeMapping Mappings::interestTypes[] = {
    {1000, "intT_GrossBanksOther", "Gross Banks and Other"},
    {1010, "intT_NetBanksOther", "Net Banks and Other"},
    {1020, "intT_CapitalBonds", "Capital Bonds"},
    {1030, "intT_DepositBonds", "Deposit Bonds"},
    {1040, "intT_FirstOptionBonds", "First Option Bonds"},
    {1050, "intT_FixedRateSavingsBonds", "Fixed Rate Savings Bonds"},
    {1060, "intT_IncomeBonds", "Income Bonds"},
    {1070, "intT_NSBInvestmentAccounts", "NSB Investment Accounts"},
    {1080, "intT_NSBOrdinaryAccounts", "NSB Ordinary Accounts"},
    {1090, "intT_PensionersGuaranteedIncomeBonds", "Pensioners' Guaranteed Income Bonds"},
    {1100, "intT_NetGovernmentLoanStock", "Net Government Loan Stock"},
    {1110, "intT_GrossGovernmentLoanStock", "Gross Government Loan Stock"},
    {1120, "intT_OtherUKSourcesGross", "Other UK Sources Gross"},
    {1130, "intT_OtherUKSourcesNet", "Other UK Sources Net"},
    {1140, "intT_UnitTrusts", "Unit Trusts"},
    {1150, "intT_EasyAccessSavingsAccounts", "Easy Access Savings Accounts"},
    {1160, "intT_GuaranteedIncomeBonds", "Guaranteed Income Bonds"},
    kEndOfTable,
};

// Code 3 has no key and no name; the row is part of the table.
const TypeMapping Shares[] = {
    {0, "UKDIV", "UK Dividend"},
    {1, "STOCKDIV", "Stock Dividend"},
    {3, "", ""},
    {2, "UNITTRST", "Unit Trust"},
    {4, "UNTRSTFR", "Unit Trust, Foreign"},
    {5, "FRINCDIV", "Foreign Income Dividend"},
    {6, "NONQUALD", "Non-Qualifying Distribution"},
    kEndOfTable,
};

const TypeMapping OtherShares[] = {
    {0, "DIVIDEND", "Dividend"},
    {1, "TRUST", "Trust"},
    {2, "OTHER_DV", "Other Dividend"},
    {3, "OUNITRST", "Other Unit Trust"},
    {4, "FRGNDIV", "Foreign Dividend"},
    kEndOfTable,
};

const TypeMapping BTaxShareEnums[] = {
    {1, "shForeignIncome", "Foreign Income Dividend"},
    {2, "shGovLoanStock", "Government Loan Stock"},
    {3, "shNonQualifyingDistribution", "Non-Qualifying Distribution"},
    {4, "shOther", "Other"},
    {5, "shStock", "Stock Dividend"},
    {6, "shUK", "UK Dividend"},
    {7, "shUnitTrust", "Unit Trust"},
    {8, "shUnitTrustForeign", "Unit Trust, Foreign"},
    {9, "shUnitTrustInterest", "Unit Trust Interest"},
    {10, "shForeignDividend", "Foreign Dividend"},
    {11, "shQuotedSharesAndSecurities", "Quoted Shares and Securities"},
    {20, "shUnquotedSharesAndSecurities", "Unquoted Shares and Securities"},
    {200, "shIncomeUnitTrust", "Income Unit Trust"},
    {210, "shAccumulationUnitTrust", "Accumulation Unit Trust"},
    kEndOfTable,
};

const TypeMapping DividendType[] = {
    {10, "DIV_TYPE_ORDINARY", "Ordinary"},
    {20, "DIV_TYPE_STOCK", "Stock Dividend"},
    {30, "DIV_TYPE_NON_QUALIFYING", "Non-Qualifying"},
    {60, "DIV_TYPE_GROUP1", "Unit Trust Group 1"},
    {70, "DIV_TYPE_GROUP2", "Unit Trust Group 2"},
    {80, "DIV_TYPE_STOCK_REINVESTED", "Stock Reinvested"},
    {90, "DIV_TYPE_DRIP", "Dividend Reinvestment Plan"},
    {100, "DIV_TYPE_LOANS_WRITTEN_OFF", "Close Company Loans Written Off"},
    {110, "DIV_TYPE_NON_QUALIFYING_DIST", "Non-Qualifying Distribution"},
    kEndOfTable,
};

const TypeMapping DividendOwnershipCapacity[] = {
    {10, "DIV_OWNERSHIP_CAPACITY_PERSONAL", "Personal"},
    {20, "DIV_OWNERSHIP_CAPACITY_JOINT_SPOUSE", "Joint with Spouse or Civil Partner"},
    {30, "DIV_OWNERSHIP_CAPACITY_JOINT_OTHER", "Joint, Other"},
    {40, "DIV_OWNERSHIP_CAPACITY_UNDERWRITING", "Underwriting"},
    {50, "DIV_OWNERSHIP_CAPACITY_COMMERCIAL", "Commercial"},
    {60, "DIV_OWNERSHIP_CAPACITY_BARE_TRUSTEE", "Bare Trustee"},
    {70, "DIV_OWNERSHIP_CAPACITY_DISCRETIONARY_TRUST", "Discretionary Trust"},
    {80, "DIV_OWNERSHIP_CAPACITY_LIFE_TENANCY", "Life Tenancy"},
    {90, "DIV_OWNERSHIP_CAPACITY_TRUST", "Trust"},
    {100, "DIV_OWNERSHIP_CAPACITY_ESTATE", "Estate"},
    {999999, "DIV_OWNERSHIP_CAPACITY_PARTNERSHIP", "Partnership"},
    kEndOfTable,
};

const TypeMapping ShareType[] = {
    {11, "SHARE_TYPE_QUOTED_SHARES_AND_SECURITIES", "Quoted Shares and Securities"},
    {20, "SHARE_TYPE_UNQUOTED_SHARES_AND_SECURITIES", "Unquoted Shares and Securities"},
    {200, "SHARE_TYPE_INCOME_UNIT_TRUST", "Income Unit Trust"},
    {210, "SHARE_TYPE_ACCUMULATION_UNIT_TRUST", "Accumulation Unit Trust"},
    kEndOfTable,
};
