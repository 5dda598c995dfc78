// client list, show, add.

#include <functional>
#include <memory>
#include <stdexcept>

#include "ArgumentChecks.h"
#include "ClientJson.h"
#include "ClientText.h"
#include "Commands.h"
#include "MorvUt/MorvUt.h"
#include "Who.h"

namespace Morv
{

namespace
{

struct ClientArguments
{
    std::string practice;
    WhoArguments who;
    std::string code, name, kind = "individual", nino, utr;
    bool withStatus = false;
};

using Cells = std::vector<std::string>;

/// Visits all that are listed; without their status, unless that was asked for. None is held.
void ForEachListed(bool withStatus, const std::function<void(const ClientView&, const ClientStatus*)>& visit)
{
    if (withStatus)
        ForEachStatus(GetCurrentRealTaxYear(),
                      [&](const ClientView& client, const ClientStatus& status) { visit(client, &status); });
    else
        ForEachClient([&](const ClientView& client) { visit(client, nullptr); });
}

Json JsonOf(const ClientView& client, const ClientStatus* status)
{
    Json json = ToJson(client);
    if (status)
        json["status"] = ToJson(*status);
    return json;
}

Cells CellsOf(const ClientView& client, const ClientStatus* status)
{
    Cells cells{std::to_string(client.id), Shown(client.code.View()), NameOf(client.kind)};
    if (status)
        cells.push_back(Shown(status->Word().View()));
    cells.push_back(Shown(client.name.View()));
    return cells;
}

void List(const ClientArguments& arguments, const CommonOptions& options)
{
    const PracticeSession session(arguments.practice, options, Login::Needed);
    const bool withStatus = arguments.withStatus;
    if (options.json) {
        // A damaged file fails here, before the document has begun.
        ForEachListed(withStatus, [](const ClientView&, const ClientStatus*) {});
        JsonList list;
        ForEachListed(withStatus,
                      [&](const ClientView& client, const ClientStatus* status) { list.Add(JsonOf(client, status)); });
        return list.End();
    }
    const Cells headings =
        withStatus ? Cells{"Id", "Code", "Kind", "Status", "Name"} : Cells{"Id", "Code", "Kind", "Name"};
    TextColumns columns;
    columns.Measure(headings);
    ForEachListed(withStatus, [&](const ClientView& client, const ClientStatus* status) {
        columns.Measure(CellsOf(client, status));
    });
    columns.Print(headings);
    ForEachListed(withStatus, [&](const ClientView& client, const ClientStatus* status) {
        columns.Print(CellsOf(client, status));
    });
}

Json WithIdentifiers(const ClientView& client)
{
    Json view = ToJson(client);
    if (!client.IsPartnership()) {
        view["nationalInsuranceNumber"] = TextOf(client.nationalInsuranceNumber);
        view["utr"] = TextOf(client.utr);
    }
    return view;
}

void Show(const ClientArguments& arguments, const CommonOptions& options)
{
    const PracticeSession session(arguments.practice, options, Login::Needed);
    const short year = GetCurrentRealTaxYear();
    const ClientView client = arguments.who.Find();
    HmrcApi::ReturnYear own; // these are clients'
    HmrcApi::StagedYear staged;
    if (!client.IsPartnership()) {
        own = HmrcApi::LoadReturnYear(ClientId(client.id), year);
        staged = HmrcApi::LoadStagedYear(ClientId(client.id), year);
    }
    const ClientStatus status = StatusOf(client.id, client.IsPartnership(), year);
    if (options.json)
        return PrintJson({{"client", WithIdentifiers(client)},
                          {"year", year},
                          {"status", ToJson(status)},
                          {"schedules", ToJson(own)},
                          {"staged", ToJson(staged)}});
    PrintClient(client, year);
    PrintStatus(status);
    PrintSchedules(own);
    PrintStaged(staged, year);
}

void Add(const ClientArguments& arguments, const CommonOptions& options)
{
    const auto kind = KindOfClientNamed(arguments.kind);
    if (!kind)
        throw CommandError(Exit::BadInput, "BAD_KIND", "--kind: there is no kind " + Quoted(arguments.kind),
                           "A client is an individual, trust or estate, the others are partnership and llp.");
    const PracticeSession session(arguments.practice, options, Login::IfGiven);
    const ClientView wanted{0, arguments.code, arguments.name, *kind, CString(arguments.nino), CString(arguments.utr)};
    try {
        const ClientView added = AddClient(wanted);
        if (options.json)
            return PrintJson(ToJson(added));
        PrintLine("Added %s %s, %s, number %d.", added.code, added.name, NameOf(added.kind), added.id);
    } catch (const std::invalid_argument& refused) {
        throw CommandError(Exit::BadInput, "BAD_CLIENT", refused.what(), "Nothing was added.");
    }
}

} // namespace

void AddClientCommands(CLI::App& app, Program& program)
{
    CLI::App* client = app.add_subcommand("client", "Clients and partnerships")->require_subcommand(1);
    auto arguments = std::make_shared<ClientArguments>();

    CLI::App* list = client->add_subcommand("list", "All clients, then all partnerships");
    list->add_option("practice", arguments->practice, "The practice")->required();
    list->add_flag("--status", arguments->withStatus, "With the status of each in the tax year");
    list->callback([=, &program] { List(*arguments, program.options); });

    CLI::App* show = client->add_subcommand("show", "One client: status, schedules, staged records");
    show->add_option("practice", arguments->practice, "The practice")->required();
    AddWhoOptions(*show, arguments->who, true);
    show->callback([=, &program] { Show(*arguments, program.options); });

    CLI::App* add = client->add_subcommand("add", "Add a client or partnership; its identifiers are checked");
    add->add_option("practice", arguments->practice, "The practice")->required();
    add->add_option("--code", arguments->code, "Its code, which nobody else has")
        ->required()
        ->check(TextUpTo(kLongestCode))
        ->check(Utf8());
    add->add_option("--name", arguments->name, "Its name")->required()->check(TextUpTo(kLongestName))->check(Utf8());
    add->add_option("--kind", arguments->kind, "individual (default), trust, estate, partnership or llp");
    add->add_option("--nino", arguments->nino, "National Insurance number of an individual")->check(NotEmpty());
    add->add_option("--utr", arguments->utr, "Unique Taxpayer Reference")->check(NotEmpty());
    add->callback([=, &program] { Add(*arguments, program.options); });
}

} // namespace Morv
