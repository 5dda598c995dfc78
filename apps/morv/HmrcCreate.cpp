// hmrc create.

#include <cstdio>
#include <optional>

#include "Cellar/DatabaseError.h"
#include "ClientJson.h"
#include "common/CreateWords.h"
#include "GivenUp.h"
#include "HmrcCommands.h"
#include "MorvUt/hmrc/schedules/CreateFromHmrc.h"
#include "MorvUt/taxyear/CurrentTaxYear.h"
#include "MorvUt/taxyear/TaxYearHelpers.h"
#include "Progress.h"
#include "Quarry/DataList.h"
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

void Print(const std::string& before, const ClientView& client, const HmrcApi::CreateResult& result)
{
    PrintLine("%s%s", before, CreatedText(ClientId(client.id), GetCurrentRealTaxYear(), result.created));
    for (const CString& note : result.created.notes)
        PrintLine("  %s", note);
}

HmrcApi::CreateResult CreateFor(const ClientView& client)
{
    const QuietMessages quiet; // the refusal is told once
    return HmrcApi::CreateFromHmrc(ClientId(client.id), TaxYearHelpers::GetCurrentTaxYear());
}

/// What came of one of many clients; a problem is the client's own, or the practice's.
struct CreatedForOne
{
    HmrcApi::CreateResult result;
    std::optional<CommandError> problem;

    /// What would keep the others' from being made too.
    HmrcApi::Absence GetAbsence() const
    {
        if (!problem || problem->exit != Exit::CannotOpen)
            return HmrcApi::Absence::None;
        return problem->code == kBusy ? HmrcApi::Absence::Busy : HmrcApi::Absence::Unusable;
    }
};

CreatedForOne CreateForOne(const ClientView& client)
{
    CreatedForOne made;
    try {
        made.result = CreateFor(client);
        if (!made.result.ok)
            made.problem = Refusal(made.result);
    } catch (const Cellar::DatabaseError& error) {
        made.problem = FromDatabaseError(error);
    } catch (const Quarry::ChangedByAnotherUser& error) {
        made.problem = FromDatabaseError(error);
    } catch (const std::exception& error) {
        made.problem = CommandError(Exit::Refused, "FAILED", error.what(), "");
    }
    return made;
}

void TellJson(const ClientView& client, const CreatedForOne& made)
{
    const bool isRead = !made.problem || made.problem->exit != Exit::CannotOpen;
    Json view = isRead ? CreatedJson(client, made.result) : Json::object();
    view["client"] = client.id;
    if (made.problem)
        view["error"] = {
            {"code", made.problem->code}, {"message", made.problem->what()}, {"action", made.problem->action}};
    PrintJson(view);
}

void Tell(const ClientView& client, const CreatedForOne& made)
{
    const std::string before = client.code.Str() + ' ' + client.name.Str() + ": ";
    if (made.problem)
        PrintLine("%s%s %s", before, made.problem->what(), made.problem->action);
    else
        Print(before, client, made.result);
}

Exit CreateAll(const CommonOptions& options)
{
    using HmrcApi::Absence;
    const std::vector<ClientView> list = ListPeople();
    Progress progress(options, list.size());
    Tally tally;
    HmrcApi::Patience patience;
    CreatedForOne made;
    for (auto client = list.begin(); patience.GetEnd() == Absence::None && client != list.end(); ++client) {
        made = CreateForOne(*client);
        patience.Add(made.GetAbsence());
        if (Afx::SignalGuard::IsSignalWaiting())
            patience.Add(Absence::Cancelled);
        progress.Hide();
        options.json ? TellJson(*client, made) : Tell(*client, made);
        std::fflush(stdout); // what is told has been done, whatever ends the program
        tally.Add(!made.problem);
        progress.Next();
    }
    progress.Hide();
    const int left = static_cast<int>(list.size()) - tally.clients;
    if (left > 0)
        TellGivenUp(*FindGivenUp(patience.GetEnd()), left, "not come to", "makes what is missing");
    if (options.json)
        PrintJson(tally.ToJson());
    else
        PrintLine("%s: %d done, %d refused.", Counted(tally.clients, "client"), tally.ok, tally.clients - tally.ok);
    return made.GetAbsence() != Absence::None ? Exit::CannotOpen : tally.Result();
}

Exit CreateInPractice(const HmrcArguments& arguments, const CommonOptions& options)
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

} // namespace

Exit Create(const HmrcArguments& arguments, const CommonOptions& options)
{
    std::optional<SignalsWait> signals;
    if (arguments.all)
        signals.emplace();
    return CreateInPractice(arguments, options);
}

} // namespace Morv
