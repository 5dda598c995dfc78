#pragma once

// HMRC's figures as a decision of the review remembers them.

#include <string>

#include "MorvUt/hmrc/staging/StagedYear.h"

namespace HmrcApi
{

/// All that the review compares, in ten-thousandths of a pound and ISO dates: "pay=225510500 tax=9003800 70=440000".
/// Two texts are equal when every figure is.
std::string FiguresOf(const StagedEmployment& item);
std::string FiguresOf(const StagedPension& item);

/// HMRC's figures are those that were rejected.
template<class Item>
bool IsRejected(const Item& item)
{
    return item.decision.made == StagedDecision::Rejected && item.decision.figures == FiguresOf(item);
}

} // namespace HmrcApi
