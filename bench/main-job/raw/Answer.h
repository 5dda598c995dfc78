#pragma once

#include <string>

#include "main-job/raw/Records.h"

namespace Raw
{

/// HMRC's answer in the terms of the staging rows. Amounts go through binary floating point, names that are not known
/// become 0, and nothing is checked.
Year ReadAnswer(const std::string& json);
/// The code that a schedule has for HMRC's number of a benefit.
int BenefitCode(int number);

} // namespace Raw
