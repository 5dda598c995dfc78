#include <optional>
#include <thread>
#include <vector>

#include "Story.h"

using Transaction = TwoConnections;
ON_BOTH_DATABASES(Transaction);

TEST_P(Transaction, LevelsKeepWhatTheyShould)
{
    // out: ids that are there for another connection afterwards
    for (const auto insert : {&Insert, &InsertLater})
        for (const auto& [in, out, why] : ::Test::Table<const char*, const char*>("Cellar/Transaction.tsv")) {
            SCOPED_TRACE(why);
            Take(*connection, in, insert);
            std::string ids;
            for (CBufferedRowList list(*other, "SELECT lID FROM Note ORDER BY lID"); !list.IsEOL(); list.MoveNext())
                ids += ToText(list.Get(0));
            EXPECT_EQ(ids, out);
            while (connection->GetLevel() > 0)
                connection->Rollback();
            connection->ExecuteDirect("DELETE FROM Note");
        }
}

TEST_P(Transaction, ContendingConnectionsAllGetThrough)
{
    connection->Script("CREATE TABLE Counter(nValue INTEGER); INSERT INTO Counter VALUES (0)");
    const auto countTo25 = [] {
        const auto own = OpenPractice();
        for (int n = 0; n < 25; ++n) {
            own->Begin();
            own->LockTable("Counter");
            const long value = CBufferedRowList(*own, "SELECT nValue FROM Counter").GetLong(0);
            own->ExecuteDirectf("UPDATE Counter SET nValue = %ld", value + 1);
            own->Commit();
        }
    };
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([&] { EXPECT_NO_THROW(countTo25()); });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(CBufferedRowList(*connection, "SELECT nValue FROM Counter").GetLong(0), 100);
}

/// Stories that hold for both databases, and those of one; "new" begins with a new one.
TEST_P(Transaction, StoriesGoAsTold)
{
    for (const char* const file : {"both", GetParam() == ::Test::Database::Server ? "server" : "embedded"}) {
        int number = 0;
        std::optional<Story> story;
        ::Test::ExpectTranscript(std::string("Cellar/stories/") + file + ".txt", [&](const std::string& act) {
            if (act != "new")
                return (*story)(act);
            const std::string name = file + std::to_string(++number) + ".db";
            story.emplace([name] { return ::Test::OpenDatabase(name); });
            DeclareNotes(*::Test::OpenDatabase(name));
            return std::string();
        });
    }
}
