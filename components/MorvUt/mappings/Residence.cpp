// Residence and domicile.

#include "MorvUt/mappings/TypeMappings.h"
#include "MorvUt/mappings/UnnamedTables.h"

// One row a line.
// clang-format off

const TypeMapping mapTaxPayerStatus[] = {
    {0, "TaxPayerStatusUK", "UK"},
    {1, "TaxPayerStatusScottish", "Scottish"},
    {2, "TaxPayerStatusWelsh", "Welsh"},
    kEndOfTable,
};

const TypeMapping Mappings::residenceStatuses[] = {
    {0, "knResidenceStatusUnknownResident", "Residence Not Known"},
    {1, "knResidenceStatusUKResident", "UK Resident"},
    {2, "knResidenceStatusOverseasResident", "Overseas Resident"},
    kEndOfTable,
};

const TypeMapping Mappings::domicileConditions[] = {
    {0, "kDomicileConditionA", "Condition A"},
    {1, "kDomicileConditionB", "Condition B"},
    kEndOfTable,
};

const TypeMapping Mappings::nonResidentCountries[] = {
    {0, "nres_UK", "UK"},
    {1, "nres_Other", "Other"},
    {2, "nres_Neither", "Neither"},
    kEndOfTable,
};

const TypeMapping ResidencyHelpsheetTypes[] = {
    {302, "IR302", "IR302 (Dual Residents)"},
    {304, "IR304", "IR304 (Non-Residents: Relief under Double Taxation Agreements)"},
    kEndOfTable,
};

const TypeMapping ResidencyHelpsheetCsc[] = {
    {1, "csc_UK", "UK"},
    {2, "csc_OtherCountry", "Other Country"},
    {3, "csc_Both", "Both"},
    {4, "csc_Neither", "Neither"},
    kEndOfTable,
};

const TypeMapping ResidencyCountryNumbers[] = {
    {1, "CountryOne", "Country One"},
    {2, "CountryTwo", "Country Two"},
    kEndOfTable,
};
