#include "Quarry/Session.h"

#include <stdexcept>

#include "SmallPractice.h"

using Quarry::CTransaction;

namespace
{

class Session : public SmallPractice
{
protected:
    void SetUp() override
    {
        SmallPractice::SetUp();
        m_listener = Quarry::AddRollbackListener([this] { ++m_reloads; });
    }
    void TearDown() override
    {
        Quarry::RemoveRollbackListener(m_listener);
        SmallPractice::TearDown();
    }
    static void AddRow(long id)
    {
        const Quarry::CIgnoreDirectSQL quiet;
        Quarry::GetConnection().ExecuteDirectf("INSERT INTO BRIXTask (lID) VALUES (%ld)", id);
    }
    int m_reloads = 0;
    int m_listener = 0;
};

ON_BOTH_DATABASES(Session);

TEST_P(Session, RollsBackInUnwindingThoughAListenerThrows)
{
    const int listener = Quarry::AddRollbackListener([] { throw std::runtime_error("cache"); });
    testing::internal::CaptureStderr();
    try {
        CTransaction outer;
        AddRow(1);
        Quarry::BeginTransaction(); // left open
        AddRow(2);
        throw std::runtime_error("in between");
    } catch (const std::runtime_error&) {
    }
    EXPECT_NE(testing::internal::GetCapturedStderr().find("cache"), std::string::npos);
    Quarry::RemoveRollbackListener(listener);
    EXPECT_EQ(Quarry::GetTransactionLevel(), 0) << "with the level that was left open in it";
    EXPECT_EQ(Count("FROM BRIXTask"), 0);
    EXPECT_EQ(m_reloads, 1);
}

TEST_P(Session, OutlivesItsConnection)
{
    CTransaction transaction;
    Quarry::SetConnection(Open()); // the one before was closed with its level open
    Quarry::BeginTransaction();
    transaction.Rollback();
    EXPECT_EQ(Quarry::GetTransactionLevel(), 1) << "the level of the new connection is another's";
    Quarry::Rollback();
}

TEST_P(Session, EndsTheInnermostLevelOnly)
{
    CTransaction outer;
    {
        CTransaction inner;
        EXPECT_THROW(outer.Commit(), std::logic_error);
        inner.Commit();
        EXPECT_THROW(inner.Commit(), std::logic_error);
    }
    AddRow(1);
    {
        const CTransaction ended;
        AddRow(2);
    }
    EXPECT_EQ(m_reloads, 1);
    outer.Commit();
    EXPECT_EQ(m_reloads, 1) << "what was committed tells nobody";
    EXPECT_EQ(Count("FROM BRIXTask"), 1);
}

TEST_P(Session, ListenersComeAndGoDuringANotice)
{
    int second = 0, secondCalls = 0;
    const int first = Quarry::AddRollbackListener([&] { Quarry::RemoveRollbackListener(second); });
    second = Quarry::AddRollbackListener([&] { ++secondCalls; });
    Quarry::BeginTransaction();
    Quarry::Rollback();
    EXPECT_EQ(secondCalls, 0);
    Quarry::RemoveRollbackListener(first);
}

} // namespace
