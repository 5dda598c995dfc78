// Other income, outgoings, allowances and the order of the computation.

#include "MorvUt/mappings/TypeMappings.h"
#include "MorvUt/mappings/UnnamedTables.h"

// One row a line.
// clang-format off

const TypeMapping IncTypeRefs[] = {
    {0, "SETTLMT", "Settlements"},
    {1, "ESTATES", "Estates"},
    {2, "UTERNABR", "Untaxed Earned Income Abroad"},
    {3, "UTINVABR", "Untaxed Investment Income Abroad"},
    {4, "MAINTENC", "Maintenance"},
    {5, "ALMNY", "Alimony"},
    {6, "ALIMENT", "Aliment"},
    {7, "ACCRUINC", "Accrued Income"},
    {8, "LFEASSGN", "Life Assurance Gain"},
    {9, "PFSHRSCH", "Profit-Sharing Scheme"},
    {10, "OTHEARND", "Other Earned Income"},
    {11, "OTHINVES", "Other Investment Income"},
    {12, "TXINVABR", "Taxed Investment Income Abroad"},
    {13, "PRCHANNU", "Purchased Annuity"},
    {14, "ENTINVR", "Enterprise Investment"},
    {15, "FSAVCSP", "FSAVC Surplus"},
    {16, "PATEARN", "Patents, Earned"},
    {17, "PATINV", "Patents, Investment"},
    {18, "SCHDV1RE", "Schedule D Case VI Receipts"},
    {19, "UKTRUSTS", "UK Trusts"},
    {20, "LAGVDISA", "Life Assurance Gains, Voided ISA"},
    {21, "DEEMED", "Deemed Income"},
    {22, "COPUOWSH", "Company Purchase of Own Shares"},
    {23, "PREOWNED", "Pre-Owned Assets"},
    {24, "DRNPAYE", "Disguised Remuneration, Non-PAYE"},
    {25, "DRCTRADE", "Disguised Remuneration, Trade"},
    kEndOfTable,
};

const TypeMapping ForeignIncomeTypes[] = {
    {0, "ERNINCFP", "Earned Income from Foreign Pensions"},
    {1, "FRGBAOI", "Foreign Bank and Other Interest"},
    {2, "FRGNLAG", "Foreign Life Assurance Gains"},
    {3, "FRGNMAR", "Foreign Maintenance"},
    {4, "FRGNTRIN", "Foreign Trust Income"},
    {5, "FRGNINVS", "Foreign Investment Income"},
    {6, "OFRGNDIV", "Other Foreign Dividends"},
    {7, "FRGNSEC", "Foreign Securities"},
    {8, "NRTRST", "Non-Resident Trust"},
    {9, "BENOTRST", "Benefits from Overseas Trusts"},
    {10, "DISPOFFU", "Disposals of Offshore Funds"},
    {11, "FRGNROY", "Foreign Royalties"},
    {12, "INCOFFGA", "Offshore Income Gains"},
    kEndOfTable,
};

const TypeMapping Mappings::remittedIncomeTypes[] = {
    {10, "rit_Dividends", "Dividends"},
    {20, "rit_Interest", "Interest"},
    {30, "rit_OtherSavings", "Other Savings"},
    {40, "rit_Property", "Property"},
    {50, "rit_DividendsEntityAbroad", "Dividends, Entity Abroad"},
    {60, "rit_NonDividendsEntityAbroad", "Non-Dividends, Entity Abroad"},
    {70, "rit_OffshoreIncomeGains", "Offshore Income Gains"},
    kEndOfTable,
};

const TypeMapping Mappings::foreignTaxCreditIncome[] = {
    {0, "ftcr_Other", "Other"},
    {1, "ftcr_Interest", "Interest"},
    {2, "ftcr_Dividends", "Dividends"},
    {3, "ftcr_Royalties", "Royalties"},
    kEndOfTable,
};

const TypeMapping OtherBens[] = {
    {0, "BNINCOME", "Benefit Income"},
    {1, "EXPENDTR", "Expenditure"},
    {2, "PROFFEES", "Professional Fees"},
    {3, "FORGNEXP", "Foreign Expenses"},
    kEndOfTable,
};

// The odd spellings, and the tab, are part of the table: other programs look rows up by them.
const TypeMapping OtherOutRefs[] = {
    {0, "CHARCOV", "Charitable Covenants"},
    {1, "GIFTAID", "Gift Aid"},
    {2, "OTHRCOV", "Other Covenants"},
    {3, "BNDOFANN", "Bond of Annuity"},
    {4, "SETTLMNT", "Settlement"},
    {5, "ACCALLOW", "Accrued Income Allowance"},
    {6, "INCMANTC", "Maintenance"},
    {7, "ALIMONY", "Alimony"},
    {8, "ALIMANT", "Aliment"},
    {9, "UKPRPRNT", "UK Property Rents\tfor non uk landlords"},
    {10, "YRINTABR", "Yearly Interest Abraod"},
    {11, "CHDSUPAB", "Child Support Abroad"},
    {12, "VNTCPTRS", "Venture Capital Trusts"},
    {13, "EISSCREL", "EIS Relief"},
    {14, "GAIDCOV", "Gift Aid and Covernants"},
    {15, "PCESSEXP", "Post-Cessation Expenses"},
    {16, "GIFTCHAR", "Gifts to Charity"},
    {17, "ANNPAY", "Annities and Annual Payments"},
    {18, "WIDORPPY", "Widow's, Widower's or Orphan's Benefit Scheme"},
    {19, "REREBOSH", "Relief on Redemption of Bonus Shares or Securities"},
    {20, "CORDEFRE", "Corresponding Deficiency Relief"},
    {21, "CITR", "Community Investment Tax Relief"},
    {22, "APOOCNTI", "Annual Payments out of Capital or Non-Taxed Income"},
    {23, "PTRDCG", "Post-Cessation Trade Relief, Capital Gains"},
    {24, "SEISREL", "SEIS Relief"},
    {25, "PROLGIVE", "Payroll Giving"},
    {26, "PATROPAY", "Patent Royalty Payments"},
    {27, "SITR", "Social Investment Relief"},
    kEndOfTable,
};

const TypeMapping NICTransTypeRefs[] = {
    {0, "TDLSCRYR", "Trading Losses, Current Year"},
    {1, "TDLSPVYR", "Trading Losses, Previous Year"},
    {2, "TDLSBB", "Trading Losses Brought Back"},
    {3, "INSTPAID", "Interest Paid"},
    {4, "NICEXTRD", "Extra NIC Deduction"},
    {5, "ANNPAYMT", "Annual Payments"},
    {6, "AOCOB", "Adjustment on Change of Basis"},
    kEndOfTable,
};

const TypeMapping PersonalAllowanceTypes[] = {
    {1, "PERSAll", "All"},
    {0, "PERSAUTO", "Automatic"},
    {2, "PERSHALF", "Half"},
    {3, "PERSSPEC", "Specified"},
    {4, "PERSNONE", "None"},
    kEndOfTable,
};

const TypeMapping Mappings::periods[] = {
    {0, "period_Current", "Current"},
    {1, "period_First", "First"},
    {2, "period_Second", "Second"},
    kEndOfTable,
};

const TypeMapping Mappings::calculationSequence[] = {
    {5, "seq_Employment", "Employment"},
    {10, "seq_Interest", "Interest"},
    {20, "seq_Dividends", "Dividends"},
    {30, "seq_OtherIncome", "Other Income"},
    {38, "seq_ERGains", "Entrepreneurs' / Business Asset Disposal Relief Gains"},
    {39, "seq_RPIGains", "Residential Property Gains"},
    {40, "seq_TaxableGains", "Taxable Gains"},
    {50, "seq_ShareOptions", "Share Options"},
    {1000, "seq_Source", "Source"},
    {1500, "seq_RedundancyPayments", "Redundancy Payments"},
    {2000, "seq_Benefit", "Benefit"},
    {3000, "seq_PensionSurcharges", "Pension Surcharges"},
    {3500, "seq_PensionSurchargesAAFA2011", "Annual Allowance Charge (Finance Act 2011)"},
    {4000, "seq_NDPFCRelief", "Relief for Non-Deductible Property Finance Costs"},
    kEndOfTable,
};

const TypeMapping Mappings::equivalentCharges[] = {
    {10, "eqcharge_childbenefit", "High Income Child Benefit Charge"},
    kEndOfTable,
};
