#include "MorvUt/hmrc/staging/StagedYear.h"

#include <algorithm>
#include <functional>

#include "MorvUt/hmrc/staging/detail/Rows.h"

namespace HmrcApi
{

using Brix::CMTD_Employments;
using Brix::CMTD_EmploymentsCompanyBenefits;
using Brix::CMTD_NIC;
using Brix::CMTD_PensionStateBenefits;
using Brix::CMTD_TaxFreeAllowances;
using Detail::Open;
using Detail::Read;
using Detail::ReadAll;

std::string TypeText(const std::string& type, int number)
{
    return number != 0 ? std::to_string(number) : "name " + type;
}

StagedYear LoadStagedItems(ClientId client, short year)
{
    CMTD_Employments employments;
    CMTD_EmploymentsCompanyBenefits benefits;
    CMTD_PensionStateBenefits pensions;
    CMTD_TaxFreeAllowances allowances; // stay empty
    CMTD_NIC nationalInsurance;
    Open(employments, client, year);
    Open(benefits, client, year);
    Open(pensions, client, year);
    return Detail::YearOf(employments, benefits, pensions, allowances, nationalInsurance);
}

StagedYear LoadForSchedules(ClientId client, short year)
{
    StagedYear loaded = LoadStagedItems(client, year);
    if (std::all_of(loaded.employments.begin(), loaded.employments.end(),
                    std::mem_fn(&StagedEmployment::isWithdrawn))) {
        CMTD_TaxFreeAllowances allowances;
        Open(allowances, client, year);
        loaded.allowances = ReadAll(allowances);
    }
    return loaded;
}

StagedYear LoadStagedYear(ClientId client, short year)
{
    CMTD_TaxFreeAllowances allowances;
    CMTD_NIC nationalInsurance;
    Open(allowances, client, year);
    Open(nationalInsurance, client, year);
    StagedYear loaded = LoadStagedItems(client, year);
    loaded.allowances = ReadAll(allowances);
    if (nationalInsurance.MoveFirst())
        loaded.nationalInsurance = Read(nationalInsurance);
    return loaded;
}

} // namespace HmrcApi
