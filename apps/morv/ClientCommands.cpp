// client list, show.

#include <memory>

#include "ArgumentChecks.h"
#include "ClientView.h"
#include "Commands.h"
#include "MorvUt/MorvUt.h"

namespace Morv
{

namespace
{

void List(const std::string& practice, const CommonOptions& options)
{
    const PracticeSession session(practice, options, Login::Needed);
    Json list = Json::array();
    Brix::CClient clients;
    for (clients.Open(); !clients.IsEOL(); clients.MoveNext())
        list.push_back(ViewOf(clients));
    Brix::CPartnership partnerships;
    for (partnerships.Open(); !partnerships.IsEOL(); partnerships.MoveNext())
        list.push_back(ViewOf(partnerships));
    if (options.json)
        return PrintJson(list);
    TextTable table({"Id", "Code", "Kind", "Name"});
    for (const Json& row : list)
        table.Add({std::to_string(row["id"].get<long>()), row["code"], row["kind"], row["name"]});
    table.Print();
}

// What people call a benefit, from its key.
std::string BenefitName(const std::string& key)
{
    int code = 0;
    const char* name = nullptr;
    return GetMapIndexFromShortName(mapNewEmployBenefitsGrid, key.c_str(), &code) &&
                   GetMapLongNameFromIndex(mapNewEmployBenefitsGrid, &name, code)
               ? name
               : key;
}

// A schedule's own description; without one its type's display name.
std::string ScheduleName(const Json& schedule)
{
    const char* name = "";
    if (schedule["description"].get<std::string>().empty())
        GetMapLongNameFromIndex(mapPSBTypes, &name, schedule["type"].get<int>());
    return schedule["description"].get<std::string>() + name;
}

std::string StagedName(int mtdType)
{
    constexpr const char* kNames[] = {"State Pension", "Private Pension", "Jobseeker's Allowance", "Incapacity Benefit",
                                      "Employment and Support Allowance"};
    return mtdType >= 0 && mtdType < 5 ? kNames[mtdType] : "";
}

// What follows a staged row that HMRC no longer sends.
const char* Mark(const Json& row) { return row.value("withdrawn", false) ? " (withdrawn by HMRC)" : ""; }

void PrintEmployments(const Json& employments)
{
    TextTable table({"Employment", "Reference", "Works number", "From", "To", "Pay", "Tax", "Student loan"});
    const auto date = [](const Json& value) { return value.is_null() ? "-" : value.get<std::string>(); };
    for (const Json& row : employments)
        table.Add({row["employer"].get<std::string>() + Mark(row), row["reference"], row["worksNumber"],
                   date(row["start"]), date(row["end"]), Money(row["payPence"]), Money(row["taxPence"]),
                   Money(row["studentLoanPence"])});
    if (!table.IsEmpty())
        table.Print("  ");
    for (const Json& row : employments)
        for (const Json& benefit : row["benefits"]) {
            const std::string name =
                benefit.contains("code") ? BenefitName(benefit["code"]) : benefit["type"].get<std::string>();
            PrintLine("    benefit of %s: %s %s%s", row["employer"].get<std::string>(), name,
                      Money(benefit["amountPence"]), Mark(benefit));
        }
}

void PrintPensions(const Json& rows)
{
    TextTable table({"Pension or benefit", "Reference", "Date", "Amount", "Tax"});
    for (const Json& row : rows) {
        std::string name = row["payer"];
        if (name.empty())
            name = row.contains("type") ? ScheduleName(row) : StagedName(row["mtdType"]);
        table.Add({(name.empty() ? "-" : name) + Mark(row), row["reference"],
                   row["date"].is_null() ? "-" : row["date"].get<std::string>(), Money(row["amountPence"]),
                   Money(row["taxPence"])});
    }
    if (!table.IsEmpty())
        table.Print("  ");
}

// HMRC sends 0.00 until Class 1 earnings are reconciled, by the end of August after the year.
bool IsClass1Final(const Json& insurance, int year)
{
    const Json& earnings = insurance["class1EarningsPence"];
    return earnings.is_null() || earnings != 0 || Kiln::CDate::Today() >= Kiln::CDate(year, 9, 1);
}

void PrintView(const Json& view)
{
    const Json& client = view["client"];
    PrintLine("%s %s, %s, tax year %s", client["code"].get<std::string>(), client["name"].get<std::string>(),
              client["kind"].get<std::string>(), FormatYearString42Digit(view["year"].get<int>()));
    if (client.contains("nationalInsuranceNumber"))
        PrintLine("National Insurance number %s, UTR %s", client["nationalInsuranceNumber"].get<std::string>(),
                  client["utr"].get<std::string>());
    PrintText("Schedules of the return:");
    PrintEmployments(view["schedules"]["employments"]);
    PrintPensions(view["schedules"]["pensionsAndBenefits"]);
    PrintText("Staged from HMRC:");
    PrintEmployments(view["staged"]["employments"]);
    PrintPensions(view["staged"]["pensionsAndBenefits"]);
    for (const Json& row : view["staged"]["taxFreeAllowances"])
        PrintLine("  allowance %s %s%s", row["type"].get<std::string>(), Money(row["amountPence"]), Mark(row));
    const Json& insurance = view["staged"]["nationalInsurance"];
    if (!insurance.is_null())
        PrintLine("  National Insurance: Class 1 earnings %s%s, Class 2 due %s",
                  Money(insurance["class1EarningsPence"]),
                  IsClass1Final(insurance, view["year"].get<int>()) ? "" : " (not yet final)",
                  Money(insurance["class2DuePence"]));
}

Json ClientOf(long id)
{
    const Brix::CClient client = OpenClient(id);
    Json view = ViewOf(client);
    view["nationalInsuranceNumber"] = TextOf(client.GetNINumber());
    view["utr"] = TextOf(client.GetUTR());
    return view;
}

Json PartnershipOf(long id)
{
    Brix::CPartnership partnership;
    if (id == 0 || !partnership.Open({{0, id}}))
        throw CommandError(Exit::BadInput, "UNKNOWN_CLIENT",
                           "--partnership: there is no partnership " + std::to_string(id),
                           "morv client list shows who there is.");
    return ViewOf(partnership);
}

void Show(const std::string& practice, long client, long partnership, const CommonOptions& options)
{
    const PracticeSession session(practice, options, Login::Needed);
    const short year = GetCurrentRealTaxYear();
    const Json view{{"client", partnership ? PartnershipOf(partnership) : ClientOf(client)},
                    {"year", year},
                    {"status", nullptr},
                    {"schedules", SchedulesOf(client, year)},
                    {"staged", StagedOf(client, year)}};
    if (options.json)
        PrintJson(view);
    else
        PrintView(view);
}

} // namespace

void AddClientCommands(CLI::App& app, Program& program)
{
    CLI::App* client = app.add_subcommand("client", "Clients and partnerships")->require_subcommand(1);
    auto path = std::make_shared<std::string>();
    auto clientId = std::make_shared<long>(0);
    auto partnershipId = std::make_shared<long>(0);

    CLI::App* list = client->add_subcommand("list", "All clients, then all partnerships");
    list->add_option("practice", *path, "The practice")->required();
    list->callback([=, &program] { List(*path, program.options); });

    CLI::App* show = client->add_subcommand("show", "One client: status, schedules, staged records");
    show->add_option("practice", *path, "The practice")->required();
    CLI::Option_group* who = show->add_option_group("who");
    who->add_option("--client", *clientId, "Row id of the client")->check(PlainNumber());
    who->add_option("--partnership", *partnershipId, "Row id of the partnership")->check(PlainNumber());
    who->require_option(1);
    show->callback([=, &program] { Show(*path, *clientId, *partnershipId, program.options); });
}

} // namespace Morv
