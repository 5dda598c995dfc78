// year roll-forward.

#include <cstdio>
#include <map>
#include <memory>

#include "Afx/system/SignalGuard.h"
#include "Commands.h"
#include "common/RollWords.h"
#include "HmrcCommands.h"
#include "MorvUt/enquiries/tracker/RollForward.h"
#include "MorvUt/taxyear/TaxYearHelpers.h"
#include "Progress.h"
#include "Quarry/Session.h"
#include "Who.h"

namespace Morv
{

namespace
{

using Tracker::RolledOwner;
using Tracker::RollEnd;

struct YearArguments
{
    std::string practice;
    WhoArguments who;
    bool isPreview = false;
};

TrackerOwner OwnerIn(const ClientView& client) { return {client.id, client.IsPartnership()}; }

/// Lines of what was not done, under the names of their clients.
class Lines
{
public:
    explicit Lines(const std::vector<ClientView>& clients)
    {
        for (const ClientView& client : clients)
            m_names[{client.id, client.IsPartnership()}] = client.code.Str() + ' ' + client.name.Str();
    }

    void Add(const RolledOwner& one)
    {
        for (const auto& each : one.carried.notCarried)
            AddLine(one.owner, each.Text().Str());
        if (!one.problem.IsEmpty())
            AddLine(one.owner, one.problem.Str());
    }
    const Json& GetJson() const { return m_list; }
    void Print() const { m_table.Print(); }

private:
    void AddLine(const TrackerOwner& owner, const std::string& why)
    {
        m_list.push_back({{"client", owner.id}, {"partnership", owner.isPartnership}, {"why", why}});
        m_table.Add({Shown(m_names[{owner.id, owner.isPartnership}]), Shown(why)});
    }

    std::map<std::pair<long, bool>, std::string> m_names;
    Json m_list = Json::array();
    TextTable m_table{{"Client", "Not carried forward"}};
};

/// What the database said of a practice that cannot be used, in brackets.
std::string Behind(const Tracker::Rolled& rolled)
{
    return rolled.end == RollEnd::Unusable ? " (" + Shown(rolled.message.Str()) + ')' : std::string();
}

void Tell(const Tracker::Rolled& rolled, const std::vector<ClientView>& clients, int failed,
          const YearArguments& arguments, const CommonOptions& options)
{
    Lines lines(clients);
    for (const RolledOwner& one : rolled.owners)
        lines.Add(one);
    const CutShort* const cut = FindCutShort(rolled.end);
    const std::size_t left = clients.size() - rolled.done;
    if (cut)
        std::fprintf(stderr,
                     "morv: stopped, because %s%s; %s left. %s the same command again: it makes what is missing.\n",
                     cut->why, Behind(rolled).c_str(), LeftText(left).c_str(),
                     *cut->wait ? (std::string(cut->wait) + ", then give").c_str() : "Give");
    const TaxYear year = TaxYearHelpers::GetCurrentTaxYear();
    if (options.json)
        return PrintJson({{"year", year.GetRealTaxYear()},
                          {"preview", arguments.isPreview},
                          {"clients", rolled.done},
                          {"failed", failed},
                          {"left", left},
                          {"stopped", cut ? Json(cut->name) : Json(nullptr)},
                          {"message", cut && !rolled.message.IsEmpty() ? TextOf(rolled.message) : Json(nullptr)},
                          {"sources", rolled.total.sources},
                          {"tasks", rolled.total.tasks},
                          {"enquiries", rolled.total.enquiries},
                          {"skipped", lines.GetJson()}});
    if (!lines.GetJson().empty())
        lines.Print();
    PrintText(RolledText(rolled, arguments.isPreview, year));
    if (arguments.isPreview)
        PrintText("Nothing was written.");
}

Exit RollForward(const YearArguments& arguments, const CommonOptions& options)
{
    if (options.year.empty())
        throw CommandError(Exit::BadInput, "NO_YEAR", "--year: the new tax year is missing",
                           "Give the year into which clients are rolled forward, such as 2018/19.");
    const SignalsWait signals;
    const PracticeSession session(arguments.practice, options, Login::Needed);
    const std::vector<ClientView> clients =
        arguments.who.IsAnyone() ? std::vector<ClientView>{arguments.who.Find()} : ListClients();
    std::vector<TrackerOwner> owners;
    owners.reserve(clients.size());
    for (const ClientView& client : clients)
        owners.push_back(OwnerIn(client));
    int failed = 0;
    const QuietMessages quiet; // the command itself says what they say
    Progress progress(options, owners.size());
    const Tracker::Rolled rolled =
        Tracker::RollForward(Quarry::GetConnection(), TaxYearHelpers::GetCurrentTaxYear().GetRealTaxYear(), owners,
                             {arguments.isPreview, [&](std::size_t, std::size_t, const RolledOwner& one) {
                                  failed += one.problem.IsEmpty() ? 0 : 1;
                                  progress.Next();
                                  return !Afx::SignalGuard::IsSignalWaiting();
                              }});
    progress.Hide();
    if (rolled.end == RollEnd::Refused)
        throw CommandError(Exit::Refused, "REFUSED", Printable(rolled.message.View()),
                           "Ask whoever administers the practice.");
    Tell(rolled, clients, failed, arguments, options);
    if (const CutShort* const cut = FindCutShort(rolled.end))
        return cut->exit;
    return failed > 0 ? Exit::Refused : Exit::Done;
}

} // namespace

void AddYearCommands(CLI::App& app, Program& program)
{
    CLI::App* year =
        app.add_subcommand("year", "The practice's work from one tax year to the next")->require_subcommand(1);
    auto arguments = std::make_shared<YearArguments>();

    CLI::App* roll = year->add_subcommand(
        "roll-forward", "Carry sources, tasks and enquiries of all clients, or of one, into the tax year --year");
    roll->add_option("practice", arguments->practice, "The practice")->required();
    AddWhoOptions(*roll, arguments->who, false);
    roll->add_flag("--preview", arguments->isPreview, "Say what would be made, and write nothing");
    roll->callback([=, &program] { program.exit = RollForward(*arguments, program.options); });
}

} // namespace Morv
