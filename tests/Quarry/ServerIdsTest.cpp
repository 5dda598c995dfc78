// Ids on a server that does not do as it should.

#ifdef CELLAR_ODBC_FAKE

#include "SmallPractice.h"
#include "support/ScriptedServer.h"

class ServerIds : public SmallPractice
{
protected:
    static const Quarry::Table& Task() { return kTask; }
};
ON_EMBEDDED(ServerIds);

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
        const ::Test::ScriptedServer server(std::string("on SELECT NEXT VALUE FOR*\ncolumns n:int\n") + row.in);
        const auto connection = server.Open();
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
