#include "main-job/raw/Database.h"

#include <sqlite3.h>

#include <stdexcept>
#include <utility>

#include "main-job/raw/Records.h"

namespace Raw
{
namespace
{

constexpr int kIdsAtOnce = 32;

struct TableText
{
    const char *name, *columns;
    const char* row; // of one insert
};

constexpr TableText kTableTexts[kTables] = {
    {"BRIXMTD_TaxYear", "[lID], [lClientID], [nYear], [dtFetched], [dtComplete], [nVersion]", "(?, ?, ?, ?, ?, 0)"},
    {"BRIXMTD_Employments",
     "[lID], [strKey], [lMTD_TaxYearID], [strEmployerName], [strPAYEReference], [strWorksNumber], [dtStart], [dtEnd], "
     "[amtPay], [amtTax], [amtStudentLoan], [bWithdrawn], [bOffPayroll], [nDecision], [strDecided], [nVersion]",
     "(?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, 0)"},
    {"BRIXMTD_EmploymentsCompanyBenefits",
     "[lID], [lMTD_EmploymentsID], [nBenefitType], [strBenefitType], [amtAmount], [bForecast], [bWithdrawn], "
     "[nVersion]",
     "(?, ?, ?, ?, ?, ?, ?, 0)"},
    {"BRIXMTD_PensionStateBenefits",
     "[lID], [lMTD_TaxYearID], [nMTDType], [dtStart], [strReference], [strPayer], [amtAmount], [amtTax], [bWithdrawn], "
     "[strWorksNumber], [nDecision], [strDecided], [dtEnd], [nVersion]",
     "(?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, 0)"},
    {"BRIXMTD_TaxFreeAllowances",
     "[lID], [lMTD_TaxYearID], [strAllowanceType], [amtAmount], [nAllowanceType], [bWithdrawn], [nDecision], "
     "[strDecided], [nVersion]",
     "(?, ?, ?, ?, ?, ?, ?, ?, 0)"},
    {"BRIXTaxForm", "[lID], [lClientID], [nYear], [dtClientReview], [dtFinalised], [bDormant], [nVersion]",
     "(?, ?, ?, ?, ?, ?, 0)"},
    {"BRIXNewEmploy",
     "[lID], [lTaxFormID], [lClientID], [nYear], [strGUID], [nOrdering], [strEmployerName], [strPAYEReference], "
     "[strWorksNumber], [dtStart], [dtEnd], [amtPay], [amtTax], [amtStudentLoan], [bFromHMRC], [strNotesAudit], "
     "[strNotesReturn], [strNotesEstimate], [strNotesAvoidance], [strSchemeReference], [nSchemeYear], [bCompleted], "
     "[nP11D], [nVersion]",
     "(?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, 0)"},
    {"BRIXNewEmployBenefits", "[lID], [lNewEmployID], [nType], [amtBenefit], [bEstimate], [nVersion]",
     "(?, ?, ?, ?, ?, 0)"},
    {"BRIXPensionStateBenefits",
     "[lID], [lTaxFormID], [lClientID], [nYear], [nSection], [nType], [strDescription], [strReference], [strPayer], "
     "[dtStart], [amtAmount], [amtTax], [bEstimate], [strWorksNumber], [nOrdering], [bFromHMRC], [nVersion]",
     "(?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, 0)"},
};

constexpr char kOfTaxYear[] =
    " WHERE [lMTD_TaxYearID] IN (SELECT [lID] FROM [BRIXMTD_TaxYear] WHERE [lClientID] = ? AND [nYear] = ?)";
constexpr char kOfForm[] =
    " WHERE [lTaxFormID] IN (SELECT [lID] FROM [BRIXTaxForm] WHERE [lClientID] = ? AND [nYear] = ?)";
constexpr char kOfClient[] = " WHERE [lClientID] = ? AND [nYear] = ? ORDER BY [lID]";

std::string Select(Table table, const std::string& rest)
{
    const TableText& text = kTableTexts[table];
    return std::string("SELECT ") + text.columns + " FROM [" + text.name + ']' + rest;
}

std::string TextOf(Reading reading)
{
    switch (reading) {
    case kReadOptions:
        return "SELECT [lID], [nPAYEInterface], [nDebugLogging], [bHMRCRetrieval], [bCFStaff], [nDateFormat], "
               "[nHMRCLogDays], [nVersion] "
               "FROM [BRIXOptions] ORDER BY [lID]";
    case kReadTaxYears:
        return Select(kTaxYears, kOfClient);
    case kReadStagedEmployments:
        return Select(kStagedEmployments, kOfTaxYear + std::string(" ORDER BY [strKey], [lID]"));
    case kReadStagedBenefits:
        return Select(kStagedBenefits, " WHERE [lMTD_EmploymentsID] IN (SELECT [lID] FROM [BRIXMTD_Employments]" +
                                           std::string(kOfTaxYear) + ") ORDER BY [lID]");
    case kReadStagedPensions:
        return Select(kStagedPensions, kOfTaxYear + std::string(" ORDER BY [dtStart], [lID]"));
    case kReadForms:
        return Select(kForms, kOfClient);
    case kReadEmployments:
        return Select(kEmployments, kOfForm + std::string(" ORDER BY [nOrdering], [lID]"));
    case kReadBenefits:
        return Select(kBenefits, " WHERE [lNewEmployID] IN (SELECT [lID] FROM [BRIXNewEmploy]" + std::string(kOfForm) +
                                     ") ORDER BY [lID]");
    case kReadPensions:
        return Select(kPensions, kOfForm + std::string(" ORDER BY [nOrdering], [lID]"));
    default:
        return {};
    }
}

[[noreturn]] void Fail(const Database& database) { throw std::runtime_error(sqlite3_errmsg(database.connection)); }

/// The statement, prepared when it is first wanted.
sqlite3_stmt* Prepare(Database& database, sqlite3_stmt*& statement, const std::string& text)
{
    if (sqlite3_prepare_v3(database.connection, text.c_str(), -1, SQLITE_PREPARE_PERSISTENT, &statement, nullptr) !=
        SQLITE_OK)
        Fail(database);
    return statement;
}

int TellSent(unsigned, void* database, void*, void* text)
{
    static_cast<Database*>(database)->sent(static_cast<const char*>(text));
    return 0;
}

sqlite3_stmt* PrepareCounter(Database& database, sqlite3_stmt*& statement, Table table, bool isStart)
{
    const std::string largest = std::string("(SELECT MAX([lID]) FROM [") + kTableTexts[table].name + "])";
    return Prepare(database, statement,
                   isStart ? "INSERT INTO [BRIXNextID] ([strTable], [lNext]) SELECT ?, COALESCE(" + largest + ", 0) + ?"
                           : "UPDATE [BRIXNextID] SET [lNext] = CASE WHEN [lNext] < " + largest + " THEN " + largest +
                                 " + ? ELSE [lNext] + ? END WHERE [strTable] = ?");
}

void TakeIds(Database& database, Table table)
{
    auto& of = database.tables[table];
    const char* const name = kTableTexts[table].name;
    sqlite3_stmt* const up = of.countUp ? of.countUp : PrepareCounter(database, of.countUp, table, false);
    sqlite3_bind_int(up, 1, kIdsAtOnce);
    sqlite3_bind_int(up, 2, kIdsAtOnce);
    sqlite3_bind_text(up, 3, name, -1, SQLITE_STATIC);
    Finish(database, up);
    if (sqlite3_changes(database.connection) == 0) {
        sqlite3_stmt* const start =
            of.startCount ? of.startCount : PrepareCounter(database, of.startCount, table, true);
        sqlite3_bind_text(start, 1, name, -1, SQLITE_STATIC);
        sqlite3_bind_int(start, 2, kIdsAtOnce);
        Finish(database, start);
    }
    sqlite3_stmt* const count = database.readCount;
    sqlite3_bind_text(count, 1, name, -1, SQLITE_STATIC);
    if (!Next(database, count))
        Fail(database);
    of.nextId = static_cast<long>(sqlite3_column_int64(count, 0)) - kIdsAtOnce + 1;
    of.idsLeft = kIdsAtOnce;
    sqlite3_reset(count);
}

} // namespace

void Open(Database& database, const std::string& path)
{
    if (sqlite3_open_v2(path.c_str(), &database.connection, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr) !=
        SQLITE_OK)
        throw std::runtime_error("cannot open " + path);
    if (sqlite3_exec(database.connection,
                     "PRAGMA journal_mode = WAL; PRAGMA foreign_keys = ON; PRAGMA synchronous = FULL; "
                     "PRAGMA secure_delete = ON",
                     nullptr, nullptr, nullptr) != SQLITE_OK)
        Fail(database);
    Prepare(database, database.begin, "BEGIN IMMEDIATE");
    Prepare(database, database.commit, "COMMIT");
    Prepare(database, database.readCount, "SELECT [lNext] FROM [BRIXNextID] WHERE [strTable] = ?");
    for (int reading = 0; reading < kReadings; ++reading)
        Prepare(database, database.readings[reading], TextOf(static_cast<Reading>(reading)));
}

void Close(Database& database)
{
    while (sqlite3_stmt* const statement = sqlite3_next_stmt(database.connection, nullptr))
        sqlite3_finalize(statement);
    sqlite3_close(database.connection);
}

void OnSent(Database& database, std::function<void(const char*)> hook)
{
    database.sent = std::move(hook);
    sqlite3_trace_v2(database.connection, database.sent ? SQLITE_TRACE_STMT : 0u, database.sent ? &TellSent : nullptr,
                     &database);
}

void Begin(Database& database) { Finish(database, database.begin); }

void Commit(Database& database)
{
    Finish(database, database.commit);
    for (auto& table : database.tables)
        table.idsLeft = 0;
}

long NewId(Database& database, Table table)
{
    auto& of = database.tables[table];
    if (of.idsLeft == 0)
        TakeIds(database, table);
    --of.idsLeft;
    return of.nextId++;
}

sqlite3_stmt* Read(Database& database, Reading reading, long client, int year)
{
    sqlite3_stmt* const statement = database.readings[reading];
    if (reading != kReadOptions) {
        sqlite3_bind_int64(statement, 1, client);
        sqlite3_bind_int(statement, 2, year);
    }
    return statement;
}

bool Next(Database& database, sqlite3_stmt* statement)
{
    const int result = sqlite3_step(statement);
    if (result == SQLITE_ROW)
        return true;
    if (result != SQLITE_DONE)
        Fail(database);
    sqlite3_reset(statement);
    return false;
}

sqlite3_stmt* Insert(Database& database, Table table, int rows)
{
    sqlite3_stmt*& statement = database.tables[table].insert[rows];
    if (statement)
        return statement;
    const TableText& text = kTableTexts[table];
    std::string all = std::string("INSERT INTO [") + text.name + "] (" + text.columns + ") VALUES ";
    for (int row = 0; row < rows; ++row)
        all += (row > 0 ? ", " : "") + std::string(text.row);
    return Prepare(database, statement, all);
}

void Finish(Database& database, sqlite3_stmt* statement)
{
    if (Next(database, statement))
        Fail(database);
    sqlite3_clear_bindings(statement);
}

void BindText(sqlite3_stmt* statement, int place, const std::string& text)
{
    if (!text.empty())
        KeepText(statement, place, text);
}

void KeepText(sqlite3_stmt* statement, int place, const std::string& text)
{
    sqlite3_bind_text(statement, place, text.c_str(), static_cast<int>(text.size()), SQLITE_STATIC);
}

void BindAmount(sqlite3_stmt* statement, int place, std::int64_t amount)
{
    if (amount != kNoAmount)
        sqlite3_bind_int64(statement, place, amount);
}

void BindNumber(sqlite3_stmt* statement, int place, std::int64_t number)
{
    sqlite3_bind_int64(statement, place, number);
}

std::string TextAt(sqlite3_stmt* statement, int column)
{
    const auto* const text = reinterpret_cast<const char*>(sqlite3_column_text(statement, column));
    return text ? std::string(text, static_cast<std::size_t>(sqlite3_column_bytes(statement, column))) : std::string();
}

std::int64_t AmountAt(sqlite3_stmt* statement, int column)
{
    return sqlite3_column_type(statement, column) == SQLITE_NULL ? kNoAmount : sqlite3_column_int64(statement, column);
}

bool IsNullAt(sqlite3_stmt* statement, int column) { return sqlite3_column_type(statement, column) == SQLITE_NULL; }
std::int64_t NumberAt(sqlite3_stmt* statement, int column) { return sqlite3_column_int64(statement, column); }

} // namespace Raw
