#pragma once

// How schedules of pensions and state benefits are classified by their type, a code of mapPSBTypes.

#include "MorvUt/Export.h"

struct MORVUT_API PSBHelper
{
    /// The type says by itself what the schedule is (1060 State Pension to 1140 Incapacity Benefit), so that an empty
    /// description is filled in.
    static bool IsAutoDescribeType(long type) noexcept;
    /// Taxable in the United Kingdom through the pension and benefit boxes of the main return (1040 to 1140), tax
    /// deducted included.
    static bool IsUKTaxType(long type) noexcept;
};
