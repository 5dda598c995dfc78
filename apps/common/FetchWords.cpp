#include "common/FetchWords.h"

#include <algorithm>

#include "common/Words.h"

namespace Morv
{

namespace
{

using HmrcApi::FetchResult;
using HmrcApi::GroupState;

bool IsAnyThere(const FetchResult& result)
{
    for (const HmrcApi::FetchedGroup& group : result.groups)
        if (group.state == GroupState::There)
            return true;
    return false;
}

/// How HMRC's items and the return stand to each other; nothing is said that was not looked at.
std::string Comparison(const FetchResult& result, const FetchWays& ways)
{
    std::string text;
    if (const int missing = result.counts.notInReturn; missing > 0)
        text = ' ' + std::to_string(missing) + (missing == 1 ? " is" : " are") + " not in the return yet.";
    if (result.groups.front().state != GroupState::There) // National Insurance is in no schedule
        return text;
    if (!result.clear)
        return text + " Some figures differ from the return: " + ways.differences;
    return result.counts.inReturn > 0 ? text + " No item in the return differs." : text;
}

std::string Summary(const FetchResult& result, const FetchWays& ways)
{
    if (!IsAnyThere(result))
        return {};
    CString text;
    text.Format("%s from HMRC (%d new, %d changed, %d no longer sent).%s", Counted(result.counts.items, "item"),
                result.staged.added, result.staged.changed, result.staged.withdrawn, Comparison(result, ways));
    return text.Str();
}

/// Of the groups without records; a fetch of which nothing was asked has its reason.
std::string WhatIsMissing(const FetchResult& result)
{
    const auto isUnknown = [](const HmrcApi::FetchedGroup& group) { return group.state == GroupState::Unknown; };
    if (std::all_of(result.groups.begin(), result.groups.end(), isUnknown))
        return "not fetched.";
    std::string text;
    for (const HmrcApi::FetchedGroup& group : result.groups)
        if (isUnknown(group))
            text += ' ' + group.name + ": not fetched.";
        else
            text += ' ' + group.WhyNothing().Str();
    return text;
}

} // namespace

std::string FetchedText(const FetchResult& result, const FetchWays& ways)
{
    const bool isStopped = result.stopped != FetchResult::Stopped::No;
    const std::string what = isStopped ? "not fetched. " + result.Reason().Str() + ' ' + ways.remedy.Str()
                                       : Summary(result, ways) + WhatIsMissing(result);
    return CString(what).Trim().Str();
}

std::vector<std::string> ErrorLines(const HmrcApi::CAPIErrorHandler& errors)
{
    std::vector<std::string> lines;
    for (const auto& group : errors.GetGroups())
        for (const auto& error : group.errors)
            lines.push_back(Shown(group.name) + ": " + Shown(error.GetMessageText()) + " (" + Shown(error.GetCode()) +
                            "). " +
                            Shown(HmrcApi::ActionFor(error.GetCode(), error.GetHttpStatus(), error.GetField())));
    return lines;
}

} // namespace Morv
