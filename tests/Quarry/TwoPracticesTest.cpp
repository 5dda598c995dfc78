#include "Quarry/Listeners.h"
#include "Quarry/NewId.h"

#include "SmallPractice.h"

namespace
{

std::string g_told;

/// The current practice, and another beside it.
class TwoPractices : public SmallPractice
{
protected:
    void SetUp() override
    {
        other = OpenSmall("other.db");
        SmallPractice::SetUp();
        g_told.clear();
        Quarry::AddDataChangedListenerForInsert(77, "BRIX", [](const Quarry::DataChange&) { g_told += "here "; });
        Quarry::AddDataChangedListenerForInsert(77, "OTHER", [](const Quarry::DataChange& change) {
            g_told += "there " + std::to_string(change.newRow->GetLong(kID)) + " ";
        });
        here = Quarry::AddRollbackListener([] { g_told += "reload here "; });
        there = Quarry::AddRollbackListener([] { g_told += "reload there "; }, "OTHER");
    }
    void TearDown() override
    {
        Quarry::RemoveRollbackListener(here);
        Quarry::RemoveRollbackListener(there);
        SmallPractice::TearDown();
    }
    CDataList AddedThere() const
    {
        CDataList list(kTask);
        list.Use(*other);
        list.AddNew();
        list.Update();
        return list;
    }

    std::unique_ptr<Cellar::CConnection> other;
    int here = 0, there = 0;
};

ON_BOTH_DATABASES(TwoPractices);

TEST_P(TwoPractices, ListsAndIdsKeepToTheirConnection)
{
    Added({{kName, "here"}});
    CDataList list = AddedThere();
    EXPECT_EQ(list.GetID(), 1) << "each practice counts its own ids";
    {
        Quarry::CTransaction level(*other);
        Quarry::BeginTransaction();
        EXPECT_EQ(Quarry::NewId(kTask, *other), 2);
        EXPECT_EQ(Quarry::NewId(kTask), 2);
        Quarry::Rollback();
        EXPECT_EQ(Quarry::NewId(kTask, *other), 3) << "its block is not void";
        Save(list, {{kName, "there"}});
        level.Commit();
    }
    EXPECT_EQ(Count("FROM BRIXTask"), 1);
    EXPECT_TRUE(CDataList(kTask).Open(*other, {{kName, "there"}}));
    EXPECT_EQ(list.Count({{kName, "here"}}), 0);
    list.Delete();
    EXPECT_FALSE(list.Open()) << "still there";
    other.reset();
    EXPECT_THROW(list.Open(), Cellar::DatabaseError) << "and not here, although the other is closed";
}

TEST_P(TwoPractices, NoticesGoToTheirDatabase)
{
    AddedThere();
    other->ExecuteDirect("DELETE FROM BRIXTask");
    EXPECT_EQ(g_told, "") << "it has no name yet";
    Quarry::SetDatabase(*other, "OTHER");
    AddedThere();
    Added({});
    other->ExecuteDirect("DELETE FROM BRIXTask");
    {
        const Quarry::CIgnoreDirectSQL quiet(*other);
        other->ExecuteDirect("INSERT INTO BRIXTask (lID) VALUES (9)");
    }
    Sql("DELETE FROM BRIXTask");
    {
        const Quarry::CTransaction undone(*other);
    }
    EXPECT_EQ(g_told, "there 2 here reload there reload here reload there ");
    g_told.clear();
    Quarry::SetConnection(std::move(other));
    Added({});
    EXPECT_EQ(g_told, "reload here here ") << "the current connection is BRIX, whatever it was";
}

} // namespace
