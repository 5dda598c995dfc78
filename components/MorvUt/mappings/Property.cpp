// Property income, expenses, adjustments and loans; wording of SA105.

#include "MorvUt/mappings/TypeMappings.h"

// One row a line.
// clang-format off

const TypeMapping propUK[] = {
    {0, "UNFLET", "Unfurnished Letting"},
    {1, "FURLET", "Furnished Letting"},
    {2, "FURHLET", "Furnished Holiday Letting"},
    {3, "GRDRENT", "Ground Rents"},
    {4, "LAND", "Land"},
    {5, "RENTROOM", "Rent a Room"},
    {6, "OTHERS", "Other"},
    {7, "PROPABRD", "Property Abroad"},
    {8, "UKRENT", "UK Rents"},
    {9, "FHLEEA", "Furnished Holiday Letting in the EEA"},
    kEndOfTable,
};

const TypeMapping propBusiness[] = {
    {0, "PROPERTY_UK", "UK Property"},
    {1, "PROPERTY_ABROAD", "Property Abroad"},
    kEndOfTable,
};

const TypeMapping mapPropExpenses[] = {
    {0, "EX_RNTIN", "Rent, Rates, Insurance and Ground Rents"},
    {1, "EX_RPMNT", "Repairs and Maintenance"},
    {2, "EX_FINCH", "Finance Charges, Including Interest"},
    {3, "EX_LECST", "Legal and Professional Costs"},
    {4, "EX_COSTS", "Costs of Services Provided, Including Wages"},
    {5, "EX_OTHER", "Other Expenses"},
    kEndOfTable,
};

const TypeMapping mapPropTaxAdjustments[] = {
    {0, "AJ_PRIVU", "Private Use"},
    {1, "AJ_BALCH", "Balancing Charges"},
    {7, "AJ_AIA", "Annual Investment Allowance"},
    {2, "AJ_CAPAL", "Other Capital Allowances"},
    {3, "AJ_WEART", "10% Wear and Tear"},
    {4, "AJ_LESA", "Landlord's Energy Saving Allowance"},
    {5, "AJ_ENHCA", "Enhanced Capital Allowances"},
    {6, "AJ_BPRA", "Business Premises Renovation Allowance"},
    {8, "AJ_ZEGVA", "Zero-Emission Goods Vehicle Allowance"},
    {9, "AJ_CORDI", "Costs of Replacing Domestic Items"},
    {10, "AJ_PRINCA", "Property Income Allowance"},
    {11, "AJ_STRABA", "Structures and Buildings Allowance"},
    {12, "AJ_ELECCP", "Electric Charge-Point Allowance"},
    {13, "AJ_FPSTRABA", "Freeport Structures and Buildings Allowance"},
    {14, "AJ_ZECA", "Zero-Emission Car Allowance"},
    {15, "AJ_IZSTRABA", "Investment Zones Structures and Buildings Allowance"},
    kEndOfTable,
};

const TypeMapping BTaxPropertyIncomeEnums[] = {
    {1, "propincFHL", "Furnished Holiday Letting"},
    {2, "propincUK", "UK Property"},
    {3, "propincAbroad", "Property Abroad"},
    {4, "propincFHLEEA", "Furnished Holiday Letting in the EEA"},
    kEndOfTable,
};

const TypeMapping BTaxPropertyIncomeAdjustmentsEnums[] = {
    {1, "piAdjPrivateUseProportions", "Private Use Proportions"},
    {2, "piAdjBalancingCharges", "Balancing Charges"},
    {3, "piAdjCapitalAllowances", "Capital Allowances"},
    {4, "piAdj10PCentWearAndTear", "10% Wear and Tear"},
    {5, "piAdjLandlordsEnergySavingAllowance", "Landlord's Energy Saving Allowance"},
    {6, "piAdjPropertyAnnualInvestmentAllowance", "Property Annual Investment Allowance"},
    {7, "piAdjCostOfReplacingDomesticItems", "Costs of Replacing Domestic Items"},
    {8, "piAdjElectricChargingPointAllowance", "Electric Charge-Point Allowance"},
    {9, "piAdjStructuresAndBuildingsAllowance", "Structures and Buildings Allowance"},
    {10, "piAdjFreeportStructuresAndBuildingsAllowance", "Freeport Structures and Buildings Allowance"},
    {11, "piAdjZeroEmissionCarAllowance", "Zero-Emission Car Allowance"},
    {12, "piAdjInvestmentZonesStructuresAndBuildingsAllowance", "Investment Zones Structures and Buildings Allowance"},
    kEndOfTable,
};

const TypeMapping propLoan[] = {
    {0, "MNRESBS", "Main Residence, Building Society"},
    {1, "IMPROVBS", "Improvement, Building Society"},
    {2, "MNRES", "Main Residence"},
    {3, "IMPROV", "Improvement"},
    {4, "LETPROP", "Let Property"},
    {5, "JBRELACC", "Job-Related Accommodation"},
    {6, "LIFEANNU", "Life Annuity"},
    {7, "OTHERPRP", "Other Property"},
    {8, "PAYINHER", "Payment of Inheritance Tax"},
    {9, "PARTLINT", "Partnership Loan Interest"},
    {10, "OTHERINT", "Other Interest"},
    kEndOfTable,
};

const TypeMapping propPurpose[] = {
    {0, "MIRAS", "MIRAS"},
    {1, "BRGEDNET", "Bridging, Net"},
    {2, "BRGEDGRS", "Bridging, Gross"},
    {3, "POTHER", "Other"},
    kEndOfTable,
};

const TypeMapping mapTiberonPropertyIncomeAndExpenses[] = {
    {0, "RR", "Rent, Rates, Insurance and Ground Rents"},
    {1, "RM", "Repairs and Maintenance"},
    {2, "RFC", "Residential Finance Costs"},
    {3, "LPC", "Legal and Professional Costs"},
    {4, "COS", "Costs of Services Provided"},
    {5, "OAP", "Other Allowable Property Expenses"},
    {6, "NRFC", "Non-Residential Finance Costs"},
    {7, "TC", "Travel Costs"},
    {8, "PU", "Private Use Adjustment"},
    kEndOfTable,
};
