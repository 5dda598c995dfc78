// A practice that the first release made, opened by this one.

#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

#include "Brix/Check.h"
#include "NewPractice.h"
#include "support/SqliteTool.h"

namespace
{

using Brix::SchemaState;
using Cellar::CConnection;

class Upgrade : public testing::Test
{
protected:
    Upgrade() { ::Test::Execute(m_path, ::Test::ReadFile(BRIX_FIRST_RELEASE)); }
    ~Upgrade() override { Quarry::SetConnection(nullptr); }

    std::unique_ptr<CConnection> Open() const { return CConnection::Open(m_path.c_str()); }

    static std::string Schema(CConnection& connection)
    {
        std::string text;
        for (const auto& row : connection.Queryf("SELECT sql FROM sqlite_master ORDER BY name").rows)
            text += Cellar::ToText(row[0]).Str() + "\n";
        return text;
    }

    const std::string m_path = ::Test::TempDir() + "/old.db";
};

TEST_F(Upgrade, KeepsWhatThePracticeHolds)
{
    Quarry::SetConnection(Open());
    CConnection& practice = Quarry::GetConnection();
    ASSERT_EQ(Brix::ReadSchemaVersion(practice).version, 1);
    EXPECT_FALSE(Brix::CheckPractice(practice).empty());
    Brix::UpgradeSchema(practice);
    EXPECT_EQ(Brix::ReadSchemaVersion(practice).state, SchemaState::Current);
    EXPECT_EQ(Brix::CheckPractice(practice).size(), 0U);

    Brix::CClient client;
    EXPECT_TRUE(client.Open({{Brix::CClient::kName, "Tobias Penhallow"}}));
    Brix::CNewEmploy employment;
    ASSERT_TRUE(employment.Open());
    EXPECT_EQ(employment.GetPay(), Kiln::CAmt::FromPence(22'551'05));
    EXPECT_EQ(employment.GetP11D(), 1);
    employment.SetNotesAudit("asked for the P60");
    employment.Update();
    const auto text = [](const Cellar::SqlText& select) { return ::Test::Practice::Query(select); };
    EXPECT_EQ(text("SELECT nFeature, strUserID, dtLocked, ConnectionID FROM FeatureLocks"),
              "4|alice|2024-11-05 09:31:00.000|-");
    EXPECT_EQ(text("SELECT UserId, ConnectionID FROM MorvUserLocks"), "alice|7");
    EXPECT_EQ(text("SELECT bRequired, bComplete, DueDate FROM SourceTask"), "1|0|2019-01-31");
    EXPECT_EQ(text("SELECT strEvent FROM MTDLog"), "fetch");
    practice.Script(
        "INSERT INTO FeatureLocks (nFeature) VALUES (5); INSERT INTO BTaxUserLocks (UserId) VALUES ('ben')");
    EXPECT_EQ(text("SELECT COUNT(*) FROM FeatureLocks l, BTaxUserLocks u WHERE l.ConnectionID = u.ConnectionID AND "
                   "l.dtLocked IS NOT NULL"),
              "1")
        << "the defaults";
}

TEST_F(Upgrade, AddsToATableWithAnotherProgramsColumn)
{
    ::Test::Execute(m_path, "ALTER TABLE FeatureLocks ADD strTheirs TEXT DEFAULT 'theirs'");
    Quarry::SetConnection(Open());
    Brix::UpgradeSchema(Quarry::GetConnection());
    EXPECT_EQ(::Test::Practice::Query("SELECT strTheirs, ConnectionID FROM FeatureLocks"), "theirs|-");
}

/// Upgrades in a process of its own, which is killed as it begins its statement of this number. Whether it was.
bool KilledAt(const std::string& path, int number)
{
    const pid_t child = fork();
    if (child == 0) {
        const auto practice = CConnection::Open(path.c_str());
        int sent = 0;
        practice->OnSent([&](std::string_view) {
            if (++sent == number)
                raise(SIGKILL);
        });
        Brix::UpgradeSchema(*practice);
        _exit(0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFSIGNALED(status) || WEXITSTATUS(status) == 0);
    return WIFSIGNALED(status);
}

TEST_F(Upgrade, KilledAtAnyStatementLeavesTheOldPracticeWhole)
{
    const std::string old = Schema(*Open());
    int number = 1;
    for (; KilledAt(m_path, number); number += 7) {
        const auto practice = Open();
        ASSERT_EQ(Brix::ReadSchemaVersion(*practice).version, 1) << number;
        ASSERT_EQ(Schema(*practice), old) << number;
    }
    EXPECT_GT(number, 40);
    const auto practice = Open();
    EXPECT_EQ(Brix::ReadSchemaVersion(*practice).state, SchemaState::Current);
    EXPECT_EQ(Brix::CheckPractice(*practice).size(), 0U);
}

} // namespace
