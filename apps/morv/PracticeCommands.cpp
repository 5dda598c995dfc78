// practice create, check, options, backup, copy.

#include <cstdio>
#include <filesystem>
#include <memory>
#include <vector>

#include "Afx/text/Numbers.h"
#include "ArgumentChecks.h"
#include "Backup.h"
#include "Brix/Check.h"
#include "Brix/Records.h"
#include "Brix/Schema.h"
#include "Cellar/Connection.h"
#include "Commands.h"
#include "GroupFolder.h"
#include "MorvUt/StartUp.h"
#include "NewPlace.h"
#include "Output.h"
#include "PracticeCopy.h"
#include "Progress.h"
#include "Quarry/Session.h"
#include "sample/Practice.h"
#include "Shellkit/Envelope.h"
#include "Shellkit/KeyFile.h"
#include "Shellkit/PracticeKey.h"

namespace Morv
{

namespace
{

long CountRows(const Cellar::SqlText& count)
{
    return Cellar::ToLong(Quarry::GetConnection().Queryf(count).rows.at(0).at(0));
}

struct NewPractice
{
    std::string path;
    std::string group; // that shares it; empty: its owner's alone
    bool sample = false;
    int clients = kSampleClients;
};

void FillSample(int clients, const CommonOptions& options)
{
    Progress progress(options, static_cast<std::size_t>(clients));
    FillSamplePractice(clients, [&] { progress.Next(); });
}

void Create(const NewPractice& wanted, const CommonOptions& options)
{
    using Creation = Cellar::CConnection::Create;
    const std::string& practice = wanted.path;
    const bool isShared = !wanted.group.empty();
    CheckPracticeText(practice);
    if (isShared && PracticePath(practice).empty())
        throw CommandError(Exit::BadInput, "BAD_ARGUMENTS", "--group: a practice on a server is no file",
                           "The server's administrator says who uses the database.");
    UseYear(options);
    NeedCiphers(); // before anything is made
    if (isShared)
        PrepareGroupFolder(PracticePath(practice), wanted.group);
    try {
        Quarry::SetConnection(
            Cellar::CConnection::Open(CString(practice), isShared ? Creation::ForGroup : Creation::IfMissing));
        RequireEmptyPlace(Quarry::GetConnection(), practice);
        // One transaction: killed half-way, the file holds nothing and the next creation succeeds.
        Quarry::CTransaction transaction(Cellar::Intent::Write); // whoever creates at the same time waits here ...
        RequireEmptyPlace(Quarry::GetConnection(), practice);    // ... and finds that it is done, with the other's key
        Shellkit::SetPracticeKey(
            MakeKey(practice, isShared ? Shellkit::KeyReaders::Group : Shellkit::KeyReaders::Owner));
        Brix::CreateSchema(Quarry::GetConnection());
        if (wanted.sample)
            FillSample(wanted.clients, options);
        else
            FillNewPractice();
        Brix::PutIdsBehindRows(Quarry::GetConnection()); // source types have numbers of their own
        transaction.Commit();
    } catch (const Cellar::DatabaseError& error) {
        throw FromDatabaseError(error);
    }
    const Json result{{"practice", PracticeName(practice)},
                      {"schema", Brix::kSchemaVersion},
                      {"clients", CountRows("SELECT COUNT(*) FROM [BRIXClient]")},
                      {"partnerships", CountRows("SELECT COUNT(*) FROM [BRIXPartnership]")}};
    if (options.json)
        PrintJson(result);
    else
        PrintLine("Made %s: %d clients, %d partnerships. Its key is in %s: keep the two together.",
                  PracticeName(practice), result["clients"].get<int>(), result["partnerships"].get<int>(),
                  KeyPath(practice));
}

std::vector<Brix::Fault> FaultsOf(const std::string& practice, const CommonOptions& options)
{
    try {
        const PracticeSession session(practice, options, Login::IfGiven, Key::Examined);
        std::vector<Brix::Fault> faults = Brix::CheckPractice(Quarry::GetConnection());
        if (session.GetKeyProblem())
            faults.insert(faults.begin(), {"", 0, session.GetKeyProblem()->what()});
        return faults;
    } catch (const CommandError& error) {
        if (error.code != kReadOnly)
            throw;
        return {{"", 0, error.what()}};
    }
}

Exit Check(const std::string& practice, const CommonOptions& options)
{
    const auto faults = FaultsOf(practice, options);
    if (options.json) {
        Json list = Json::array();
        for (const auto& fault : faults)
            list.push_back({{"table", fault.table}, {"id", fault.id}, {"fault", fault.fault}});
        PrintJson({{"ok", faults.empty()}, {"schema", Brix::kSchemaVersion}, {"faults", list}});
    } else if (faults.empty()) {
        PrintLine("%s: nothing wrong.", PracticeName(practice));
    } else {
        TextTable table({"Table", "Row", "Fault"});
        for (const auto& fault : faults)
            table.Add({fault.table, std::to_string(fault.id), fault.fault});
        table.Print();
    }
    return faults.empty() ? Exit::Done : Exit::Refused;
}

struct Option
{
    const char* name;
    int least, most;
    const char* meaning;
    int (*get)(const Brix::COptions&);
    void (*set)(Brix::COptions&, int);
};

constexpr Option kOptions[] = {
    {"nPAYEInterface", 0, 255, "1: fetch by the PAYE interface; otherwise by the individual interfaces",
     [](const Brix::COptions& o) { return int{o.GetPAYEInterface()}; },
     [](Brix::COptions& o, int v) { o.SetPAYEInterface(static_cast<short>(v)); }},
    {"nDebugLogging", 0, 9, "above 0: the HMRC log holds requests and answers, masked",
     [](const Brix::COptions& o) { return o.GetDebugLogging(); },
     [](Brix::COptions& o, int v) { o.SetDebugLogging(v); }},
    {"bHMRCRetrieval", 0, 1, "1: records may be fetched from HMRC",
     [](const Brix::COptions& o) { return o.GetHMRCRetrieval() ? 1 : 0; },
     [](Brix::COptions& o, int v) { o.SetHMRCRetrieval(v != 0); }},
    {"bCFStaff", 0, 1, "1: staff are carried forward with tracker tasks",
     [](const Brix::COptions& o) { return o.GetCFStaff() ? 1 : 0; },
     [](Brix::COptions& o, int v) { o.SetCFStaff(v != 0); }},
    {"nDateFormat", 0, 3, "0 DD/MM/YY, 1 MM/DD/YY, 2 DD MMM YYYY, 3 MMM DD YYYY",
     [](const Brix::COptions& o) { return o.GetDateFormat(); }, [](Brix::COptions& o, int v) { o.SetDateFormat(v); }},
    {"nHMRCLogDays", 0, 36500, "days that lines of the HMRC log are kept; 0: for ever",
     [](const Brix::COptions& o) { return o.GetHMRCLogDays(); }, [](Brix::COptions& o, int v) { o.SetHMRCLogDays(v); }},
};

void SetOption(Brix::COptions& record, const std::string& assignment)
{
    const std::size_t equals = assignment.find('=');
    const std::string name = assignment.substr(0, equals);
    for (const Option& option : kOptions) {
        if (CString(name).CompareNoCase(option.name) != 0)
            continue;
        std::string text = equals == std::string::npos ? "" : assignment.substr(equals + 1);
        if (option.most == 1 && (text == "true" || text == "false"))
            text = text == "true" ? "1" : "0";
        const auto value = Afx::ParseWhole<int>(text);
        if (!value || *value < option.least || *value > option.most)
            throw CommandError(Exit::BadInput, "BAD_VALUE",
                               std::string(option.name) + " takes a whole number from " + std::to_string(option.least) +
                                   " to " + std::to_string(option.most) + ", not " + Quoted(text),
                               std::string("Write ") + option.name + "=" + std::to_string(option.least) + ".");
        return option.set(record, *value);
    }
    throw CommandError(Exit::BadInput, "UNKNOWN_OPTION", "there is no option " + Quoted(name),
                       "morv practice options PRACTICE lists them.");
}

/// Those of a new practice where they have no row.
Brix::COptions OptionsOfPractice()
{
    Brix::COptions record;
    if (!record.Open())
        record.AddNew();
    return record;
}

Brix::COptions SaveOptions(const std::vector<std::string>& assignments)
{
    Quarry::CTransaction transaction(Cellar::Intent::Write);
    Quarry::GetConnection().ExecuteDirectf(
        "INSERT INTO [BRIXOptions] ([lID]) SELECT 1 WHERE NOT EXISTS (SELECT 1 FROM [BRIXOptions])");
    Brix::COptions record = OptionsOfPractice();
    for (const std::string& assignment : assignments)
        SetOption(record, assignment);
    record.Update();
    transaction.Commit();
    return record;
}

void Options(const std::string& practice, const std::vector<std::string>& assignments, const CommonOptions& options)
{
    const PracticeSession session(practice, options, Login::IfGiven);
    const Brix::COptions record = assignments.empty() ? OptionsOfPractice() : SaveOptions(assignments);
    Json result = Json::object();
    TextTable table({"Option", "Value", "Meaning"});
    for (const Option& option : kOptions) {
        const int value = option.get(record);
        result[option.name] = option.most == 1 ? Json(value != 0) : Json(value);
        table.Add({option.name, std::to_string(value), option.meaning});
    }
    if (options.json)
        PrintJson(result);
    else
        table.Print();
}

void MakeBackup(const std::string& practice, const std::string& file, const CommonOptions& options)
{
    CheckPracticeText(file);
    if (PracticePath(practice).empty())
        throw CommandError(Exit::Refused, "NO_BACKUP", "a practice on a server is backed up by the server's own tools",
                           "Ask its administrator for a backup, and keep a copy of the key file.");
    const PracticeSession session(practice, options, Login::IfGiven, Key::Examined);
    if (session.GetKeyProblem())
        std::fprintf(stderr, "morv: %s\n", Printable(session.GetKeyProblem()->what()).c_str());
    try {
        const std::int64_t pages = BackUp(Quarry::GetConnection(), file);
        if (options.json)
            PrintJson({{"practice", practice}, {"file", file}, {"pages", pages}, {"key", KeyPath(practice)}});
        else
            PrintLine("Backed up %s to %s: %ld pages. The key in %s belongs to it: keep a copy of that too.", practice,
                      file, static_cast<long>(pages), KeyPath(practice));
    } catch (const Cellar::DatabaseError& error) {
        throw FromDatabaseError(error);
    }
}

} // namespace

void AddPracticeCommands(CLI::App& app, Program& program)
{
    CLI::App* practice = app.add_subcommand("practice", "Make, check and set up practices")->require_subcommand(1);
    // Shared by the callbacks, which run after the parse.
    auto path = std::make_shared<std::string>();
    auto wanted = std::make_shared<NewPractice>();
    auto assignments = std::make_shared<std::vector<std::string>>();

    CLI::App* create = practice->add_subcommand("create", "Make a practice in a new file");
    create->add_option("practice", wanted->path, "Path of the new practice, or an empty database of a server")
        ->required()
        ->check(NoJournal());
    create->add_option("--group", wanted->group, "Group of this computer that shares the practice")->check(NotEmpty());
    CLI::Option* isSample = create->add_flag("--sample", wanted->sample, "With sample clients and users");
    create->add_option("--clients", wanted->clients, "Number of sample clients (12)")
        ->check(PlainNumber(1000000))
        ->needs(isSample);
    create->callback([=, &program] { Create(*wanted, program.options); });

    CLI::App* check = practice->add_subcommand("check", "Look for what does not fit together");
    check->add_option("practice", *path, "The practice")->required();
    check->callback([=, &program] { program.exit = Check(*path, program.options); });

    auto backupFile = std::make_shared<std::string>();
    CLI::App* backup = practice->add_subcommand("backup", "Copy a practice that is in use");
    backup->add_option("practice", *path, "The practice")->required();
    backup->add_option("file", *backupFile, "Path of the backup, a new file")
        ->required()
        ->check(NotEmpty())
        ->check(NoJournal());
    backup->callback([=, &program] { MakeBackup(*path, *backupFile, program.options); });

    auto copyTo = std::make_shared<std::string>();
    CLI::App* copy = practice->add_subcommand("copy", "Copy a practice into a new file or a server's empty database");
    copy->add_option("from", *path, "The practice")->required();
    copy->add_option("to", *copyTo, "Path or connection text of the new practice")
        ->required()
        ->check(NotEmpty())
        ->check(NoJournal());
    copy->callback([=, &program] { CopyPractice(*path, *copyTo, program.options); });

    CLI::App* options = practice->add_subcommand("options", "Show or set the practice's options");
    options->add_option("practice", *path, "The practice")->required();
    options->add_option("assignments", *assignments, "NAME=VALUE ...");
    options->callback([=, &program] { Options(*path, *assignments, program.options); });
}

} // namespace Morv
