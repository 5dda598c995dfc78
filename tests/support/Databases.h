#pragma once

// The databases that one set of test bodies runs on: the embedded one, and a server's.

#include <cstdlib>
#include <initializer_list>
#include <ostream>
#include <random>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "Cellar/Cellar.h"
#include "support/Test.h"

namespace Test
{

enum class Database
{
    Embedded,
    Server
};
inline void PrintTo(Database database, std::ostream* out)
{
    *out << (database == Database::Embedded ? "embedded" : "server");
}

/// What the running test's databases are, and those that it has made on the server.
struct Databases
{
    Database kind = Database::Embedded;
    std::vector<std::pair<std::string, std::string>> made; // name in the test, name on the server
};
inline Databases& TheDatabases()
{
    static Databases databases;
    return databases;
}
inline bool IsOnServer() { return TheDatabases().kind == Database::Server; }

/// The connection text of a database of the tests' server. Its beginning is in the file MORVUT_TEST_SERVER, which
/// tests/support/db-server writes; CTest starts it.
inline std::string OnServer(const std::string& database)
{
    const char* const file = std::getenv("MORVUT_TEST_SERVER");
    const std::string text = file ? ReadFile(file) : std::string();
    if (text.empty())
        throw std::runtime_error("there is no server to test with: run this by ctest or ./test");
    const std::string folder(file, std::string_view(file).rfind('/') + 1);
    setenv("ODBCSYSINI", folder.c_str(), 0); // the drivers without their logs, also for programs that the test starts
    return text + database;
}
inline void ExecuteOnServer(const std::string& statement)
{
    Cellar::CConnection::Open(OnServer("postgres"))->Script(statement);
}

/// Where the test's database of this name is; on a server it is made, as a copy of that database, the first time.
inline CString ConnectionTextOf(const std::string& name, const std::string& copyOf = "template1")
{
    if (!IsOnServer())
        return "sqlite:" + TempDir() + '/' + name;
    auto& made = TheDatabases().made;
    for (const auto& [known, database] : made)
        if (known == name)
            return OnServer(database);
    const std::string database = "t" + std::to_string(std::random_device{}());
    ExecuteOnServer("CREATE DATABASE " + database + " TEMPLATE " + copyOf);
    made.emplace_back(name, database);
    return OnServer(database);
}

/// The name on the server of the test's database of this name.
inline std::string NameOnServer(const std::string& name)
{
    ConnectionTextOf(name);
    for (const auto& [known, database] : TheDatabases().made)
        if (known == name)
            return database;
    return {};
}

/// A connection to the test's database of this name, which is made when it is not there.
inline std::unique_ptr<Cellar::CConnection> OpenDatabase(const std::string& name)
{
    return Cellar::CConnection::Open(ConnectionTextOf(name), Cellar::CConnection::Create::IfMissing);
}

/// What the database's own statements write for one pound.
inline std::int64_t UnitsOfAPound() { return IsOnServer() ? 1 : 10'000; }
/// `statements` with {12.50}, pounds and pence, as the database's own statements write it.
inline std::string WithAmounts(std::string statements)
{
    for (std::size_t at = 0; (at = statements.find('{', at)) != statements.npos;) {
        const std::size_t end = statements.find('}', at);
        std::string amount = statements.substr(at + 1, end - at - 1);
        if (!IsOnServer())
            amount = amount.erase(amount.find('.'), 1) + "00";
        statements.replace(at, end + 1 - at, amount);
    }
    return statements;
}

/// `statements` with {Int}, {Text}, ... as the database declares columns of these types, {Id} a key that counts up by
/// itself, {Session} the default of a column for the session's number.
inline void Declare(Cellar::CConnection& connection, std::string statements)
{
    using Cellar::ColumnType;
    const Cellar::Dialect& dialect = connection.GetDialect();
    for (const auto& [mark, type] : std::initializer_list<std::pair<const char*, ColumnType>>{
             {"{Int}", ColumnType::Int},
             {"{Small}", ColumnType::SmallInt},
             {"{Bit}", ColumnType::Bit},
             {"{Text}", ColumnType::Text},
             {"{Binary}", ColumnType::Binary},
             {"{Date}", ColumnType::Date},
             {"{DateTime}", ColumnType::DateTime},
             {"{Money}", ColumnType::Money},
             {"{Double}", ColumnType::Double},
         })
        statements = ReplacedAll(statements, mark, dialect.TypeName(type));
    statements =
        ReplacedAll(statements, "{Id}", dialect.TypeName(ColumnType::Int) + dialect.Identity() + " PRIMARY KEY");
    connection.Script(dialect.SchemaStart() + ReplacedAll(statements, "{Session}", dialect.Default("@@SPID")));
}

/// While it lives, what the event (such as "BEFORE INSERT") does to rows of the table that fulfil the condition is
/// refused, or goes along with a further statement.
class Trigger
{
public:
    Trigger(Cellar::CConnection& connection, const std::string& event, const std::string& table,
            const std::string& condition = "1 = 1", const std::string& statement = {})
        : m_connection(connection)
    {
        if (!IsOnServer()) {
            m_connection.Script("CREATE TRIGGER Planted " + event + " ON " + table + " WHEN " + condition + " BEGIN " +
                                (statement.empty() ? "SELECT RAISE(ABORT, 'full')" : statement) + "; END");
            m_drop = "DROP TRIGGER Planted";
            return;
        }
        m_connection.Script("CREATE FUNCTION Planted() RETURNS trigger LANGUAGE plpgsql AS $$ BEGIN IF " + condition +
                            " THEN " + (statement.empty() ? "RAISE EXCEPTION 'full'" : statement) +
                            "; END IF; RETURN COALESCE(NEW, OLD); END $$; CREATE TRIGGER Planted " + event + " ON " +
                            table + " FOR EACH ROW EXECUTE FUNCTION Planted()");
        m_drop = "DROP FUNCTION Planted CASCADE";
    }
    Trigger(const Trigger&) = delete;
    Trigger& operator=(const Trigger&) = delete;
    ~Trigger() { m_connection.Script(m_drop); }

private:
    Cellar::CConnection& m_connection;
    std::string m_drop;
};

/// The test's databases are of that kind while it lives.
class UseDatabase
{
public:
    explicit UseDatabase(Database kind) { TheDatabases().kind = kind; }
    UseDatabase(const UseDatabase&) = delete;
    UseDatabase& operator=(const UseDatabase&) = delete;
    ~UseDatabase()
    {
        for (const auto& [name, database] : std::exchange(TheDatabases().made, {}))
            ExecuteOnServer("DROP DATABASE " + database + " WITH (FORCE)");
        TheDatabases().kind = Database::Embedded;
    }
};

/// Base of fixtures whose bodies run on both; INSTANTIATE with ON_BOTH_DATABASES.
class OnDatabase : public testing::TestWithParam<Database>
{
    UseDatabase m_use{GetParam()};
};

} // namespace Test

#define ON_BOTH_DATABASES(Suite)                                                                                       \
    ON_EMBEDDED(Suite);                                                                                                \
    ON_SERVER(Suite)
#define ON_EMBEDDED(Suite) INSTANTIATE_TEST_SUITE_P(Embedded, Suite, testing::Values(::Test::Database::Embedded))
#ifdef MORVUT_HAS_TEST_SERVER
#define ON_SERVER(Suite) INSTANTIATE_TEST_SUITE_P(Server, Suite, testing::Values(::Test::Database::Server))
#else
#define ON_SERVER(Suite) GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(Suite)
#endif
