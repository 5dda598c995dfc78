// hmrc create.

#include "ClientJson.h"
#include "HmrcCommands.h"
#include "MorvUt/hmrc/schedules/CreateFromHmrc.h"
#include "MorvUt/taxyear/CurrentTaxYear.h"
#include "MorvUt/taxyear/TaxYearHelpers.h"
#include "MorvUt/taxyear/YearTitles.h"
#include "Progress.h"
#include "Who.h"

namespace Morv
{

namespace
{

CommandError Refusal(const HmrcApi::CreateResult& result)
{
    return {Exit::Refused, "REFUSED", Printable(result.message.View()),
            "Ask whoever administers the practice, or work on a return that may be changed."};
}

Json CreatedJson(const ClientView& client, const HmrcApi::CreateResult& result)
{
    const auto& created = result.created;
    return {{"created", {{"employments", created.employments}, {"pensionsAndBenefits", created.pensionsAndBenefits}}},
            {"notes", ToJson(created.notes)},
            {"schedules", ToJson(HmrcApi::LoadReturnYear(ClientId(client.id), GetCurrentRealTaxYear()))}};
}

bool IsNothingStaged(const ClientView& client, short year)
{
    const HmrcApi::StagedYear staged = HmrcApi::LoadStagedYear(ClientId(client.id), year);
    return staged.employments.empty() && staged.pensions.empty() && staged.allowances.empty();
}

/// "2 employment schedules and 1 pension or benefit schedule"; empty when nothing was made.
std::string Made(const HmrcApi::CreatedSchedules& created)
{
    std::string text;
    if (created.employments > 0)
        text = Counted(created.employments, "employment schedule");
    if (created.pensionsAndBenefits > 0)
        text += (text.empty() ? "" : " and ") + Counted(created.pensionsAndBenefits, "pension or benefit schedule");
    return text;
}

std::string Summary(const ClientView& client, const HmrcApi::CreateResult& result)
{
    const short year = GetCurrentRealTaxYear();
    if (const std::string made = Made(result.created); !made.empty())
        return "Created " + made + '.';
    if (IsNothingStaged(client, year))
        return std::string("Nothing has been fetched from HMRC for ") + FormatYearString42Digit(year).Str() + '.';
    return "Nothing new was made.";
}

void Print(const std::string& before, const ClientView& client, const HmrcApi::CreateResult& result)
{
    PrintLine("%s%s", before, Summary(client, result));
    for (const CString& note : result.created.notes)
        PrintLine("  %s", note);
}

HmrcApi::CreateResult CreateFor(const ClientView& client)
{
    const QuietMessages quiet; // the refusal is told once
    return HmrcApi::CreateFromHmrc(ClientId(client.id), TaxYearHelpers::GetCurrentTaxYear());
}

bool CreateOneOfAll(const ClientView& client, const CommonOptions& options)
{
    const HmrcApi::CreateResult result = CreateFor(client);
    const CommandError refusal = Refusal(result);
    if (options.json) {
        Json view = CreatedJson(client, result);
        view["client"] = client.id;
        if (!result.ok)
            view["error"] = {{"code", refusal.code}, {"message", refusal.what()}, {"action", refusal.action}};
        PrintJson(view);
        return result.ok;
    }
    const std::string before = client.code.Str() + ' ' + client.name.Str() + ": ";
    if (result.ok)
        Print(before, client, result);
    else
        PrintLine("%s%s %s", before, refusal.what(), refusal.action);
    return result.ok;
}

Exit CreateAll(const CommonOptions& options)
{
    const std::vector<ClientView> list = ListClients();
    Progress progress(options, list.size());
    Tally tally;
    for (const ClientView& client : list) {
        if (client.IsPartnership())
            continue;
        progress.Next();
        ++tally.clients;
        tally.ok += CreateOneOfAll(client, options) ? 1 : 0;
    }
    if (options.json)
        PrintJson(tally.ToJson());
    else
        PrintLine("%s: %d done, %d refused.", Counted(tally.clients, "client"), tally.ok, tally.clients - tally.ok);
    return tally.Result();
}

} // namespace

Exit Create(const HmrcArguments& arguments, const CommonOptions& options)
{
    const PracticeSession session(arguments.practice, options, Login::Needed);
    if (arguments.all)
        return CreateAll(options);
    const ClientView client = ClientOf(arguments.client); // it must be there before anything is asked or written
    const HmrcApi::CreateResult result = CreateFor(client);
    if (!result.ok)
        throw Refusal(result);
    if (options.json)
        PrintJson(CreatedJson(client, result));
    else
        Print({}, client, result);
    return Exit::Done;
}

} // namespace Morv
