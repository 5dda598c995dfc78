#include "MorvUt/hmrc/schedules/PSBHelper.h"

#include "MorvUt/hmrc/schedules/PensionTypes.h"

namespace
{

constexpr long kFirstUKType = 1040, kLastUKType = 1140;

} // namespace

bool PSBHelper::IsAutoDescribeType(long type) noexcept
{
    return type >= HmrcApi::kStatePensionType && type <= kLastUKType;
}

bool PSBHelper::IsUKTaxType(long type) noexcept { return type >= kFirstUKType && type <= kLastUKType; }
