#include "FetchOutput.h"

#include "ClientJson.h"
#include "common/FetchWords.h"
#include "MorvUt/taxyear/CurrentTaxYear.h"
#include "MorvUt/taxyear/YearTitles.h"

namespace Morv
{

namespace
{

using HmrcApi::FetchResult;

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

void PrintFetched(const ClientView& client, const FetchResult& result, const HmrcArguments& arguments)
{
    PrintLine("%s %s, %s: %s", client.code, client.name, FormatYearString42Digit(GetCurrentRealTaxYear()),
              FetchedText(result, {RemedyOf(result, arguments), "morv hmrc differences lists them."}));
    for (const std::string& line : ErrorLines(*result.errors))
        PrintText("  " + line);
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
