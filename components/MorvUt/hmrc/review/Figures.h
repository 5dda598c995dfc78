#pragma once

// HMRC's figures as a decision of the review remembers them.

#include <algorithm>
#include <string>
#include <vector>

#include "MorvUt/hmrc/staging/StagedYear.h"

namespace HmrcApi
{

/// All that the review compares, in ten-thousandths of a pound and ISO dates: "pay=225510500 tax=9003800 70=440000?"
/// (a forecast).
/// Two texts are equal when every figure is.
std::string FiguresOf(const StagedEmployment& item);
std::string FiguresOf(const StagedPension& item);

/// Of all items that one schedule stands for, in no order of HMRC's.
template<class Item>
std::string FiguresOf(const std::vector<const Item*>& items)
{
    std::vector<std::string> texts;
    texts.reserve(items.size());
    for (const Item* item : items)
        texts.push_back(FiguresOf(*item));
    std::sort(texts.begin(), texts.end());
    std::string all;
    for (const std::string& text : texts)
        all += (all.empty() ? "" : "; ") + text;
    return all;
}

/// HMRC's figures are those that were rejected: the same items, the same figures.
template<class Item>
bool IsRejected(const std::vector<const Item*>& items)
{
    const std::string figures = FiguresOf(items);
    return std::all_of(items.begin(), items.end(), [&](const Item* item) {
        return item->decision.made == StagedDecision::Rejected && item->decision.figures == figures;
    });
}

} // namespace HmrcApi
