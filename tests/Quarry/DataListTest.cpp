#include "Quarry/DataCursor.h"
#include "Quarry/Listeners.h"
#include "Quarry/NewId.h"

#include "SmallPractice.h"

#ifdef CELLAR_ODBC_FAKE
#include "support/ScriptedServer.h"
#endif

namespace
{

class DataList : public SmallPractice
{
protected:
    using Ids = std::vector<long>;
    class CTask : public CDataList
    {
    public:
        CTask() noexcept : CDataList(kTask) {}
        static const Quarry::Table& Declaration() noexcept { return kTask; }
        CString GetName() const { return Current().GetText(kName); }
    };
    /// Of the rows in their order.
    static Ids Opened(std::initializer_list<Quarry::Where> where, std::initializer_list<Quarry::Sort> sort = {})
    {
        Ids ids;
        CDataList list(kTask);
        for (bool there = list.Open(where, sort); there; there = list.MoveNext())
            ids.push_back(list.GetID());
        return ids;
    }
};

ON_BOTH_DATABASES(DataList);

/// Columns that take any value, and ids that a row counts.
using EmbeddedDataList = DataList;
ON_EMBEDDED(EmbeddedDataList);

TEST_P(DataList, OrdersByWhatIsAskedThenByKey)
{
    Sql("INSERT INTO BRIXTask (lID, strName, nYear) VALUES (4, 'b', 1), (3, 'A', 2), (2, 'a', 1), (1, NULL, 2), "
        "(5, 'C', 1)");
    EXPECT_EQ(Opened({}), (Ids{1, 2, 3, 4, 5})) << "by key";
    EXPECT_EQ(Opened({}, {{kName}}), (Ids{1, 2, 3, 4, 5})) << "null first, no regard to case, ties by key";
    EXPECT_EQ(Opened({}, {{kName, true}}), (Ids{5, 4, 2, 3, 1})) << "descending, ties still by ascending key";
    EXPECT_EQ(Opened({}, {{kYear, true}, {kName}}), (Ids{1, 3, 2, 4, 5})) << "two columns";
    std::string sent;
    Quarry::GetConnection().OnSent([&](std::string_view statement) { sent = statement; });
    EXPECT_EQ(Opened({}, {{kID}, {kName}, {kID, true}}), (Ids{1, 2, 3, 4, 5})) << "named again";
    EXPECT_EQ(sent.find(" DESC"), sent.npos) << "servers refuse it twice";
    Quarry::GetConnection().OnSent(nullptr);
}

TEST_P(DataList, TakesRowsThatFulfilAllConditions)
{
    Sql("INSERT INTO BRIXTask (lID, strName, lParentID, dtDue, amtPay) VALUES (1, 'Ann', 7, '2024-04-05', %m), "
        "(2, 'ANN', 8, NULL, %m), (3, 'Bob''; --', 7, '2024-04-06', NULL), (4, NULL, NULL, NULL, NULL)",
        Kiln::CAmt(10000), Kiln::CAmt(20000));
    EXPECT_EQ(Opened({{kParentID, 7}, {kName, "ann"}}), (Ids{1})) << "texts have no case";
    EXPECT_EQ(Opened({{kName, "Bob'; --"}}), (Ids{3})) << "what a user typed is bound";
    EXPECT_EQ(Opened({{kParentID, nullptr}}), (Ids{4})) << "null";
    EXPECT_EQ(Opened({{kDue, nullptr}, {kParentID, 8}}), (Ids{2})) << "null and another";
    using Quarry::Where;
    EXPECT_EQ(Opened({Where::In(kID, {4, 1, 9}), {kYear, nullptr}}), (Ids{1, 4})) << "one of several";
    EXPECT_EQ(Opened({Where::In(kID, std::vector<long>())}), (Ids{})) << "one of none";
    Sql("UPDATE BRIXTask SET lParentID = lID - 1");
    EXPECT_EQ(Opened({Where::Under(kParentID, kTask, {{kName, "ann"}})}), (Ids{2, 3})) << "of the parent";
    EXPECT_EQ(Opened({Where::Under(kParentID, kTask, {Where::Under(kParentID, kTask, {{kName, "ann"}}), {kID, 3}})}),
              (Ids{4}))
        << "of the parent's parent";
    EXPECT_EQ(Opened({Where::UnderFirst(kParentID, kTask, {{kName, "ann"}})}), (Ids{2})) << "of the first parent";
    EXPECT_EQ(Opened({Where::UnderFirst(kParentID, kTask, {{kName, "eve"}})}), (Ids{})) << "of none";
    EXPECT_THROW(Where::In(kID, std::vector<long>(1001)), std::logic_error);
}

TEST_P(DataList, TakesRanges)
{
    Sql("INSERT INTO BRIXTask (lID, strName, dtDue, amtPay) VALUES (1, 'a', '2024-04-05', %m), "
        "(2, 'B', '2024-04-06', %m), (3, 'c', '2025-04-05', %m), (4, NULL, NULL, NULL)",
        Kiln::CAmt(10000), Kiln::CAmt(20000), Kiln::CAmt(30000));
    using Quarry::Where;
    const Kiln::CDate starts(2024, 4, 6), ends(2025, 4, 5);
    const ::Test::Case<Where, Ids> rows[] = {
        {Where::Less(kDue, starts), {1}, "below"},
        {Where::AtMost(kDue, starts), {1, 2}, "up to"},
        {Where::Greater(kDue, starts), {3}, "above"},
        {Where::AtLeast(kDue, starts), {2, 3}, "from"},
        {Where::Between(kDue, starts, ends), {2, 3}, "both ends included"},
        {Where::Between(kName, "A", "b"), {1, 2}, "texts have no case"},
        {Where::Less(kPay, Kiln::CAmt(20000)), {1}, "amounts"},
        {Where::AtLeast(kPay, nullptr), {}, "nothing compares with null"},
        {Where::NotNull(kPay), {1, 2, 3}, "not null"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Opened({row.in}), row.out) << row.why;
    CDataList list(kTask);
    EXPECT_EQ(list.Count({Where::AtLeast(kDue, starts), {kName, "b"}}), 1);
    EXPECT_EQ(list.Count(), 4);
    ASSERT_TRUE(list.Open({}, {{kPay, true}}, {.first = 2}));
    EXPECT_EQ(list.GetCount(), 2);
    EXPECT_EQ(list.GetID(), 3) << "the largest";
    list.Open({Where::AtLeast(kDue, starts)});
    list.AddNew();
    EXPECT_TRUE(list.IsNull(kDue)) << "a range leaves a choice";
}

TEST_P(DataList, IsWalkedOverByACursorToo)
{
    Sql("INSERT INTO BRIXTask (lID, strName, dtDue, amtPay) VALUES (1, 'a long name, which needs memory', NULL, %m), "
        "(2, 'b', '2024-04-05T00:00:00', NULL), (3, 'c', NULL, %m)",
        Kiln::CAmt(1), Kiln::CAmt(3));
    std::string names;
    for (Quarry::CCursor<CTask> task({Quarry::Where::AtLeast(kID, 1)}, {{kName, true}}); task.Next();)
        names += (task->GetName() + " " + task->Current().GetDate(kDue).FormatIso() + ";").Str();
    EXPECT_EQ(names, "c ;b 2024-04-05;a long name, which needs memory ;") << "in the form that a list gives values";

    Quarry::CDataCursor cursor(kTask, {{kName, "b"}}, {}, {.columns = {kDue}});
    EXPECT_THROW(cursor.GetLong(kID), std::logic_error) << "before the first row";
    ASSERT_TRUE(cursor.Next());
    EXPECT_EQ(cursor.GetDate(kDue), Kiln::CDate(2024, 4, 5));
    EXPECT_TRUE(cursor.IsNull(kID)) << "not chosen";
    EXPECT_FALSE(cursor.Next());
    EXPECT_THROW(cursor.GetLong(kID), std::logic_error) << "behind the last row";
}

TEST_P(DataList, ReadsChosenColumns)
{
    Sql("INSERT INTO BRIXTask (lID, strName, lParentID, nVersion) VALUES (1, 'a', 7, 5)");
    static std::string told;
    Quarry::AddDataChangedListenerForUpdate(77, "BRIX", [](const Quarry::DataChange& change) {
        told = change.oldRow->GetText(kName).Str() + std::to_string(change.oldRow->GetLong(kParentID)) + ">" +
               change.newRow->GetText(kName).Str() + std::to_string(change.newRow->GetLong(kParentID));
    });
    CDataList list(kTask);
    ASSERT_TRUE(list.Open({}, {}, {.columns = {kName}}));
    EXPECT_EQ(list.GetID(), 1);
    EXPECT_TRUE(list.IsNull(kParentID));
    EXPECT_THROW(list.Set(kParentID, 8), std::logic_error);
    EXPECT_THROW(list.CopyRow(), std::logic_error);
    Save(list, {{kName, "b"}});
    EXPECT_EQ(told, "a7>b7") << "listeners see whole rows";
    Save(list, {{kName, "c"}});
    EXPECT_EQ(Count("FROM BRIXTask WHERE strName = 'c' AND lParentID = 7 AND nVersion = 7"), 1);
    list.AddNew();
    Save(list, {{kParentID, 9}});
    EXPECT_EQ(Count("FROM BRIXTask"), 2);
}

TEST_P(DataList, SavesManyRowsAtOnceOrNone)
{
    static std::vector<long> told;
    told.clear();
    const auto hear = [](const Quarry::DataChange& change) { told.push_back(change.newRow->GetLong(kID)); };
    Quarry::AddDataChangedListenerForInsert(77, "BRIX", hear);
    Quarry::AddDataChangedListenerForUpdate(77, "BRIX", hear);
    CDataList list = Added({{kName, "old"}});
    const auto change = [&] {
        list.MoveFirst();
        list.Set(kName, "new");
    };
    {
        Quarry::CTransaction transaction(Cellar::Intent::Write);
        Quarry::ReserveIds(kTask, 400, Quarry::GetConnection());
        for (int i = 0; i < 400; ++i) {
            list.AddNew();
            list.Set(kYear, i);
        }
        change();
        Sql("UPDATE BRIXTask SET nVersion = nVersion + 1"); // another user
        EXPECT_THROW(list.UpdateAll(), Quarry::ChangedByAnotherUser);
        EXPECT_EQ(Count("FROM BRIXTask"), 1) << "nothing is saved";
        EXPECT_TRUE(list.IsDirty() && list.MoveTo(400) && list.IsNew()) << "nothing is forgotten";
        EXPECT_EQ(told, Ids{1});
        Sql("UPDATE BRIXTask SET nVersion = nVersion - 1");
        int statements = 0;
        Quarry::GetConnection().OnSent([&](std::string_view sent) { statements += sent.starts_with("INSERT"); });
        list.UpdateAll();
        Quarry::GetConnection().OnSent(nullptr);
        EXPECT_LT(statements, 8);
        EXPECT_GT(statements, 1) << "servers take 2100 values in one";
        transaction.Commit();
    }
    EXPECT_EQ(Count("FROM BRIXTask WHERE lID = nYear + 2"), 400) << "ids of one block";
    EXPECT_EQ(told.size(), 1U + 1 + 400);
    EXPECT_EQ(told.back(), 401);
    EXPECT_FALSE(list.IsDirty());
    change();
    list.Set(kName, "newer");
    list.UpdateAll();
    EXPECT_EQ(Count("FROM BRIXTask WHERE strName = 'newer' AND nVersion = 2"), 1);
    told.clear();
    list.Set(kName, "other");
    list.Set(kName, "newer");
    list.UpdateAll();
    EXPECT_EQ(told, Ids{}) << "of no change nobody is told";
}

TEST_P(EmbeddedDataList, ReadsRowsOfOtherPrograms)
{
    Sql("INSERT INTO BRIXTask (lID, strName, dtDue, dtSeen, nYear, amtPay, nVersion) "
        "VALUES (1, 12, '2024-04-05T00:00:00', '2024-04-05', '2024', 12.0, NULL), "
        "(2, NULL, NULL, NULL, 65549, NULL, NULL)");
    CDataList list(kTask);
    ASSERT_TRUE(list.Open());
    EXPECT_EQ(list.Current().GetText(kName), "12");
    EXPECT_EQ(list.Current().GetDate(kDue), Kiln::CDate(2024, 4, 5));
    EXPECT_EQ(list.Current().GetDateTime(kSeen).FormatIso(), "2024-04-05 00:00:00.000");
    EXPECT_EQ(list.Current().GetShort(kYear), 2024);
    EXPECT_EQ(list.Current().GetAmount(kPay), Kiln::CAmt(12));
    list.Set(kDue, Kiln::CDate(2024, 4, 5));
    list.Set(kSeen, COleDateTime(2024, 4, 5, 0, 0, 0));
    EXPECT_FALSE(list.IsDirty()) << "the same date in another spelling is no change";

    Save(list, {{kName, "changed"}}); // its version is null
    EXPECT_EQ(Count("FROM BRIXTask WHERE strName = 'changed' AND nVersion = 1"), 1);
    list.Delete();
    EXPECT_EQ(list.Current().GetShort(kYear), 0) << "not what is left of 65549 in 16 bits, as in any other result";
    EXPECT_EQ(Count("FROM BRIXTask"), 1);
}

TEST_P(DataList, WritesOnlyWhatChanged)
{
    CDataList list = Added({{kName, "before"}});
    Sql("UPDATE BRIXTask SET nYear = 2025"); // another program, which knows nothing of versions
    Save(list, {{kName, "middle"}});
    Save(list, {{kName, "after"}});
    EXPECT_EQ(Count("FROM BRIXTask WHERE strName = 'after' AND nYear = 2025 AND nVersion = 2"), 1);

    Save(list, {{kName, "after"}});
    Save(list, {{kName, "other"}, {kName, "after"}});
    EXPECT_FALSE(list.IsDirty());
    EXPECT_EQ(Count("FROM BRIXTask WHERE nVersion = 2"), 1) << "no change, no statement";

    Save(list, {{kPay, Kiln::CAmt(1)}});
    Save(list, {{kPay, Kiln::CAmt()}, {kName, nullptr}});
    EXPECT_EQ(Count("FROM BRIXTask WHERE amtPay IS NULL AND strName IS NULL"), 1);
}

TEST_P(DataList, RefusesARowThatAnotherUserChanged)
{
    const auto other = Open();
    for (const bool deletes : {false, true}) {
        SCOPED_TRACE(deletes);
        CDataList list = Added({{kName, "first"}});
        const long id = list.GetID();
        const auto act = [&] { deletes ? list.Delete() : Save(list, {{kName, "mine"}}); };
        other->ExecuteDirect("UPDATE BRIXTask SET strName = 'theirs', nVersion = nVersion + 1");
        EXPECT_THROW(act(), Quarry::ChangedByAnotherUser);
        EXPECT_EQ(list.GetID(), id);
        EXPECT_EQ(Count("FROM BRIXTask WHERE strName = 'theirs' AND nVersion = 1"), 1);
        other->ExecuteDirect("DELETE FROM BRIXTask");
        EXPECT_THROW(act(), Quarry::ChangedByAnotherUser) << "deleted meanwhile";
    }
}

TEST_P(DataList, NewRowsBelongToTheListAndAreForgottenUnsaved)
{
    Sql("INSERT INTO BRIXTask (lID, lParentID) VALUES (1, 7)");
    {
        CDataList list(kTask);
        list.Open({{kParentID, 7}, {kName, nullptr}});
        list.AddNew();
        EXPECT_EQ(list.GetPosition(), 1);
        EXPECT_EQ(list.Current().GetLong(kParentID), 7);
        Save(list, {{kParentID, 8}});
        list.AddNew();
        list.Set(kName, "never");
        EXPECT_TRUE(list.IsNew());
        list.AddNew();
        list.Delete();
        EXPECT_EQ(list.GetCount(), 3);
    }
    EXPECT_EQ(Count("FROM BRIXTask WHERE lParentID = 8"), 1);
    EXPECT_EQ(Count("FROM BRIXTask"), 2);
}

TEST_P(DataList, CopiesARow)
{
    CDataList list = Added({{kName, "original"}});
    Save(list, {{kPay, Kiln::CAmt(5)}});
    const long original = list.GetID();
    list.CopyRow();
    EXPECT_NE(list.GetID(), original);
    Save(list, {{kName, "copy"}});
    Save(list, {{kYear, 2024}}); // as a row of its own version
    EXPECT_EQ(Count("FROM BRIXTask WHERE amtPay = %m AND strName = 'copy' AND nYear = 2024", Kiln::CAmt(5)), 1);
    EXPECT_EQ(Count("FROM BRIXTask WHERE amtPay = %m AND strName = 'original' AND nYear IS NULL", Kiln::CAmt(5)), 1);
}

TEST_P(DataList, StandsOnTheNextRowAfterADelete)
{
    Sql("INSERT INTO BRIXTask (lID) VALUES (1), (2), (3)");
    CDataList list(kTask);
    list.Open();
    ASSERT_TRUE(list.MoveToId(2));
    list.Delete();
    EXPECT_EQ(list.GetID(), 3);
    list.Delete();
    EXPECT_TRUE(list.IsEOL());
    EXPECT_EQ(list.GetCount(), 1);
    EXPECT_FALSE(list.MoveNext());
    EXPECT_FALSE(list.MoveToId(3));
    EXPECT_FALSE(list.MoveTo(-1));
    EXPECT_TRUE(list.MoveTo(0));
}

TEST_P(DataList, RefusesWhatACallerMustNotDo)
{
    CDataList list(kTask);
    EXPECT_THROW(list.Current(), std::logic_error) << "no row";
    EXPECT_THROW(list.Set(kName, "x"), std::logic_error) << "no row";
    EXPECT_THROW(list.Update(), std::logic_error) << "no row";
    EXPECT_THROW(list.Delete(), std::logic_error) << "no row";
    EXPECT_THROW(list.Open({{50, 1}}), std::logic_error) << "ordinal in a gap";
    EXPECT_THROW(Quarry::Where::Under(kParentID, kLink, {}), std::logic_error) << "a parent without lID";
    {
        const Quarry::CTransaction sheet;
        const Cellar::CConnection::Aside aside(Quarry::GetConnection());
        EXPECT_THROW(list.AddNew(), std::logic_error) << "an id that the transaction knows nothing of";
    }
    list = Added({{kName, "a"}});
    EXPECT_THROW(list.Set(kID, list.GetID() + 1), std::logic_error) << "id of a saved row";
    EXPECT_TRUE(list.IsNull(50)) << "reading a gap is null";
}

TEST_P(DataList, TellsRowsApartByOtherKeys)
{
    CDataList list = Added({{0, 5}, {1, 19}}, kLink);
    list.CopyRow();
    Save(list, {{2, 3}, {3, true}});
    ASSERT_TRUE(list.Open({{0, 5}}));
    EXPECT_TRUE(list.IsNull(2)) << "null before 3";
    Save(list, {{3, true}});
    EXPECT_EQ(Count("FROM Link WHERE [default] = 1"), 2);
    list.Delete();
    EXPECT_EQ(Count("FROM Link WHERE TrackerID = 3"), 1);
    EXPECT_EQ(Count("FROM Link"), 1);
}

TEST_P(EmbeddedDataList, GivesIdsThatNobodyHas)
{
    EXPECT_EQ(Quarry::NewId(kTask), 1);
    EXPECT_EQ(Quarry::NewId(kTask), 2) << "although no row took 1";
    Sql("INSERT INTO BRIXTask (lID) VALUES (41)");
    EXPECT_EQ(Quarry::NewId(kTask), 42) << "another program's row";
    Sql("DELETE FROM BRIXTask");
    EXPECT_EQ(Quarry::NewId(kTask), 43) << "ids are not used again";
    EXPECT_THROW(Quarry::NewId(kLink), std::logic_error);
}

TEST_P(EmbeddedDataList, GivesIdsOfATransactionFromABlock)
{
    int statements = 0;
    Quarry::GetConnection().OnSent([&](std::string_view) { ++statements; });
    {
        Quarry::CTransaction transaction(Cellar::Intent::Write);
        EXPECT_EQ(Quarry::NewId(kTask), 1);
        statements = 0;
        EXPECT_EQ(Quarry::NewId(kTask), 2);
        EXPECT_EQ(statements, 0);
        {
            Quarry::CTransaction undone;
            EXPECT_EQ(Quarry::NewId(kTask), 3);
        }
        EXPECT_EQ(Quarry::NewId(kTask), 33) << "a rollback may have taken the counter's move with it";
        transaction.Commit();
    }
    EXPECT_EQ(Quarry::NewId(kTask), 65) << "what was left is forgotten";
    EXPECT_EQ(Quarry::NewId(kTask), 66) << "one by one outside a transaction";
    Quarry::GetConnection().OnSent(nullptr);

    for (int i = 0; i < 2; ++i) {
        Quarry::SetConnection(Open());
        Quarry::BeginTransaction();
        EXPECT_EQ(Quarry::NewId(kTask), 67) << "no block of another connection, whose move was undone";
    }
    Quarry::Rollback();
}

TEST_P(EmbeddedDataList, GivesTheLastIdsOneByOne)
{
    Sql("INSERT INTO BRIXTask (lID) VALUES (2147483645)");
    Quarry::CTransaction transaction(Cellar::Intent::Write);
    EXPECT_EQ(Quarry::NewId(kTask), 2147483646);
    EXPECT_EQ(Quarry::NewId(kTask), 2147483647);
    EXPECT_THROW(Quarry::NewId(kTask), Cellar::DatabaseError);
    transaction.Commit();
    EXPECT_EQ(Count("FROM BRIXNextID WHERE lNext = 2147483647"), 1) << "a refused take moves nothing";
}

#ifdef CELLAR_ODBC_FAKE
TEST_P(EmbeddedDataList, RefusesWhatAServersSequenceMayNotGive)
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
            id = Quarry::NewId(kTask, *connection);
        } catch (const Cellar::DatabaseError& error) {
            reason = error.GetReason();
        }
        EXPECT_EQ(id, row.out ? 33 : 0);
        EXPECT_EQ(reason.find("no number for a new row of BRIXTask") != std::string::npos, !row.out) << reason;
    }
}
#endif

TEST_P(DataList, GivesANewRowAnIdOfItsOwn)
{
    const long id = Added({{kParentID, 7}, {kYear, short{2024}}}).GetID();
    CDataList list(kTask);
    ASSERT_TRUE(list.Open({{kID, id}, {kYear, short{2024}}, Quarry::Where::In(kParentID, {7, 8})}));
    list.AddNew();
    EXPECT_NE(list.GetID(), id);
    EXPECT_EQ(list.Current().GetShort(kYear), 2024);
    EXPECT_TRUE(list.IsNull(kParentID)) << "two values leave a choice";
    EXPECT_NO_THROW(list.Update());
}

/// Ids that a sequence counts.
class ServerDataList : public DataList
{
protected:
    static void Move(long next) { Quarry::GetConnection().Queryf("SELECT setval('BRIXTask_ids', %ld, false)", next); }
};
ON_SERVER(ServerDataList);

TEST_P(ServerDataList, GivesIdsOfBlocksThatEachSessionHasForItself)
{
    const auto other = Open();
    EXPECT_EQ(Quarry::NewId(kTask), 1);
    EXPECT_EQ(Quarry::NewId(kTask, *other), 33);
    int statements = 0;
    Quarry::GetConnection().OnSent([&](std::string_view) { ++statements; });
    {
        const Quarry::CTransaction undone;
        EXPECT_EQ(Quarry::NewId(kTask), 2);
    }
    EXPECT_EQ(Quarry::NewId(kTask), 3) << "no rollback takes the block back, or makes it anybody else's";
    EXPECT_EQ(statements, 0);
    {
        const Quarry::CTransaction level;
        Quarry::ReserveIds(kTask, 100, Quarry::GetConnection());
        EXPECT_EQ(statements, 1);
        EXPECT_EQ(Quarry::NewId(kTask, *other), 34) << "neither waits";
        for (int i = 0; i < 29; ++i)
            Quarry::NewId(kTask);
        EXPECT_EQ(Quarry::NewId(kTask), 65) << "behind the other's block";
        for (int i = 1; i < 71; ++i)
            EXPECT_EQ(Quarry::NewId(kTask), 65 + i);
        EXPECT_EQ(statements, 1);
        for (int i = 0; i < 25 + 4 * 32; ++i) // those left, and four blocks as it has used up four
            Quarry::NewId(kTask);
        EXPECT_EQ(statements, 2);
    }
    Quarry::GetConnection().OnSent(nullptr);
    EXPECT_THROW(Quarry::NewId(kLink), std::logic_error);
    Quarry::SetConnection(Open());
    Move(2147483646);
    EXPECT_EQ(Quarry::NewId(kTask), 2147483646);
    EXPECT_EQ(Quarry::NewId(kTask), 2147483647);
    EXPECT_THROW(Quarry::NewId(kTask), Cellar::DatabaseError);
}

} // namespace
