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

TEST_P(DataList, AsksForNoOrderTwice)
{
    std::string sent;
    Sql("INSERT INTO BRIXTask (lID, nYear) VALUES (3, 2), (1, 2), (2, 3)");
    Quarry::GetConnection().OnSent([&](std::string_view statement) { sent = statement; });
    EXPECT_EQ(Opened({}, {{kID}, {kName}, {kID, true}}), (Ids{1, 2, 3}));
    EXPECT_EQ(sent.find(" DESC"), sent.npos) << "servers refuse it twice";
    Quarry::GetConnection().OnSent(nullptr);
    CDataList list(kTask);
    ASSERT_TRUE(list.Open({}, {{kYear, true}}, {.first = 2}));
    EXPECT_EQ(list.GetCount(), 2);
    EXPECT_EQ(list.GetID(), 2) << "the largest";
}

TEST_P(DataList, TakesRowsOfParentsThatFulfilConditions)
{
    Sql("INSERT INTO BRIXTask (lID, strName, lParentID) VALUES (1, 'Ann', 0), (2, 'ANN', 1), (3, 'Bob', 2), "
        "(4, NULL, 3)");
    using Quarry::Where;
    EXPECT_EQ(Opened({Where::In(kID, std::vector<long>())}), (Ids{})) << "one of none";
    EXPECT_EQ(Opened({Where::Under(kParentID, kTask, {{kName, "ann"}})}), (Ids{2, 3})) << "of the parent";
    EXPECT_EQ(Opened({Where::Under(kParentID, kTask, {Where::Under(kParentID, kTask, {{kName, "ann"}}), {kID, 3}})}),
              (Ids{4}))
        << "of the parent's parent";
    EXPECT_EQ(Opened({Where::UnderFirst(kParentID, kTask, {{kName, "ann"}})}), (Ids{2})) << "of the first parent";
    EXPECT_EQ(Opened({Where::UnderFirst(kParentID, kTask, {{kName, "eve"}})}), (Ids{})) << "of none";
    EXPECT_THROW(Where::In(kID, std::vector<long>(1001)), std::logic_error);
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

TEST_P(DataList, SavesManyRowsInFewStatements)
{
    static std::vector<long> told;
    told.clear();
    Quarry::AddDataChangedListenerForInsert(
        77, "BRIX", [](const Quarry::DataChange& change) { told.push_back(change.newRow->GetLong(kID)); });
    CDataList list = Added({});
    Quarry::CTransaction transaction(Cellar::Intent::Write);
    Quarry::ReserveIds(kTask, 400, Quarry::GetConnection());
    for (int i = 0; i < 400; ++i) {
        list.AddNew();
        list.Set(kYear, i);
    }
    int statements = 0;
    Quarry::GetConnection().OnSent([&](std::string_view sent) { statements += sent.starts_with("INSERT"); });
    list.UpdateAll();
    Quarry::GetConnection().OnSent(nullptr);
    EXPECT_LT(statements, 8);
    EXPECT_GT(statements, 1) << "servers take 2100 values in one";
    transaction.Commit();
    EXPECT_EQ(Count("FROM BRIXTask WHERE lID = nYear + 2"), 400) << "ids of one block";
    EXPECT_EQ(told.size(), 1U + 400);
    EXPECT_EQ(told.back(), 401);
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
    EXPECT_THROW(Quarry::NewId(kLink), std::logic_error) << "nor has it ids";
    {
        const Quarry::CTransaction sheet;
        const Cellar::CConnection::Aside aside(Quarry::GetConnection());
        EXPECT_THROW(list.AddNew(), std::logic_error) << "an id that the transaction knows nothing of";
    }
    list = Added({{kName, "a"}});
    EXPECT_THROW(list.Set(kID, list.GetID() + 1), std::logic_error) << "id of a saved row";
    EXPECT_TRUE(list.IsNull(50)) << "reading a gap is null";
}

#ifdef CELLAR_ODBC_FAKE
TEST_P(DataList, RefusesWhatAServersSequenceMayNotGive)
{
    const ::Test::Case<const char*, const char*> rows[] = {
        {"row 33\n", "33", "a block"},
        {"", "no number for a new row of BRIXTask", "no row"},
        {"row null\n", "no number for a new row of BRIXTask", "no number"},
        {"row 0\n", "no number for a new row of BRIXTask", "no id"},
    };
    for (const auto& row : rows) {
        const ::Test::ScriptedServer server(std::string("on SELECT NEXT VALUE FOR*\ncolumns n:int\n") + row.in);
        const auto connection = server.Open();
        std::string given;
        try {
            given = std::to_string(Quarry::NewId(kTask, *connection));
        } catch (const Cellar::DatabaseError& error) {
            given = error.GetReason();
        }
        EXPECT_NE(given.find(row.out), std::string::npos) << row.why << ": " << given;
    }
}
#endif

} // namespace
