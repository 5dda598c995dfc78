#include "Cellar/drivers/odbc/ServerRules.h"

namespace Cellar::Odbc
{
namespace
{

/// Writers of one subject keep out each other and who locks the whole practice, and nobody else. The server's own locks
/// of that kind are numbers: "MU", the table, the row.
std::uint64_t LockNumber(const Subject& subject) noexcept
{
    constexpr std::uint64_t kOurs = 0x4D55;
    return kOurs << 48 | std::uint64_t{static_cast<std::uint16_t>(subject.table)} << 32 |
           static_cast<std::uint32_t>(subject.id);
}

std::string PostgresLock(const Subject& subject)
{
    const std::string practice = std::to_string(LockNumber({}));
    if (subject.IsPractice())
        return "SELECT pg_advisory_xact_lock(" + practice + ")";
    return "SELECT pg_advisory_xact_lock_shared(" + practice + "), pg_advisory_xact_lock(" +
           std::to_string(LockNumber(subject)) + ")";
}

std::string SqlServerLock(const Subject& subject)
{
    const auto take = [](const Subject& each, const char* mode) {
        return "IF @r >= 0 EXEC @r = sp_getapplock @Resource = 'MorvUt " + std::to_string(LockNumber(each)) +
               "', @LockMode = '" + mode + "', @LockOwner = 'Transaction', @LockTimeout = @@LOCK_TIMEOUT; ";
    };
    return "DECLARE @r int = 0; " +
           (subject.IsPractice() ? take({}, "Exclusive") : take({}, "Shared") + take(subject, "Exclusive")) +
           "IF @r < 0 RAISERROR('lock request time out', 16, 1)";
}

constexpr ServerRules kServers[] = {
    {
        .product = "PostgreSQL",
        .dialect = PostgresDialect,
        // Levels are savepoints of our own (Protocol); neither log of the driver may hold values.
        .settings = "Protocol=7.4-0;UseServerSidePrepare=1;UseDeclareFetch=0;BoolsAsChar=0;ByteaAsLongVarBinary=1;"
                    "LFConversion=0;Parse=0;Debug=0;CommLog=0;",
        .begin = "BEGIN",
        .beginMoment = "BEGIN ISOLATION LEVEL REPEATABLE READ READ ONLY",
        .commit = "COMMIT",
        .rollback = "ROLLBACK",
        .savepoint = "SAVEPOINT ",
        .release = "RELEASE SAVEPOINT ",
        .rollbackTo = "ROLLBACK TO SAVEPOINT ",
        .session = "SELECT pg_backend_pid()",
        .waitFor = [](unsigned milliseconds) { return "SET lock_timeout = " + std::to_string(milliseconds); },
        .lock = PostgresLock,
        .failureEndsTransaction = true,
        .transactions = nullptr,
        .unlessThere = " ON CONFLICT DO NOTHING",
        .declaresCursors = true,
    },
    {
        .product = "Microsoft SQL Server",
        .dialect = SqlServerDialect,
        // With several results at once (MARS) a transaction ends with the batch that began it.
        .settings = "MARS_Connection=No;",
        .begin = "BEGIN TRANSACTION",
        // The database must allow it (ALLOW_SNAPSHOT_ISOLATION); the level is back with the next pooled use.
        .beginMoment = "SET TRANSACTION ISOLATION LEVEL SNAPSHOT; BEGIN TRANSACTION",
        .commit = "COMMIT TRANSACTION",
        .rollback = "ROLLBACK TRANSACTION",
        .savepoint = "SAVE TRANSACTION ",
        .release = nullptr,
        .rollbackTo = "ROLLBACK TRANSACTION ",
        .session = "SELECT @@SPID",
        .waitFor = [](unsigned milliseconds) { return "SET LOCK_TIMEOUT " + std::to_string(milliseconds); },
        .lock = SqlServerLock,
        .failureEndsTransaction = false,
        .transactions = "SELECT @@TRANCOUNT",
        .unlessThere = nullptr,
        .declaresCursors = false,
    },
};

} // namespace

const ServerRules* FindServer(std::string_view product) noexcept
{
    for (const ServerRules& server : kServers)
        if (server.product == product)
            return &server;
    return nullptr;
}

const char* SettingsFor(const ServerText& text)
{
    return text.IsForSqlServer() ? kServers[1].settings : kServers[0].settings;
}

} // namespace Cellar::Odbc
