// client list, show, add.

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
    std::string practice, client, partnership;
    std::string code, name, kind = "individual", nino, utr;
    bool withStatus = false;
};

/// The clients of a list, each with its status when that was asked for; null for one that came after.
struct Listed
{
    std::vector<ClientView> clients = ListClients();
    std::vector<ClientStatus> statuses;
    bool withStatus = false;

    const ClientStatus* StatusOf(const ClientView& client) const
    {
        return FindStatus(statuses, client.id, client.IsPartnership());
    }
};

Json JsonOf(const Listed& listed)
{
    Json list = Json::array();
    for (const ClientView& client : listed.clients) {
        Json& json = list.emplace_back(ToJson(client));
        if (!listed.withStatus)
            continue;
        const ClientStatus* const status = listed.StatusOf(client);
        json["status"] = status ? ToJson(*status) : Json(nullptr);
    }
    return list;
}

void Print(const Listed& listed)
{
    TextTable table(listed.withStatus ? std::vector<std::string>{"Id", "Code", "Kind", "Status", "Name"}
                                      : std::vector<std::string>{"Id", "Code", "Kind", "Name"});
    for (const ClientView& client : listed.clients) {
        std::vector<std::string> cells{std::to_string(client.id), client.code.Str(), NameOf(client.kind)};
        if (listed.withStatus) {
            const ClientStatus* const status = listed.StatusOf(client);
            cells.push_back(status ? status->Word().Str() : "-");
        }
        cells.push_back(client.name.Str());
        table.Add(std::move(cells));
    }
    table.Print();
}

void List(const ClientArguments& arguments, const CommonOptions& options)
{
    const PracticeSession session(arguments.practice, options, Login::Needed);
    Listed listed;
    listed.withStatus = arguments.withStatus;
    if (listed.withStatus)
        listed.statuses = StatusOfAll(GetCurrentRealTaxYear());
    if (options.json)
        PrintJson(JsonOf(listed));
    else
        Print(listed);
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
    const ClientView client =
        arguments.client.empty() ? PartnershipOf(arguments.partnership) : ClientOf(arguments.client);
    const ClientId id(client.IsPartnership() ? 0 : client.id); // schedules and staged records are clients'
    const HmrcApi::ReturnYear own = HmrcApi::LoadReturnYear(id, year);
    const HmrcApi::StagedYear staged = HmrcApi::LoadStagedYear(id, year);
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
    CLI::Option_group* who = show->add_option_group("who");
    AddClientOption(*who, arguments->client);
    who->add_option("--partnership", arguments->partnership, "Partnership (code, or number in the list)")
        ->check(NotEmpty());
    who->require_option(1);
    show->callback([=, &program] { Show(*arguments, program.options); });

    CLI::App* add = client->add_subcommand("add", "Add a client or partnership; its identifiers are checked");
    add->add_option("practice", arguments->practice, "The practice")->required();
    add->add_option("--code", arguments->code, "Its code, which nobody else has")
        ->required()
        ->check(TextUpTo(kLongestCode));
    add->add_option("--name", arguments->name, "Its name")->required()->check(TextUpTo(kLongestName));
    add->add_option("--kind", arguments->kind, "individual (default), trust, estate, partnership or llp");
    add->add_option("--nino", arguments->nino, "National Insurance number of an individual")->check(NotEmpty());
    add->add_option("--utr", arguments->utr, "Unique Taxpayer Reference")->check(NotEmpty());
    add->callback([=, &program] { Add(*arguments, program.options); });
}

} // namespace Morv
