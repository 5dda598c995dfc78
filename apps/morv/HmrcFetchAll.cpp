// hmrc fetch --all.

#include <cstdio>
#include <optional>
#include <set>
#include <vector>

#include "Afx/system/SignalGuard.h"
#include "FetchOutput.h"
#include "GivenUp.h"
#include "MorvUt/hmrc/fetch/FetchMany.h"
#include "MorvUt/hmrc/fetch/FetchRun.h"
#include "MorvUt/taxyear/CurrentTaxYear.h"
#include "Progress.h"
#include "Who.h"

namespace Morv
{

namespace
{

using HmrcApi::Absence;
using HmrcApi::FetchResult;
using HmrcApi::ManyFetched;

/// About whom everything was answered since the run began.
std::set<long> ListDone(const HmrcApi::FetchRun& run)
{
    std::set<long> done;
    if (run.IsGoneOnWith())
        for (const ClientId& client : run.ListDone())
            done.insert(client.Get());
    return done;
}

void TellGoneOnWith(const HmrcApi::FetchRun& run, int before)
{
    std::fprintf(
        stderr,
        "morv: goes on with the fetch of %s, which has not come to its end: %s fetched since. --anew asks about "
        "all.\n",
        ShownMoment(run.GetBegan()).c_str(), (Counted(before, "client") + (before == 1 ? " was" : " were")).c_str());
}

void TellSummary(const Tally& tally, Absence ended, int before, int left, const CommonOptions& options)
{
    if (options.json) {
        Json summary = tally.ToJson();
        summary["fetchedBefore"] = before;
        summary["notAsked"] = left;
        summary["stopped"] = ended == Absence::None ? Json(nullptr) : Json(NameOf(ended));
        PrintJson(summary);
        return;
    }
    const std::string fetchedBefore = before > 0 ? ", " + std::to_string(before) + " before" : std::string();
    PrintLine("%s: %d fetched, %d not%s.", Counted(tally.clients, "client"), tally.ok, tally.clients - tally.ok,
              fetchedBefore);
}

} // namespace

Exit FetchAll(const HmrcArguments& arguments, const CommonOptions& options)
{
    HmrcApi::FetchRun run(GetCurrentRealTaxYear(), arguments.anew);
    const std::set<long> done = ListDone(run);
    std::vector<ClientView> list = ListPeople();
    std::erase_if(list, [&](const ClientView& each) { return done.contains(each.id); });
    const int before = static_cast<int>(done.size());
    if (before > 0)
        TellGoneOnWith(run, before);

    std::vector<ClientId> ids;
    ids.reserve(list.size());
    for (const ClientView& client : list)
        ids.emplace_back(client.id);
    std::optional<QuietMessages> quiet;
    if (!options.json) // the text tells all that the boxes tell
        quiet.emplace();
    Tally tally;
    Progress progress(options, list.size());
    const ManyFetched fetched =
        HmrcApi::FetchManyFromHmrc(ids, arguments.gateway,
                                   [&](std::size_t place, const FetchResult& result) {
                                       progress.Hide();
                                       TellFetched(list[place], result, arguments, options);
                                       std::fflush(stdout); // what is told has been done, whatever ends the program
                                       tally.Add(result.ok);
                                       progress.Next();
                                   },
                                   {HmrcApi::IEndpointOverride::Live, &Afx::SignalGuard::IsSignalWaiting});
    progress.Hide();

    const GivenUp* const given = FindGivenUp(fetched.ended);
    const int left = static_cast<int>(list.size() - fetched.done);
    if (given)
        TellGivenUp(*given, left, "not asked about", "goes on from here");
    else
        run.End();
    TellSummary(tally, fetched.ended, before, left, options);
    if (fetched.ended == Absence::Busy || fetched.ended == Absence::Unusable)
        return Exit::CannotOpen;
    if (fetched.isAnyAsked && !fetched.isAnyReached)
        return Exit::HmrcUnreachable;
    return given ? given->exit : tally.Result();
}

} // namespace Morv
