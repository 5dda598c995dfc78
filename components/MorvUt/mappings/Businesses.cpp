// Trades and partnerships: accounts, capital allowances, losses.

#include "MorvUt/mappings/TypeMappings.h"

// One row a line.
// clang-format off

// Standard lines of the partnership return, SA800.
const TypeMapping mapExpenditure[] = {
    {9, "EX_ADVER", "Advertising, Promotion and Entertainment"},
    {11, "EX_BADDB", "Bad Debts"},
    {1, "EX_CNSTR", "Construction Industry Subcontractor Costs"},
    {0, "EX_CSTSL", "Cost of Sales"},
    {14, "EX_DEPRE", "Depreciation and Loss/(Profit) on Sale"},
    {3, "EX_EMCST", "Employee Costs"},
    {6, "EX_GNADM", "General Administrative Expenses"},
    {12, "EX_INTST", "Interest"},
    {10, "EX_LEGAL", "Legal and Professional Costs"},
    {7, "EX_MTEXP", "Motor Expenses"},
    {2, "EX_OTHDR", "Other Direct Costs"},
    {15, "EX_OTHEX", "Other Expenses"},
    {13, "EX_OTHFN", "Other Finance Charges"},
    {4, "EX_PRCST", "Premises Costs"},
    {5, "EX_REPAR", "Repairs"},
    {8, "EX_TRVSB", "Travel and Subsistence"},
    {16, "EX_CHBSS", "Change of Basis"},
    kEndOfTable,
};

const TypeMapping mapLiabilitys[] = {
    {0, "LB_CRACR", "Trade Creditors"},
    {1, "LB_ACCRU", "Accruals"},
    {2, "LB_LOVDR", "Loans and Overdrawn Bank Accounts"},
    {3, "LB_OTHLB", "Other Liabilities"},
    kEndOfTable,
};

const TypeMapping mapCapital[] = {
    {0, "CP_BLAST", "Balance at Start of Period"},
    {4, "CP_BLAED", "Balance at End of Period"},
    {1, "CP_NTPLS", "Net Profit/(Loss)"},
    {2, "CP_CPINT", "Capital Introduced"},
    {3, "CP_DRAWG", "Drawings"},
    kEndOfTable,
};

const TypeMapping mapAssets[] = {
    {0, "AS_MCHRY", "Plant, Machinery and Motor Vehicles"},
    {1, "AS_FXAST", "Other Fixed Assets"},
    {2, "AS_STAWK", "Stock and Work in Progress"},
    {3, "AS_DBTRS", "Debtors"},
    {4, "AS_PREPY", "Prepayments"},
    {5, "AS_OTHER", "Other Current Assets"},
    {6, "AS_BNKBL", "Bank and Building Society Balances"},
    {7, "AS_CSHHD", "Cash in Hand"},
    kEndOfTable,
};

const TypeMapping mapCapitalAllowences[] = {
    {0, "CP_MTRCR", "Motor Cars"},
    {1, "CP_BSPLN", "Other Business Plant and Machinery"},
    {2, "CP_AGRIN", "Agricultural or Industrial Buildings"},
    {3, "CP_ALCLM", "Other Capital Allowances Claimed"},
    {4, "CP_ICT", "Information and Communications Technology"},
    {5, "CP_BPRA", "Business Premises Renovation Allowance"},
    kEndOfTable,
};

const TypeMapping mapCapitalAllowances2008[] = {
    {1, "knInexpensiveCars", "Inexpensive Cars"},
    {2, "knExpensiveCars", "Expensive Cars"},
    {3, "knCarPool", "Car Pool"},
    {4, "knMainPool", "Main Pool"},
    {5, "knAgriculturalBuildings", "Agricultural Buildings"},
    {6, "knIndustrialBuildings", "Industrial Buildings"},
    {7, "knPrivateUseAssets", "Private Use Assets"},
    {8, "knShortLifeAssets", "Short-Life Assets"},
    {9, "knUserDefinedAssets", "User-Defined Assets"},
    {10, "knICT", "Information and Communications Technology"},
    {11, "knLowCO2Vehicles", "Low CO2 Vehicles"},
    {12, "knBPRA", "Business Premises Renovation Allowance"},
    {13, "knSpecialRatePool", "Special Rate Pool"},
    {14, "knCarMainRate", "Main Rate Cars"},
    {15, "knCarSpecialRate", "Special Rate Cars"},
    {16, "knZEGV", "Zero-Emission Goods Vehicles"},
    {17, "knSBA", "Structures and Buildings Allowance"},
    {18, "knElectricCharging", "Electric Charge-Points"},
    {19, "knZeroEmissionCarAllow", "Zero-Emission Car Allowance"},
    {20, "knFreePortSBA", "Freeport Structures and Buildings Allowance"},
    {21, "knInvestmentZonesSBA", "Investment Zones Structures and Buildings Allowance"},
    kEndOfTable,
};

const TypeMapping BTaxAssetTypesEnums[] = {
    {1, "atInexpensiveCarsPU", "Inexpensive Cars, Private Use"},
    {2, "atExpensiveCars", "Expensive Cars"},
    {3, "atCarPool", "Car Pool"},
    {4, "atMainPool", "Main Pool"},
    {5, "atAgriculturalBuildings", "Agricultural Buildings"},
    {6, "atIndustrialBuildings", "Industrial Buildings"},
    {7, "atPrivateUseAssets", "Private Use Assets"},
    {8, "atShortLifeAssets", "Short-Life Assets"},
    {9, "atUserDefinedAssets", "User-Defined Assets"},
    {10, "atICTITAndComm", "Information and Communications Technology"},
    {11, "atLowCO2Vehicles", "Low CO2 Vehicles"},
    kEndOfTable,
};

const TypeMapping BTaxTaxDeductedEnums[] = {
    {1, "tdSC60", "SC60 (Subcontractor Deductions)"},
    {2, "tdTaxPaidTrade", "Tax Paid, Trade"},
    {3, "tdTaxPaidProperty", "Tax Paid, Property"},
    kEndOfTable,
};

// Sections of ICTA 1988.
const TypeMapping TradeLossesSections[] = {
    {0, "CONT380", "380 (Continuing)"},
    {1, "EARLY381", "381 (Early years)"},
    {2, "TERM388", "388 (Terminal) and 380 (Current)"},
    kEndOfTable,
};

// From 2007/08: sections of ITA 2007.
const TypeMapping TradeLossesSections0708[] = {
    {0, "CONT_S64", "s.64 (Continuing)"},
    {1, "EARLY_S72", "s.72 (Early years)"},
    {2, "TERM_S89", "s.89 (Terminal) and s.64 (Current)"},
    kEndOfTable,
};
