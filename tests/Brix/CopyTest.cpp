#include "Brix/Copy.h"
#include "Brix/PracticeKey.h"

#include <algorithm>
#include <limits>

#include "NewPractice.h"
#include "Shellkit/Envelope.h"
#include "Shellkit/PracticeKey.h"

using Brix::CopyPractice;
using Cellar::DatabaseError;
using Test::Practice;

namespace
{

const std::vector<std::uint8_t> kOldKey(Shellkit::kKeySize, 1), kNewKey(Shellkit::kKeySize, 2);

/// A practice with everything that a column may hold, and another database for its copy.
class CopyOfPractice : public NewPractice
{
protected:
    void SetUp() override
    {
        const auto token = Shellkit::SealWith(kOldKey, Shellkit::AsBytes("a token"));
        const auto foreign = Shellkit::SealWith(kNewKey, Shellkit::AsBytes("of nobody here"));
        Cellar::CConnection& practice = Quarry::GetConnection();
        for (const std::string& text : Texts())
            practice.ExecuteDirectf("INSERT INTO [BRIXClient] ([lID], [strName], [nVersion]) VALUES (%ld, %s, 7)",
                                    ++m_clients, text);
        practice.ExecuteDirectf("INSERT INTO [BRIXClient] ([lID]) VALUES (%ld)", std::numeric_limits<int>::max());
        const auto kLeast = std::numeric_limits<std::int64_t>::min(), kMost = std::numeric_limits<std::int64_t>::max();
        for (const std::int64_t amount : {kLeast, std::int64_t{-1}, std::int64_t{0}, kMost})
            practice.ExecuteDirectf("INSERT INTO [BRIXNewEmploy] ([lTaxFormID], [lClientID], [nYear], [amtPay]) VALUES "
                                    "(1, 1, 2018, %m)",
                                    Kiln::CAmt(amount));
        practice.ExecuteDirectf("INSERT INTO [MTDAuthorisation] ([lID], [strGatewayID], [vbAccessToken], "
                                "[vbRefreshToken], [dtGranted]) VALUES (3, 'G', %b, %b, '2024-02-29 23:59:59.999')",
                                *token, *foreign);
        practice.ExecuteDirectf("INSERT INTO [SourceDefaultTask] ([SourceTypeID], [TypeID]) VALUES (1, 19)");
        practice.ExecuteDirectf("INSERT INTO [FeatureLocks] ([nFeature], [strUserID]) VALUES (5, 'ann')");
        m_copy = Practice::Open("copy.db");
    }

    static std::vector<std::string> Texts()
    {
        return {"O'Neill; DROP TABLE [BRIXClient]--",
                "100%s /* */ \"q\" [b]",
                "\xF0\x9F\x98\x80 \xC3\xA9\xE2\x80\xAE",
                std::string(10'000, 'x'),
                "",
                " both ends ",
                "tab\tline\nend"};
    }

    Brix::Copied CopyTo(Cellar::CConnection& to, const Brix::CopyProgress& progress = {})
    {
        return CopyPractice({Quarry::GetConnection(), kOldKey}, {to, kNewKey}, progress);
    }

    /// What the copy is refused with.
    std::string Refusal(Cellar::CConnection& to, const Brix::CopyProgress& progress = {})
    {
        try {
            CopyTo(to, progress);
        } catch (const DatabaseError& error) {
            return error.GetReason();
        }
        return "";
    }

    long m_clients = 0;
    std::unique_ptr<Cellar::CConnection> m_copy;
};

ON_BOTH_DATABASES(CopyOfPractice);

/// Columns that take any value.
using CopyOfEmbedded = CopyOfPractice;
ON_EMBEDDED(CopyOfEmbedded);

TEST_P(CopyOfPractice, IsEqualRowByRowAndBackAgain)
{
    std::int64_t last = 0;
    const Brix::Copied copied = CopyTo(*m_copy, [&](std::int64_t done, std::int64_t all) {
        last = done == all ? done : 0;
        return true;
    });
    EXPECT_EQ(copied.rows, m_clients + 1 + 4 + 1 + 1);
    EXPECT_EQ(copied.tables, 4);
    EXPECT_EQ(last, 2 * copied.rows) << "progress ends at its end";
    EXPECT_EQ(copied.resealed, 1);
    EXPECT_EQ(copied.unopened, 1) << "under a key that nobody has";
    const auto tokens = m_copy->Queryf("SELECT [vbAccessToken], [vbRefreshToken] FROM [MTDAuthorisation]");
    const auto token = Shellkit::OpenWith(kNewKey, Cellar::ToBytes(tokens.rows.at(0).at(0)));
    EXPECT_TRUE(token && std::ranges::equal(*token, Shellkit::AsBytes("a token")));
    EXPECT_TRUE(m_copy->Queryf("SELECT * FROM [FeatureLocks]").rows.empty()) << "a lock is a session's";
    Shellkit::SetPracticeKey(kNewKey);
    EXPECT_TRUE(Brix::IsPracticeKey(*m_copy, Brix::ReadSchemaVersion(*m_copy)));
    Shellkit::SetPracticeKey({});

    const auto back = Practice::Open("back.db");
    EXPECT_EQ(CopyPractice({*m_copy, kNewKey}, {*back, kOldKey}, {}).rows, copied.rows);
    const auto name = back->Queryf("SELECT [strName], [nVersion] FROM [BRIXClient] ORDER BY [lID]");
    for (std::size_t i = 0; i < Texts().size(); ++i)
        EXPECT_EQ(name.rows.at(i).at(0), Cellar::Value(Texts()[i]));
    EXPECT_EQ(name.rows.at(0).at(1), Cellar::Value(7)) << "who has the row open sees no change";
}

TEST_P(CopyOfPractice, GoesOnFromTheIdsGivenOut)
{
    Quarry::GetConnection().ExecuteDirectf("DELETE FROM [BRIXClient] WHERE [lID] > 3");
    long last = 0;
    for (int given = 0; given < 40; ++given) // more than a block
        last = Quarry::NewId(Brix::CClient::Declaration());
    CopyTo(*m_copy);
    const auto file = Cellar::CConnection::Open(CString(::Test::TempDir() + "/file.db"), Cellar::Create::IfMissing);
    CopyPractice({*m_copy, kNewKey}, {*file, kOldKey}, {});
    const auto back = Practice::Open("back.db");
    CopyPractice({*file, kOldKey}, {*back, kNewKey}, {});
    for (Cellar::CConnection* const copy : {m_copy.get(), file.get(), back.get()})
        EXPECT_GT(Quarry::NewId(Brix::CClient::Declaration(), *copy), last) << copy->GetConnectionText();
}

TEST_P(CopyOfPractice, LeavesNothingWhenItIsRefused)
{
    EXPECT_NE(Refusal(*m_copy, [](std::int64_t done, std::int64_t) { return done < 9; }).find("given up"),
              std::string::npos);
    EXPECT_EQ(Brix::ReadSchemaVersion(*m_copy).state, Brix::SchemaState::NotAPractice);
    CopyTo(*m_copy);
    EXPECT_NE(Refusal(*m_copy).find("a practice in this database already"), std::string::npos);
    const auto empty = Practice::Open("empty.db");
    Quarry::SetConnection(Practice::Open("none.db"));
    EXPECT_NE(Refusal(*empty).find("is no practice of this version"), std::string::npos);
}

TEST_P(CopyOfPractice, ReadsOneMomentWhileOthersWrite)
{
    const auto other = Practice::Open();
    const Brix::Copied copied = CopyTo(*m_copy, [&](std::int64_t, std::int64_t) {
        other->ExecuteDirectf("UPDATE [BRIXClient] SET [strName] = 'changed'");
        return true;
    });
    EXPECT_GT(copied.rows, 0) << "what was compared is what was copied";
}

TEST_P(CopyOfEmbedded, NamesTheRowThatTheOtherDatabaseRefuses)
{
    Quarry::GetConnection().ExecuteDirectf("UPDATE [BRIXClient] SET [nTrustKind] = 'many' WHERE [lID] = 2");
    const std::string refusal = Refusal(*m_copy);
    EXPECT_NE(refusal.find("BRIXClient 2 is refused"), std::string::npos) << refusal;
    EXPECT_EQ(Brix::ReadSchemaVersion(*m_copy).state, Brix::SchemaState::NotAPractice);
}

} // namespace
