// hmrc fetch.

#include <algorithm>
#include <cstdio>
#include <optional>

#include "ClientJson.h"
#include "HmrcCommands.h"
#include "MorvUt/hmrc/fetch/FetchData.h"
#include "MorvUt/taxyear/CurrentTaxYear.h"
#include "MorvUt/taxyear/YearTitles.h"
#include "Progress.h"
#include "Who.h"

namespace Morv
{

namespace
{

using HmrcApi::FetchResult;
using HmrcApi::GroupState;

constexpr int kUnreachableInARow = 3; // clients, before --all is given up; as many for whom the practice is busy

// What a user of the command line does about what stopped a fetch.
struct Remedy
{
    FetchResult::Stopped stopped;
    const char* command; // with practice and gateway
};
constexpr Remedy kRemedies[] = {
    {FetchResult::Stopped::NotAuthorised, "Authorise first: morv hmrc authorise %s --gateway %s"},
    {FetchResult::Stopped::NotEnabled, "Switch it on first: morv practice options %s bHMRCRetrieval=1"},
};

CString RemedyOf(const FetchResult& result, const HmrcArguments& arguments)
{
    CString text;
    for (const Remedy& remedy : kRemedies)
        if (remedy.stopped == result.stopped)
            text.Format(remedy.command, arguments.practice, arguments.gateway);
    return text;
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

void Print(const ClientView& client, const FetchResult& result, const HmrcArguments& arguments)
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

FetchResult FetchOne(const ClientView& client, const HmrcArguments& arguments, const CommonOptions& options,
                     const std::shared_ptr<HmrcApi::Channel>& channel = nullptr)
{
    std::optional<QuietMessages> quiet;
    if (!options.json) // the text tells all that the boxes tell
        quiet.emplace();
    const FetchResult result =
        HmrcApi::FetchFromHmrc(ClientId(client.id), arguments.gateway, HmrcApi::IEndpointOverride::Live, channel);
    if (options.json)
        PrintJson(FetchedJson(client, result, arguments));
    else
        Print(client, result, arguments);
    return result;
}

/// Who was reached in a run over many clients; those of whom nothing was asked tell nothing.
class Reached
{
public:
    void Add(const FetchResult& result)
    {
        m_busyInARow = result.IsBusy() ? m_busyInARow + 1 : 0;
        m_isPracticeUnusable = result.stopped == FetchResult::Stopped::Unusable;
        if (result.stopped != FetchResult::Stopped::No)
            return;
        const bool isUnreachable = HmrcApi::IsUnreachable(*result.errors);
        m_isAnyAsked = true;
        m_isAnyReached = m_isAnyReached || !isUnreachable;
        m_inARow = isUnreachable ? m_inARow + 1 : 0;
    }
    bool IsNobody() const { return m_isAnyAsked && !m_isAnyReached; }
    bool IsHopeless() const { return m_inARow >= kUnreachableInARow || IsBusy() || IsPracticeUnusable(); }
    bool IsBusy() const { return m_busyInARow >= kUnreachableInARow; } // the practice, to which another program writes
    bool IsPracticeUnusable() const { return m_isPracticeUnusable; }   // for the others too

private:
    bool m_isAnyAsked = false, m_isAnyReached = false, m_isPracticeUnusable = false;
    int m_inARow = 0, m_busyInARow = 0;
};

void TellWhyStopped(const Reached& reached, int left)
{
    const char* const why =
        reached.IsBusy() ? "another program was writing to the practice" : "HMRC could not be reached";
    const char* const remedy =
        reached.IsBusy() ? "Wait until it has finished" : "Check this computer's internet connection";
    std::fprintf(stderr,
                 "morv: stopped, because %s for %d clients in a row; %s not asked about. %s, then start again.\n", why,
                 kUnreachableInARow, (Counted(left, "client") + (left == 1 ? " was" : " were")).c_str(), remedy);
}

Exit FetchAll(const HmrcArguments& arguments, const CommonOptions& options)
{
    std::vector<ClientView> list = ListClients();
    std::erase_if(list, [](const ClientView& each) { return each.IsPartnership(); });
    const auto channel = std::make_shared<HmrcApi::Channel>(); // one connection for all of them
    Tally tally;
    Reached reached;
    {
        Progress progress(options, list.size());
        for (const ClientView& client : list) {
            progress.Next();
            const FetchResult result = FetchOne(client, arguments, options, channel);
            ++tally.clients;
            tally.ok += result.ok ? 1 : 0;
            reached.Add(result);
            if (reached.IsHopeless())
                break;
        }
    }
    const int left = static_cast<int>(list.size()) - tally.clients;
    if (reached.IsHopeless() && !reached.IsPracticeUnusable()) // which has been told
        TellWhyStopped(reached, left);
    if (options.json) {
        Json summary = tally.ToJson();
        summary["notAsked"] = left;
        PrintJson(summary);
    } else {
        PrintLine("%s: %d fetched, %d not.", Counted(tally.clients, "client"), tally.ok, tally.clients - tally.ok);
    }
    if (reached.IsBusy() || reached.IsPracticeUnusable())
        return Exit::CannotOpen;
    if (reached.IsNobody())
        return Exit::HmrcUnreachable;
    return reached.IsHopeless() ? Exit::Refused : tally.Result();
}

Exit FetchAsked(const HmrcArguments& arguments, const CommonOptions& options)
{
    if (arguments.all)
        return FetchAll(arguments, options);
    const ClientView client = ClientOf(arguments.client); // it must be there before anything is asked or written
    const FetchResult result = FetchOne(client, arguments, options);
    if (result.IsBusy() || result.stopped == FetchResult::Stopped::Unusable)
        return Exit::CannotOpen;
    if (result.stopped == FetchResult::Stopped::No && HmrcApi::IsUnreachable(*result.errors))
        return Exit::HmrcUnreachable;
    return result.ok ? Exit::Done : Exit::Refused;
}

} // namespace

Exit Fetch(const HmrcArguments& arguments, const CommonOptions& options)
{
    UseBase(options);
    const PracticeSession session(arguments.practice, options, Login::Needed);
    const CString warning = WarningOf(HmrcApi::ReadGatewayState(arguments.gateway));
    const Exit exit = FetchAsked(arguments, options);
    if (!warning.IsEmpty() && !options.quiet)
        std::fprintf(stderr, "morv: %s: %s\n", Printable(arguments.gateway).c_str(), warning.GetString());
    return exit;
}

} // namespace Morv
