#include "Brix/Check.h"
#include "NewPractice.h"

using Brix::Fault;

namespace
{

class CheckPractice : public NewPractice
{
protected:
    void SetUp() override
    {
        NewPractice::SetUp();
        Sql(::Test::FileText("Brix/Check.sql"));
    }
    /// The statements that spoil the sound practice, and where which fault is found then.
    static void ExpectFound()
    {
        EXPECT_EQ(Brix::CheckPractice(Quarry::GetConnection()).size(), 0U) << "the practice fits together before";
        for (const auto& [sql, place, fault, why] :
             ::Test::Table<const char*, const char*, const char*>("Brix/Check.tsv")) {
            SCOPED_TRACE(sql);
            const Quarry::CTransaction undone;
            Sql(sql);
            const std::vector<Fault> faults = Brix::CheckPractice(Quarry::GetConnection());
            ASSERT_EQ(faults.size(), 1U);
            EXPECT_EQ(faults[0].table + " " + std::to_string(faults[0].id), place);
            EXPECT_NE(faults[0].fault.find(fault), std::string::npos) << faults[0].fault;
        }
    }
};

ON_BOTH_DATABASES(CheckPractice);

/// The file, and values that only its engine lets in.
using CheckEmbedded = CheckPractice;
ON_EMBEDDED(CheckEmbedded);

TEST_P(CheckPractice, FindsWhatDoesNotFit)
{
    ExpectFound();
    Sql("INSERT INTO BRIXTaxForm (lID, lClientID, nYear) VALUES (7, 1, 2024), (8, 1, 2024)");
    EXPECT_EQ(Brix::CheckPractice(Quarry::GetConnection()).size(), 2U) << "each that stands again is told once";
}

TEST_P(CheckEmbedded, FindsValuesOfOtherTypes) { ExpectFound(); }

using CheckServer = CheckPractice;
ON_SERVER(CheckServer);

TEST_P(CheckServer, FindsIdsThatWouldBeGivenTwice)
{
    auto& connection = Quarry::GetConnection();
    connection.Script("INSERT INTO BRIXBank (lID) VALUES (1)"); // the sequence's next
    const std::vector<Fault> faults = Brix::CheckPractice(connection);
    ASSERT_EQ(faults.size(), 1U);
    EXPECT_EQ(faults[0].table + " " + std::to_string(faults[0].id), "BRIXBank 1");
    Brix::PutIdsBehindRows(connection);
    EXPECT_EQ(Brix::CheckPractice(connection).size(), 0U);
    connection.Script("INSERT INTO BRIXBank (strName) VALUES ('another program''s');"
                      "INSERT INTO MTDAudit (lID) VALUES (1), (2)"); // which the database counts by itself
    Brix::PutIdsBehindRows(connection);
    connection.Script("INSERT INTO MTDAudit (strAction) VALUES ('accept')");
    EXPECT_EQ(Cellar::ToLong(Single("SELECT MAX(lID) FROM MTDAudit")), 3);
    EXPECT_EQ(Cellar::ToLong(Single("SELECT MAX(lID) FROM BRIXBank")), 2);
    EXPECT_EQ(Quarry::NewId(Brix::CBank::Declaration()), 34) << "behind that one's block";
}

TEST_P(CheckEmbedded, FindsADamagedFile)
{
    for (int i = 0; i < 200; ++i)
        Quarry::GetConnection().ExecuteDirectf("INSERT INTO BRIXBank (strName) VALUES (%s)", std::string(300, 'x'));
    Quarry::SetConnection(nullptr);
    const std::string path = ::Test::TempDir() + "/practice.db";
    const auto pages = Open("practice.db")->Queryf("SELECT rootpage FROM sqlite_master WHERE name = 'BRIXBank'");
    const std::string sound = ::Test::ReadFile(path);
    const auto page = static_cast<std::size_t>(Cellar::ToLong(pages.rows.at(0).at(0)) - 1) * 4096;
    // a page of rows, and the number of free pages, which no statement reads
    for (const auto& [at, size] : {std::pair<std::size_t, std::size_t>(page, 2000), {36, 4}}) {
        ::Test::WriteFile("practice.db", std::string(sound).replace(at, size, size, '\xEE'));
        Quarry::SetConnection(Open("practice.db"));
        const std::vector<Fault> faults = Brix::CheckPractice(Quarry::GetConnection());
        EXPECT_FALSE(faults.empty()) << at;
        for (const Fault& fault : faults)
            EXPECT_EQ(fault.fault.find("SELECT"), fault.fault.npos) << "for people: " << fault.fault;
        Quarry::SetConnection(nullptr);
    }
}

} // namespace
