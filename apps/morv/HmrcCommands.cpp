// hmrc authorise, fetch, create, differences, log.

#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <memory>
#include <optional>

#include "Afx/Clock.h"
#include "ArgumentChecks.h"
#include "Cellar/BufferedRowList.h"
#include "ClientView.h"
#include "Commands.h"
#include "HmrcApi/answers/Mask.h"
#include "MorvUt/MorvUt.h"
#include "Output.h"
#include "Quarry/Session.h"

namespace Morv
{

namespace
{

struct HmrcArguments
{
    std::string practice, gateway, browser, chain;
    long client = 0;
    bool all = false;
};

void UseBase(const CommonOptions& options)
{
    if (options.base.empty())
        return;
    if (!HmrcApi::CClientData::SetLoopbackOverride(options.base))
        throw CommandError(Exit::BadInput, "BAD_BASE",
                           "--base: " + Quoted(options.base) + " is not an address of this machine",
                           "A base looks like http://127.0.0.1:8080/; 127.0.0.1, [::1] and localhost are taken, ports "
                           "from 1 to 65535.");
}

// ---- authorise

// Runs `command` with the address as its last argument; its output goes to standard error.
bool RunBrowser(const std::string& command, const std::string& address)
{
    const pid_t child = fork();
    if (child < 0)
        return false;
    if (child == 0) {
        // A grandchild, so that nobody has to wait for the browser.
        if (fork() != 0)
            _exit(0);
        dup2(STDERR_FILENO, STDOUT_FILENO);
        const std::string line = command + " \"$1\"";
        execl("/bin/sh", "sh", "-c", line.c_str(), "sh", address.c_str(), static_cast<char*>(nullptr));
        _exit(127);
    }
    int status = 0;
    return waitpid(child, &status, 0) == child;
}

std::function<bool(const std::string&)> Browser(const std::string& command)
{
    return [command](const std::string& address) {
        std::fprintf(stderr, "Open this address in a browser and give authority: %s\n", address.c_str());
        return command.empty() || RunBrowser(command, address);
    };
}

COleDateTime AddSeconds(const COleDateTime& moment, std::int64_t seconds)
{
    if (moment.GetStatus() != COleDateTime::valid)
        return COleDateTime::Null();
    return COleDateTime(Afx::FromUnixMilliseconds(Afx::ToUnixMilliseconds(moment.Fields()) + seconds * 1000));
}

// HMRC's grants last 18 months from the consent, refreshed or not.
COleDateTime GrantEnd(const COleDateTime& granted)
{
    if (granted.GetStatus() != COleDateTime::valid)
        return COleDateTime::Null();
    Afx::LocalTime fields = granted.Fields();
    const int months = fields.month - 1 + 18;
    fields.year += months / 12;
    fields.month = months % 12 + 1;
    while (fields.day > 28 && COleDateTime(fields).GetStatus() != COleDateTime::valid) // the month may be shorter
        --fields.day;
    return COleDateTime(fields);
}

Json GatewayOf(const std::string& gateway)
{
    Cellar::CBufferedRowList row(
        Quarry::GetConnection(),
        "SELECT nAuthorisedStatus, strService, strScope, nExpiresIn, dtAuthenticated, dtGranted "
        "FROM MTDAuthorisation WHERE strGatewayID = %s",
        gateway);
    const bool authorised = !row.IsEOL() && row.GetShort("nAuthorisedStatus") == 1;
    return {{"gateway", gateway},
            {"authorised", authorised},
            {"service", authorised ? TextOf(row.GetText("strService")) : Json(nullptr)},
            {"scope", authorised ? TextOf(row.GetText("strScope")) : Json(nullptr)},
            {"expires", authorised ? MomentOf(AddSeconds(row.GetDateTime("dtAuthenticated"), row.GetLong("nExpiresIn")))
                                   : Json(nullptr)},
            {"grantEnds", authorised ? MomentOf(GrantEnd(row.GetDateTime("dtGranted"))) : Json(nullptr)}};
}

[[noreturn]] void ThrowAuthorisationError(const HmrcApi::CAuthorisation::Error& error)
{
    const bool unreachable = error.code == "NO_CONNECTION" || error.code == "TIMED_OUT";
    throw CommandError(unreachable ? Exit::HmrcUnreachable : Exit::Refused, error.code.empty() ? "REFUSED" : error.code,
                       error.text.empty() ? "HMRC gave no authority" : error.text,
                       HmrcApi::ActionFor(error.code, error.status));
}

void Authorise(const HmrcArguments& arguments, const CommonOptions& options)
{
    UseBase(options);
    if (arguments.gateway.find('\'') != std::string::npos)
        throw CommandError(Exit::BadInput, "BAD_GATEWAY", "--gateway: a Government Gateway ID holds no quotes",
                           "Give the ID as HMRC's letters show it.");
    const PracticeSession session(arguments.practice, options, Login::Needed);
    HmrcApi::CAuthorisationStore::CreateGatewayID(arguments.gateway); // false: it is registered already
    HmrcApi::Logger logger;
    HmrcApi::CAuthorisation authorisation(std::make_shared<HmrcApi::CAuthorisationStore>(arguments.gateway),
                                          std::make_shared<HmrcApi::CScope>(),
                                          std::make_shared<HmrcApi::CClientData>());
    authorisation.SetBrowser(Browser(arguments.browser));
    if (!authorisation.DoAuthorisation(&logger))
        ThrowAuthorisationError(authorisation.GetLastError());
    const Json view = GatewayOf(arguments.gateway);
    if (options.json)
        return PrintJson(view);
    PrintLine("%s is authorised at %s for %s. The grant ends %s.", arguments.gateway,
              view["service"].get<std::string>(), view["scope"].get<std::string>(),
              view["grantEnds"].is_null() ? std::string("in 18 months")
                                          : view["grantEnds"].get<std::string>().substr(0, 10));
}

// ---- fetch

Json ErrorsOf(const HmrcApi::CAPIErrorHandler& handler)
{
    Json list = Json::array();
    for (const auto& group : handler.GetGroups())
        for (const auto& error : group.errors)
            list.push_back({{"group", group.name},
                            {"code", error.GetCode()},
                            {"message", error.GetMessageText()},
                            {"field", error.GetField().empty() ? Json(nullptr) : Json(error.GetField())},
                            {"status", error.GetHttpStatus().empty() ? Json(nullptr) : Json(error.GetHttpStatus())},
                            {"action", HmrcApi::ActionFor(error.GetCode(), error.GetHttpStatus(), error.GetField())}});
    return list;
}

// No request got an answer: every error stands without an HTTP status and says that nobody was reached.
bool IsUnreachable(const HmrcApi::FetchResult& result)
{
    int errors = 0;
    for (const auto& group : result.errors->GetGroups())
        for (const auto& error : group.errors) {
            ++errors;
            const std::string& why = error.GetCode() == "NO_CREDENTIALS" ? error.GetField() : error.GetCode();
            if (why != "NO_CONNECTION" && why != "TIMED_OUT")
                return false;
        }
    // A group that had nothing to report was answered.
    return errors > 0 && errors >= static_cast<int>(result.errors->GetGroups().size());
}

Json ListOf(const std::vector<CString>& texts)
{
    Json list = Json::array();
    for (const CString& text : texts)
        list.push_back(TextOf(text));
    return list;
}

void PrintNotes(const std::vector<CString>& notes)
{
    for (const CString& note : notes)
        PrintLine("  %s", note);
}

Json ViewOf(long client, const HmrcApi::FetchResult& result)
{
    using Route = HmrcApi::FetchResult::Route;
    return {
        {"client", client},
        {"year", GetCurrentRealTaxYear()},
        {"route", result.route == Route::Paye ? "paye" : "employments"},
        {"ok", result.ok},
        {"newData", result.newData},
        {"clear", result.clear},
        {"staged",
         {{"added", result.staged.added}, {"changed", result.staged.changed}, {"withdrawn", result.staged.withdrawn}}},
        {"message", result.message.IsEmpty() ? Json(nullptr) : TextOf(result.message)},
        {"errors", ErrorsOf(*result.errors)},
        {"notes", ListOf(result.notes)}};
}

std::string FlatText(std::string text)
{
    std::size_t at = 0;
    while ((at = text.find('\n', at)) != std::string::npos) {
        std::size_t end = text.find_first_not_of('\n', at);
        text.replace(at, (end == std::string::npos ? text.size() : end) - at, " ");
    }
    return text;
}

void PrintView(const Json& view)
{
    const Json& staged = view["staged"];
    PrintLine("Client %d, %s: %s. Staged rows: %d new, %d changed, %d withdrawn by HMRC. %s",
              view["client"].get<long>(), FormatYearString42Digit(view["year"].get<int>()),
              view["ok"].get<bool>() ? "fetched" : "not fetched", staged["added"].get<int>(),
              staged["changed"].get<int>(), staged["withdrawn"].get<int>(),
              view["clear"].get<bool>() ? "Nothing differs from the return." : "Some figures differ from the return.");
    if (!view["message"].is_null())
        PrintLine("  %s", FlatText(view["message"]));
    for (const Json& error : view["errors"])
        PrintLine("  %s: %s (%s). %s", error["group"].get<std::string>(), error["message"].get<std::string>(),
                  error["code"].get<std::string>(), error["action"].get<std::string>());
    for (const Json& note : view["notes"])
        PrintLine("  %s", note.get<std::string>());
}

struct Fetched
{
    bool ok;
    bool unreachable;
    bool busy;
};

Fetched FetchOne(long client, const HmrcArguments& arguments, const CommonOptions& options,
                 const std::shared_ptr<HmrcApi::Channel>& channel = nullptr)
{
    const HmrcApi::FetchResult result =
        HmrcApi::FetchFromHmrc(ClientId(client), arguments.gateway, HmrcApi::IEndpointOverride::Live, channel);
    const Json view = ViewOf(client, result);
    if (options.json)
        PrintJson(view);
    else
        PrintView(view);
    return {result.ok, IsUnreachable(result), result.stopped == HmrcApi::FetchResult::Stopped::Busy};
}

Exit FetchAll(const HmrcArguments& arguments, const CommonOptions& options)
{
    int clients = 0, ok = 0;
    bool unreachable = true;
    const auto channel = std::make_shared<HmrcApi::Channel>(); // one connection for all of them
    Brix::CClient list;
    for (list.Open(); !list.IsEOL(); list.MoveNext()) {
        if (!options.quiet && isatty(STDERR_FILENO))
            std::fprintf(stderr, "\r%d of %d", clients + 1, list.GetCount());
        const Fetched fetched = FetchOne(list.GetID(), arguments, options, channel);
        ++clients;
        ok += fetched.ok ? 1 : 0;
        unreachable = unreachable && fetched.unreachable;
    }
    if (!options.quiet && isatty(STDERR_FILENO))
        std::fputc('\n', stderr);
    if (options.json)
        PrintJson({{"clients", clients}, {"ok", ok}, {"failed", clients - ok}});
    else
        PrintLine("%d clients: %d fetched, %d not.", clients, ok, clients - ok);
    if (clients > 0 && unreachable)
        return Exit::HmrcUnreachable;
    return ok == clients ? Exit::Done : Exit::Refused;
}

Exit Fetch(const HmrcArguments& arguments, const CommonOptions& options)
{
    UseBase(options);
    const PracticeSession session(arguments.practice, options, Login::Needed);
    if (arguments.all)
        return FetchAll(arguments, options);
    OpenClient(arguments.client); // it must be there before anything is asked or written
    const Fetched fetched = FetchOne(arguments.client, arguments, options);
    if (fetched.busy)
        return Exit::CannotOpen;
    if (fetched.unreachable)
        return Exit::HmrcUnreachable;
    return fetched.ok ? Exit::Done : Exit::Refused;
}

// ---- create, differences

void Create(const HmrcArguments& arguments, const CommonOptions& options)
{
    const PracticeSession session(arguments.practice, options, Login::Needed);
    OpenClient(arguments.client); // it must be there before anything is asked or written
    const HmrcApi::CreateResult result =
        HmrcApi::CreateFromHmrc(ClientId(arguments.client), TaxYearHelpers::GetCurrentTaxYear());
    if (!result.ok)
        throw CommandError(Exit::Refused, "REFUSED", FlatText(result.message.Str()),
                           "Ask whoever administers the practice, or work on a return that may be changed.");
    const auto& created = result.created;
    if (options.json)
        return PrintJson(
            {{"created", {{"employments", created.employments}, {"pensionsAndBenefits", created.pensionsAndBenefits}}},
             {"notes", ListOf(created.notes)},
             {"schedules", SchedulesOf(arguments.client, GetCurrentRealTaxYear())}});
    if (created.employments + created.pensionsAndBenefits == 0)
        PrintText("Nothing new was made.");
    else
        PrintLine("Created %d employment schedules and %d pension and benefit schedules.", created.employments,
                  created.pensionsAndBenefits);
    PrintNotes(created.notes);
}

Json ViewOf(const HmrcApi::DifferenceRow& row)
{
    if (row.kind == HmrcApi::DifferenceRow::Kind::Date)
        return {{"caption", TextOf(row.caption)},
                {"return", DateOf(row.returnDate)},
                {"hmrc", DateOf(row.hmrcDate)},
                {"estimate", row.estimate}};
    return {{"caption", TextOf(row.caption)},
            {"return", PenceOf(row.returnAmount)},
            {"hmrc", PenceOf(row.hmrcAmount)},
            {"estimate", row.estimate}};
}

Json ViewOf(const HmrcApi::Difference& difference)
{
    constexpr const char* kStates[] = {"open", "accepted", "rejected", "skipped"};
    Json rows = Json::array();
    for (const auto& row : difference.rows)
        rows.push_back(ViewOf(row));
    const bool isEmployment = difference.schedule == HmrcApi::Difference::Schedule::Employment;
    return {{"number", difference.number},
            {"schedule", isEmployment ? "employment" : "pensionOrBenefit"},
            {"item", TextOf(difference.item)},
            {"state", kStates[static_cast<int>(difference.state)]},
            {"rows", rows}};
}

void Differences(const HmrcArguments& arguments, const CommonOptions& options)
{
    const PracticeSession session(arguments.practice, options, Login::Needed);
    OpenClient(arguments.client); // it must be there before anything is asked or written
    const auto differences = HmrcApi::FindDifferences(ClientId(arguments.client), TaxYearHelpers::GetCurrentTaxYear());
    if (options.json) {
        Json list = Json::array();
        for (const auto& difference : differences)
            list.push_back(ViewOf(difference));
        return PrintJson({{"differences", list}});
    }
    if (differences.empty())
        PrintText("No differences between HMRC's figures and the return.");
    for (const auto& difference : differences) {
        PrintLine("%d. %s", difference.number, difference.item);
        for (const auto& row : difference.rows)
            PrintLine("   %s: return %s, HMRC %s%s", row.caption, row.ReturnText(), row.HmrcText(),
                      row.estimate ? " (estimate)" : "");
    }
}

// ---- log

void ShowLog(const HmrcArguments& arguments, const CommonOptions& options)
{
    const PracticeSession session(arguments.practice, options, Login::Needed);
    auto rows =
        arguments.chain.empty()
            ? Cellar::CBufferedRowList(Quarry::GetConnection(), "SELECT * FROM MTDLog ORDER BY lID")
            : Cellar::CBufferedRowList(Quarry::GetConnection(),
                                       "SELECT * FROM MTDLog WHERE strChainID = %s ORDER BY lID", arguments.chain);
    Json list = Json::array();
    TextTable table({"When", "User", "Event", "Interface", "Request", "Response", "Detail"});
    for (; !rows.IsEOL(); rows.MoveNext()) {
        // Rows that another program wrote are masked too.
        const auto text = [&rows](const char* column) { return HmrcApi::Mask(rows.GetText(column).Str()); };
        const Json when = MomentOf(rows.GetDateTime("dtLogged"));
        list.push_back({{"when", when},
                        {"user", text("strUserID")},
                        {"workstation", text("strWorkstation")},
                        {"session", text("strSessionID")},
                        {"chain", text("strChainID")},
                        {"event", text("strEvent")},
                        {"interface", text("strInterface")},
                        {"request", text("strRequest")},
                        {"response", text("strResponse")},
                        {"detail", text("strDetail")}});
        table.Add({when.is_null() ? "-" : when.get<std::string>(), text("strUserID"), text("strEvent"),
                   text("strInterface"), text("strRequest"), text("strResponse"), text("strDetail")});
    }
    if (options.json)
        PrintJson(list);
    else
        table.Print();
}

using Arguments = std::shared_ptr<HmrcArguments>;

CLI::App* AddCommand(CLI::App& hmrc, const char* name, const char* meaning, const Arguments& arguments)
{
    CLI::App* command = hmrc.add_subcommand(name, meaning);
    command->add_option("practice", arguments->practice, "The practice")->required();
    return command;
}

CLI::Option* AddClient(CLI::App* command, const Arguments& arguments)
{
    return command->add_option("--client", arguments->client, "Row id of the client")->check(PlainNumber());
}

} // namespace

void AddHmrcCommands(CLI::App& app, Program& program)
{
    CLI::App* hmrc = app.add_subcommand("hmrc", "A client's records at HMRC")->require_subcommand(1);
    hmrc->add_option("--base", program.options.base, "Ask a server on this machine instead of HMRC")->check(NotEmpty());
    auto arguments = std::make_shared<HmrcArguments>();

    CLI::App* authorise = AddCommand(*hmrc, "authorise", "Ask a Government Gateway user for authority", arguments);
    authorise->add_option("--gateway", arguments->gateway, "Government Gateway ID; registered when it is not there")
        ->required()
        ->check(NotEmpty());
    authorise->add_option("--browser", arguments->browser, "Command that opens the address");
    authorise->callback([=, &program] { Authorise(*arguments, program.options); });

    CLI::App* fetch = AddCommand(*hmrc, "fetch", "Fetch and stage the records of one client or of all", arguments);
    fetch->add_option("--gateway", arguments->gateway, "Government Gateway ID whose authority is used")
        ->required()
        ->check(NotEmpty());
    CLI::Option_group* who = fetch->add_option_group("who");
    who->add_option("--client", arguments->client, "Row id of the client")->check(PlainNumber());
    who->add_flag("--all", arguments->all, "All clients");
    who->require_option(1);
    fetch->callback([=, &program] { program.exit = Fetch(*arguments, program.options); });

    CLI::App* create = AddCommand(*hmrc, "create", "Create the schedules that the return lacks", arguments);
    AddClient(create, arguments)->required();
    create->callback([=, &program] { Create(*arguments, program.options); });

    CLI::App* differences = AddCommand(*hmrc, "differences", "List what differs from the return", arguments);
    AddClient(differences, arguments)->required();
    differences->callback([=, &program] { Differences(*arguments, program.options); });

    CLI::App* log = AddCommand(*hmrc, "log", "The log of what was asked of HMRC, masked", arguments);
    log->add_option("--chain", arguments->chain, "Only this chain of events")->check(NotEmpty());
    log->callback([=, &program] { ShowLog(*arguments, program.options); });
}

} // namespace Morv
