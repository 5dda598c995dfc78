#include "FetchOutput.h"

#include <algorithm>

#include "ClientJson.h"
#include "MorvUt/taxyear/CurrentTaxYear.h"
#include "MorvUt/taxyear/YearTitles.h"

namespace Morv
{

namespace
{

using HmrcApi::FetchResult;
using HmrcApi::GroupState;

// What a user of the command line does about what stopped a fetch.
struct Remedy
{
    FetchResult::Stopped stopped;
    const char* command; // with the practice
    const char* gateway; // behind it, with the gateway; may be empty
};
constexpr Remedy kRemedies[] = {
    {FetchResult::Stopped::NotAuthorised, "Authorise first: morv hmrc authorise %s", " --gateway %s"},
    {FetchResult::Stopped::NotEnabled, "Switch it on first: morv practice options %s bHMRCRetrieval=1", ""},
};

CString RemedyOf(const FetchResult& result, const HmrcArguments& arguments)
{
    CString text, gateway;
    for (const Remedy& remedy : kRemedies)
        if (remedy.stopped == result.stopped) {
            text.Format(remedy.command, arguments.practice);
            if (*remedy.gateway)
                gateway.Format(remedy.gateway, arguments.gateway);
        }
    return text + gateway;
}

Json ErrorsOf(const HmrcApi::CAPIErrorHandler& handler)
{
    const auto orNull = [](const std::string& text) { return text.empty() ? Json(nullptr) : Json(text); };
    Json list = Json::array();
    for (const auto& group : handler.GetGroups())
        for (const auto& error : group.errors)
            list.push_back({{"group", group.name},
                            {"code", error.GetCode()},
                            {"message", error.GetMessageText()},
                            {"field", orNull(error.GetField())},
                            {"status", orNull(error.GetHttpStatus())},
                            {"action", HmrcApi::ActionFor(error.GetCode(), error.GetHttpStatus(), error.GetField())}});
    return list;
}

Json StateOf(const FetchResult& result)
{
    Json states = Json::object();
    for (const HmrcApi::FetchedGroup& group : result.groups)
        states[group.name] = NameOf(group.state);
    return states;
}

Json FetchedJson(const ClientView& client, const FetchResult& result, const HmrcArguments& arguments)
{
    const auto orNull = [](const CString& text) { return text.IsEmpty() ? Json(nullptr) : TextOf(text); };
    return {
        {"client", client.id},
        {"year", GetCurrentRealTaxYear()},
        {"route", result.route == FetchResult::Route::Paye ? "paye" : "employments"},
        {"ok", result.ok},
        {"newData", result.newData},
        {"clear", result.clear},
        {"state", StateOf(result)},
        {"items", result.counts.items},
        {"notInReturn", result.counts.notInReturn},
        {"staged",
         {{"added", result.staged.added}, {"changed", result.staged.changed}, {"withdrawn", result.staged.withdrawn}}},
        {"message", orNull(result.Reason())},
        {"action", orNull(RemedyOf(result, arguments))},
        {"chain", orNull(CString(result.chain))},
        {"errors", ErrorsOf(*result.errors)},
        {"notes", ToJson(result.notes)}};
}

bool IsAnyThere(const FetchResult& result)
{
    for (const HmrcApi::FetchedGroup& group : result.groups)
        if (group.state == GroupState::There)
            return true;
    return false;
}

/// How HMRC's items and the return stand to each other; nothing is said that was not looked at.
std::string Comparison(const FetchResult& result)
{
    std::string text;
    if (const int missing = result.counts.notInReturn; missing > 0)
        text = ' ' + std::to_string(missing) + (missing == 1 ? " is" : " are") + " not in the return yet.";
    if (result.groups.front().state != GroupState::There) // National Insurance is in no schedule
        return text;
    if (!result.clear)
        return text + " Some figures differ from the return: morv hmrc differences lists them.";
    return result.counts.inReturn > 0 ? text + " No item in the return differs." : text;
}

std::string Summary(const FetchResult& result)
{
    if (!IsAnyThere(result))
        return {};
    CString text;
    text.Format("%s from HMRC (%d new, %d changed, %d no longer sent).%s", Counted(result.counts.items, "item"),
                result.staged.added, result.staged.changed, result.staged.withdrawn, Comparison(result));
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

void PrintFetched(const ClientView& client, const FetchResult& result, const HmrcArguments& arguments)
{
    const bool isStopped = result.stopped != FetchResult::Stopped::No;
    const std::string what = isStopped
                                 ? "not fetched. " + result.Reason().Str() + ' ' + RemedyOf(result, arguments).Str()
                                 : Summary(result) + WhatIsMissing(result);
    PrintLine("%s %s, %s: %s", client.code, client.name, FormatYearString42Digit(GetCurrentRealTaxYear()),
              CString(what).Trim());
    for (const auto& group : result.errors->GetGroups())
        for (const auto& error : group.errors)
            PrintLine("  %s: %s (%s). %s", group.name, error.GetMessageText(), error.GetCode(),
                      HmrcApi::ActionFor(error.GetCode(), error.GetHttpStatus(), error.GetField()));
    for (const CString& note : result.notes)
        PrintLine("  %s", note);
}

} // namespace

void TellFetched(const ClientView& client, const FetchResult& result, const HmrcArguments& arguments,
                 const CommonOptions& options)
{
    if (options.json)
        PrintJson(FetchedJson(client, result, arguments));
    else
        PrintFetched(client, result, arguments);
}

} // namespace Morv
