// Pensions and state benefits received; pension plans and charges.

#include "MorvUt/mappings/TypeMappings.h"
#include "MorvUt/mappings/UnnamedTables.h"

// One row a line.
// clang-format off

const TypeMapping pensions[] = {
    {0, "RETIRPEN", "State Retirement Pension"},
    {1, "WIDOWPEN", "Widow's Pension"},
    {2, "UNEMPBEN", "Unemployment Benefit"},
    {3, "FRMEMPEN", "Former Employer's Pension"},
    {4, "OTHRPEN", "Other Pension"},
    {5, "INVALLOW", "Invalid Care Allowance"},
    {6, "INDDTBEN", "Industrial Death Benefit"},
    {7, "WMOTHAL", "Widowed Mother's Allowance"},
    {8, "TXINCBEN", "Taxable Incapacity Benefit"},
    {9, "JOBSEEKA", "Jobseeker's Allowance"},
    {10, "SSPSMP", "SSP and SMP"},
    {11, "FORPENEN", "Foreign Pension, Earned"},
    {12, "FORPENUN", "Foreign Pension, Unearned"},
    {13, "FORPENSS", "Foreign Social Security"},
    {14, "INCBENEMPSUP", "Incapacity Benefit / Employment and Support Allowance"},
    kEndOfTable,
};

const TypeMapping mapPSBCategorys[] = {
    {100, "psbC_Foreign", "Foreign"},
    {200, "psbC_RetirementPensions", "Retirement Pensions"},
    {300, "psbC_StateBenefits", "State Benefits"},
    kEndOfTable,
};

// Names stand as they were when the payment was made: "Inland Revenue" before 2005.
const TypeMapping mapPSBTypes[] = {
    {1010, "psbT_ForeignPensionsEarned", "Foreign Pensions, Earned"},
    {1020, "psbT_ForeignPensionsUnearned", "Foreign Pensions, Unearned"},
    {1030, "psbT_ForeignSocialSecurity", "Foreign Social Security"},
    {1040, "psbT_FormerEmployerPensions", "Former Employer's Pensions"},
    {1050, "psbT_OtherPensions", "Other Pensions"},
    {1060, "psbT_StateRetirementPension", "State Retirement Pension"},
    {1070, "psbT_IndustrialDeathBenefit", "Industrial Death Benefit"},
    {1080, "psbT_InvalidCareAllowance", "Invalid Care Allowance"},
    {1085, "psbT_CarersAllowances", "Carer's Allowance"},
    {1090, "psbT_JobSeekersAllowances", "Jobseeker's Allowance"},
    {1100, "psbT_SSPSMPPaidByTheInlandRevenue", "SSP and SMP Paid by the Inland Revenue"},
    {1105, "psbT_StatutoryPaymentsPaidByTheIR", "Statutory Payments Paid by the Inland Revenue"},
    {1107, "psbT_StatutoryPaymentsPaidByHMRC", "Statutory Payments Paid by HMRC"},
    {1110, "psbT_TaxableIncapacityBenefit", "Taxable Incapacity Benefit"},
    {1120, "psbT_WidowedMothersParentAllowance", "Widowed Mother's / Widowed Parent's Allowance"},
    {1130, "psbT_WidowsPensionsBereavementAllowance", "Widow's Pension / Bereavement Allowance"},
    {1140, "psbT_TaxableIncapacityBenefitEmploymentAndSupportAllowance",
     "Taxable Incapacity Benefit / Employment and Support Allowance"},
    kEndOfTable,
};

const TypeMapping plan[] = {
    {0, "RETANNU", "Retirement Annuity Contract"},
    {1, "PERSPEN", "Personal Pension"},
    {2, "FRESTAND", "Free-Standing AVC"},
    {3, "DOCDENSA", "Doctors' and Dentists' Superannuation"},
    {4, "EMPCONTR", "Employer's Scheme Contributions"},
    {5, "OTHERPEN", "Other Pension"},
    kEndOfTable,
};

const TypeMapping planStatus[] = {
    {0, "PLNEMPEE", "Employee"},
    {1, "SELFEMP", "Self-Employed"},
    {2, "EMPCONT", "Employer Contribution"},
    kEndOfTable,
};

const TypeMapping NREAdjustmentTypes[] = {
    {0, "ANPAYMNT", "Annual Payments"},
    {1, "TRLOSSCY", "Trading Losses, Current Year"},
    {2, "TRLOSSLY", "Trading Losses, Later Years"},
    {3, "ADDTONRE", "Addition to Net Relevant Earnings"},
    kEndOfTable,
};

const TypeMapping Mappings::pensionEarningsAdjustments[] = {
    {10, "pde_AdditionToRE", "Addition to Relevant Earnings"},
    {20, "pde_DeductionToRE", "Deduction from Relevant Earnings"},
    {30, "pde_AnnualPayments", "Annual Payments"},
    {40, "pde_TradingLossesCurrentYear", "Trading Losses, Current Year"},
    {50, "pde_TradingLossesLaterYears", "Trading Losses, Later Years"},
    {60, "pde_TradingLossesPriorYears", "Trading Losses, Prior Years"},
    kEndOfTable,
};

const TypeMapping Mappings::pensionSavingsCharges[] = {
    {10, "pds_LifetimeAllowancePensionBenefitsTakenAsLumpSum",
     "Lifetime Allowance, Pension Benefits Taken as Lump Sum"},
    {20, "pds_LifetimeAllowancePensionBenefitsNotTakenAsLumpSum",
     "Lifetime Allowance, Pension Benefits not Taken as Lump Sum"},
    {40, "pds_UnauthorisedPaymentNotSubjectToSurcharge", "Unauthorised Payment not Subject to Surcharge"},
    {50, "pds_UnauthorisedPaymentSubjectToSurcharge", "Unauthorised Payment Subject to Surcharge"},
    {60, "pds_OverseasPensionSchemeShortServiceContributionRefund",
     "Overseas Pension Scheme Short Service Contribution Refund"},
    {70, "pds_OverseasPensionSchemeLumpSumDeathBenefitPayment",
     "Overseas Pension Scheme Lump Sum Death Benefit Payment"},
    {80, "pds_AnnualAllowanceExceeded", "Annual Allowance Exceeded"},
    {90, "pds_SpecialAnnualAllowanceExceeded", "Special Annual Allowance Exceeded"},
    {95, "pds_SpecialAnnualAllowanceExceededAdditionalRate", "Special Annual Allowance Exceeded, Additional Rate"},
    {75, "pds_OverseasPensionSchemeTaxableRefundsofContributions",
     "Overseas Pension Scheme Taxable Refunds of Contributions"},
    {100, "pds_PensionBenefitsSubjectToOverseasTransferCharge", "Pension Benefits Subject to Overseas Transfer Charge"},
    kEndOfTable,
};
