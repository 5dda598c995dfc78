// Ids on a server that does not do as it should.

#ifdef CELLAR_ODBC_FAKE

#include <filesystem>

#include "SmallPractice.h"
#include "support/Case.h"

class ServerIds : public SmallPractice
{
protected:
    static const Quarry::Table& Task() { return kTask; }
};
INSTANTIATE_TEST_SUITE_P(Embedded, ServerIds, testing::Values(::Test::Database::Embedded));

TEST_P(ServerIds, AreRefusedWhenTheSequenceGivesNone)
{
    const ::Test::Case<const char*, bool> rows[] = {
        {"row 33\n", true, "a block"},
        {"", false, "no row"},
        {"row null\n", false, "no number"},
        {"row 0\n", false, "no id"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.why);
        const std::string library = ::Test::TempDir() + "/ODBC Driver for SQL Server.so";
        std::filesystem::remove(library);
        std::filesystem::create_symlink(CELLAR_ODBC_FAKE, library);
        const std::string script =
            ::Test::WriteFile("script", std::string("on SELECT NEXT VALUE FOR*\ncolumns n:int\n") + row.in);
        const auto connection = Cellar::CConnection::Open(("odbc:Driver=" + library + ";Script=" + script).c_str());
        long id = 0;
        std::string reason;
        try {
            id = Quarry::NewId(Task(), *connection);
        } catch (const Cellar::DatabaseError& error) {
            reason = error.GetReason();
        }
        EXPECT_EQ(id, row.out ? 33 : 0);
        EXPECT_EQ(reason.find("no number for a new row of BRIXTask") != std::string::npos, !row.out) << reason;
    }
}

#endif
