#include <thread>
#include <vector>

#include "CellarTestSupport.h"

using Transaction = TwoConnections;
ON_BOTH_DATABASES(Transaction);

/// What servers do otherwise.
using EmbeddedTransaction = Transaction;
ON_EMBEDDED(EmbeddedTransaction);

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

TEST_P(Transaction, HoldsNoLockBeforeTheFirstWrite)
{
    connection->Begin();
    EXPECT_EQ(Count(*connection), 0);
    Insert(*other, 1); // another may write meanwhile
    EXPECT_EQ(Count(*connection), 1);
    Insert(*connection, 2);
    EXPECT_EQ(ErrorOf([&] { Insert(*connection, 2); }).GetCategory(), Category::DuplicateKey);
    Insert(*connection, 3); // a refused row leaves the transaction alive
    connection->Commit();
    EXPECT_EQ(Count(*other), 3);
}

TEST_P(Transaction, RowsThatWaitAreSeenByWhatComesNextAndToldOfThere)
{
    CTransaction outer(*connection, Intent::Write);
    std::vector<std::string> sent;
    connection->OnSent([&](std::string_view statement) { sent.emplace_back(statement); });
    Take(*connection, "123", &InsertLater);
    EXPECT_TRUE(connection->HasUnsavedWrites());
    EXPECT_EQ(Count(*connection), 3);
    EXPECT_EQ(sent.size(), connection->GetDialect().SendsTogether() ? 2u : 4u);
    connection->OnSent({});

    CTransaction inner(*connection);
    bool wasTold = false;
    try {
        Take(*connection, "423", &InsertLater);
        Count(*connection);
    } catch (const DatabaseError& error) {
        wasTold = error.GetCategory() == Category::DuplicateKey;
        EXPECT_NE(error.GetStatement().find("INSERT"), std::string::npos);
    }
    EXPECT_TRUE(wasTold);
    inner.Rollback();
    EXPECT_THROW(connection->ExecuteLater(kInsertNote, {}), DatabaseError) << "values are checked at once";
    InsertLater(*connection, 5);
    outer.Commit();
    EXPECT_EQ(Count(*other), 4);
}

TEST_P(Transaction, TheIntentToWriteLocksBeforeAnythingIsRead)
{
    {
        CTransaction transaction(*connection, Intent::Write);
        EXPECT_TRUE(connection->HasBegun());
        EXPECT_FALSE(connection->HasUnsavedWrites());
        EXPECT_EQ(ErrorOf([&] { CTransaction(*other, Intent::Write); }).GetCategory(), Category::Busy);
        EXPECT_EQ(other->GetLevel(), 0);
        CTransaction inner(*connection, Intent::Write);
        Insert(*connection, 1);
        inner.Commit();
        transaction.Commit();
    }
    EXPECT_EQ(Count(*other), 1);
    connection->Begin(); // a level that waits is made to begin by one inside it
    CTransaction inner(*connection, Intent::Write);
    EXPECT_EQ(ErrorOf([&] { CTransaction(*other, Intent::Write); }).GetCategory(), Category::Busy);
    inner.Rollback();
    connection->Rollback();
    Insert(*other, 2);
}

TEST_P(Transaction, StatementsStandAsideUntilItHasBegun)
{
    Take(*connection, "BB");
    {
        const CConnection::Aside aside(*connection);
        Insert(*connection, 1);
        EXPECT_EQ(Count(*other), 1) << "seen at once";
        EXPECT_THROW(connection->Begin(), std::logic_error);
        EXPECT_THROW(connection->LockTable("Note"), std::logic_error);
    }
    EXPECT_FALSE(connection->HasUnsavedWrites());
    Insert(*connection, 2);
    EXPECT_THROW(CConnection::Aside{*connection}, std::logic_error);
    connection->Rollback();
    EXPECT_THROW(CConnection::Aside{*connection}, std::logic_error) << "the outer level has begun, too";
    connection->Rollback();
    EXPECT_EQ(Count(*connection), 1) << "no rollback takes it";
    EXPECT_NO_THROW(CConnection::Aside{*connection});
}

TEST_P(EmbeddedTransaction, ABusyFirstWriteCanBeTriedAgain)
{
    Take(*other, "B1");
    connection->SetBusyTimeout(1);
    Take(*connection, "BB");
    const DatabaseError error = ErrorOf([&] { Insert(*connection, 2); });
    EXPECT_EQ(error.GetCategory(), Category::Busy);
    EXPECT_EQ(error.GetCode(), "5");
    EXPECT_EQ(connection->GetLevel(), 2);
    EXPECT_FALSE(connection->HasUnsavedWrites());

    other->Commit();
    Take(*connection, "2CC");
    EXPECT_EQ(Count(*other), 2);
}

/// ON CONFLICT ROLLBACK ends the engine's transaction in the midst of a statement, as a full disk does.
TEST_P(EmbeddedTransaction, NothingIsSavedOnLevelsThatTheEngineEnded)
{
    Take(*connection, "BB1");
    connection->Script("CREATE TABLE Strict(lID INTEGER PRIMARY KEY ON CONFLICT ROLLBACK)");
    connection->ExecuteDirect("INSERT INTO Strict VALUES (1)");
    EXPECT_EQ(ErrorOf([&] { connection->ExecuteDirect("INSERT INTO Strict VALUES (1)"); }).GetCategory(),
              Category::DuplicateKey);
    EXPECT_FALSE(connection->HasUnsavedWrites());
    EXPECT_EQ(Count(*connection), 0);

    EXPECT_EQ(ErrorOf([&] { Insert(*connection, 2); }).GetCategory(), Category::Other);
    EXPECT_EQ(ErrorOf([&] { connection->Commit(); }).GetCategory(), Category::Other);
    connection->Rollback();
    ErrorOf([&] { connection->Commit(); }); // the outer level has lost its rows, too
    connection->Rollback();
    EXPECT_EQ(connection->GetLevel(), 0);
    Insert(*connection, 3);
    EXPECT_EQ(Count(*other), 1);
}

/// As after an I/O error: the engine cannot undo the savepoint, and stays in its transaction.
TEST_P(EmbeddedTransaction, EndsAlthoughASavepointCouldNotBeUndone)
{
    int notices = 0;
    connection->OnRollback([&] { ++notices; });
    for (const int level : {2, 1}) {
        notices = 0;
        Take(*connection, "BB1");
        connection->Script("RELEASE level2");
        EXPECT_NE(ErrorOf([&] { connection->RollbackTo(level); }).GetReason(), "");
        EXPECT_EQ(notices, 1) << "caches reload all the same";
        connection->Rollback();
        EXPECT_EQ(Count(*connection), 0);
        other->ExecuteDirect("DELETE FROM Note"); // not refused as busy
    }
}

TEST_P(EmbeddedTransaction, AFullDiskLosesNothingThatWasSaved)
{
    Insert(*connection, 1);
    CBufferedRowList(*connection, "PRAGMA max_page_count = 4");
    Take(*connection, "B2");
    const DatabaseError error = ErrorOf([&] {
        for (long id = 3; id < 100; ++id)
            connection->ExecuteDirectf("INSERT INTO Note (lID, strText) VALUES (%ld, %s)", id, std::string(4000, 'x'));
    });
    EXPECT_EQ(error.GetCategory(), Category::ReadOnly);
    connection->Rollback();
    EXPECT_EQ(Count(*connection), 1);
    EXPECT_EQ(connection->GetLevel(), 0);
}

TEST_P(Transaction, ATableIsLockedWithinALevelOnly)
{
    EXPECT_EQ(ErrorOf([&] { connection->LockTable("Note"); }).GetCategory(), Category::Other);
    connection->Begin();
    connection->LockTable("Note");
    EXPECT_EQ(ErrorOf([&] { Insert(*other, 1); }).GetCategory(), Category::Busy);
    connection->Rollback();
    Insert(*other, 1);
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
