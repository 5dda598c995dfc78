#include <tuple>

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
        Sql("INSERT INTO BRIXClient (lID, strName, dtDeath) VALUES (1, 'Ann', '2024-02-29'), (2, 'Bob', NULL);"
            "INSERT INTO BRIXPartnership (lID) VALUES (1);"
            "INSERT INTO BRIXTaxForm (lID, lClientID, nYear) VALUES (1, 1, 2024), (2, 1, 2025), (3, 2, 2024);"
            "INSERT INTO BRIXNewEmploy (lID, lTaxFormID, lClientID, nYear, amtPay) VALUES (1, 1, 1, 2024, 123400);"
            "INSERT INTO BRIXBTaxProprietor (lID, lClientID, lpClientID) VALUES (1, 1, NULL), (2, 0, 1);"
            "INSERT INTO BRIXMTD_TaxYear (lID, lClientID, nYear, dtFetched)"
            " VALUES (1, 1, 2024, '2025-01-31 10:00:00.000'), (2, 1, 2025, '2025-01-31');"
            "INSERT INTO BRIXMTD_Employments (lID, lMTD_TaxYearID, strKey) VALUES (1, 1, 'A1'), (2, 1, 'a1'),"
            " (3, 2, 'A1'), (4, 1, NULL), (5, 1, NULL);"
            "INSERT INTO BRIXUser (lID, strUserID) VALUES (1, 'Ann');"
            "INSERT INTO BRIXUserPermissions (lID, strUserID, nPermission, bAllowed) VALUES (1, 'ANN', 87, 1);"
            "INSERT INTO Source (SourceID, ClientID, Year, SourceTypeID) VALUES (9, 1, 2024, 1);"
            "INSERT INTO SourceTask (SourceID, TypeID, DueDate) VALUES (9, 1, '2024-01-31T00:00:00');"
            "INSERT INTO BRIXOptions (lID) VALUES (1);");
    }
    /// The statements that spoil the sound practice, and where which fault is found then.
    static void ExpectFound(std::initializer_list<std::tuple<const char*, const char*, long, const char*>> rows)
    {
        EXPECT_EQ(Brix::CheckPractice(Quarry::GetConnection()).size(), 0U) << "the practice fits together before";
        for (const auto& [sql, table, id, fault] : rows) {
            SCOPED_TRACE(sql);
            const Quarry::CTransaction undone;
            Sql(sql);
            const std::vector<Fault> faults = Brix::CheckPractice(Quarry::GetConnection());
            ASSERT_EQ(faults.size(), 1U);
            EXPECT_EQ(faults[0].table, table);
            EXPECT_EQ(faults[0].id, id);
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
    ExpectFound({
        {"UPDATE BRIXNewEmploy SET lTaxFormID = 99", "BRIXNewEmploy", 1, "does not exist: BRIXTaxForm 99"},
        {"UPDATE BRIXNewEmploy SET lTaxFormID = 0", "BRIXNewEmploy", 1, "has no parent"},
        {"UPDATE BRIXNewEmploy SET nYear = 2025", "BRIXNewEmploy", 1, "client or year differ"},
        {"UPDATE BRIXNewEmploy SET lClientID = NULL", "BRIXNewEmploy", 1, "client or year differ"},
        {"UPDATE BRIXBTaxProprietor SET lpClientID = 7 WHERE lID = 2", "BRIXBTaxProprietor", 2, "BRIXPartnership 7"},
        {"UPDATE BRIXBTaxProprietor SET lClientID = NULL WHERE lID = 1", "BRIXBTaxProprietor", 1, "has no parent"},
        {"UPDATE BRIXUserPermissions SET strUserID = 'eve'", "BRIXUserPermissions", 1, "BRIXUser eve"},
        {"UPDATE BRIXUserPermissions SET strUserID = ''", "BRIXUserPermissions", 1, "has no parent"},
        {"UPDATE SourceTask SET SourceID = 8", "SourceTask", 8, "Source 8"},
        {"INSERT INTO BRIXMTD_TaxYear (lID, lClientID, nYear) VALUES (7, 1, 2024)", "BRIXMTD_TaxYear", 7, "twice"},
        {"INSERT INTO BRIXMTD_Employments (lID, lMTD_TaxYearID, strKey, bWithdrawn) VALUES (7, 1, 'A1', 1)",
         "BRIXMTD_Employments", 7, "twice"},
        {"INSERT INTO BRIXTaxForm (lID, lClientID, nYear) VALUES (7, 1, 2024)", "BRIXTaxForm", 7, "twice"},
        {"INSERT INTO BRIXClient (lID, strCode) VALUES (77, 'A'), (78, 'a'), (79, 'A'), (80, ''), (81, '')",
         "BRIXClient", 79, "twice"},
        {"INSERT INTO BRIXUser (lID, strUserID) VALUES (7, 'aNN')", "BRIXUser", 7, "twice"},
        {"UPDATE BRIXNewEmploy SET strPAYEReference = '1/A', bFromHMRC = 1;"
         "INSERT INTO BRIXNewEmploy (lID, lTaxFormID, lClientID, nYear, strPAYEReference, strWorksNumber, bFromHMRC)"
         " VALUES (7, 1, 1, 2024, '1/A', '', 1), (8, 1, 1, 2024, '1/A', 'W1', 1), (9, 1, 1, 2024, '1/A', NULL, 0),"
         " (10, 2, 1, 2025, '1/A', NULL, 1), (11, 1, 1, 2024, '', NULL, 1), (12, 1, 1, 2024, '', NULL, 1),"
         " (13, 1, 1, 2024, '2/B', 'W1', 1), (14, 1, 1, 2024, '2/B', 'W1', 1);" // as many as HMRC lists
         "INSERT INTO BRIXMTD_Employments (lID, lMTD_TaxYearID, strKey, strPAYEReference) VALUES (7, 1, 'B', '2/B'),"
         " (8, 1, 'B #2', '2/B')",
         "BRIXNewEmploy", 7, "employment from HMRC stands twice"},
        {"INSERT INTO BRIXPensionStateBenefits (lID, lTaxFormID, lClientID, nYear, nType, strReference, "
         "bFromHMRC) VALUES (1, 1, 1, 2024, 1050, 'P1', 1), (2, 1, 1, 2024, 1050, 'P1', 0), (3, 1, 1, 2024, 1050, "
         "'P2', 1),"
         " (4, 1, 1, 2024, 1090, 'P1', 1), (5, 1, 1, 2024, 1090, 'P1', 1), (6, 1, 1, 2024, 1050, '', 1),"
         " (7, 1, 1, 2024, 1050, '', 1), (8, 1, 1, 2024, 1050, 'P1', 1)",
         "BRIXPensionStateBenefits", 8, "pension from HMRC stands twice"},
        {"INSERT INTO BRIXOptions (lID) VALUES (2)", "BRIXOptions", 2, "row 1 only"},
        {"INSERT INTO ClientEnquiry (lID, lClientID, nYear) VALUES (3, 1, 2024)", "ClientEnquiry", 3, "no description"},
        {"INSERT INTO SourceType (SourceTypeID) VALUES (1); INSERT INTO SourceDefaultTask (SourceTypeID, TypeID, "
         "DefaultTrackerID) VALUES (1, 2, NULL), (1, 2, NULL), (1, 2, 3), (1, 3, NULL)",
         "SourceDefaultTask", 1, "type 2 stands twice"},
        {"DROP TABLE BRIXBank", "BRIXBank", 0, "the table is missing"},
        {"ALTER TABLE BRIXPlan DROP COLUMN nOrdering", "BRIXPlan", 0, "the column nOrdering is missing"},
        {"ALTER TABLE BRIXPlan DROP COLUMN nVersion", "BRIXPlan", 0, "the column nVersion is missing"},
    });
    Sql("INSERT INTO BRIXTaxForm (lID, lClientID, nYear) VALUES (7, 1, 2024), (8, 1, 2024)");
    EXPECT_EQ(Brix::CheckPractice(Quarry::GetConnection()).size(), 2U) << "each that stands again is told once";
}

TEST_P(CheckEmbedded, FindsValuesOfOtherTypes)
{
    ExpectFound({
        {"UPDATE BRIXClient SET dtDeath = '2023-02-29' WHERE lID = 1", "BRIXClient", 1, "dtDeath: '2023-02-29' is no"},
        {"UPDATE BRIXMTD_TaxYear SET dtFetched = '2025-01-31 25:00:00' WHERE lID = 1", "BRIXMTD_TaxYear", 1,
         "dtFetched: '2025-01-31 25:00:00' is no date"},
        {"UPDATE BRIXNewEmploy SET amtPay = 12.34", "BRIXNewEmploy", 1, "amtPay: '12.34' is no amount"},
        {"UPDATE BRIXNewEmploy SET nOrdering = 'first'", "BRIXNewEmploy", 1, "nOrdering: 'first' is no whole"},
        {"UPDATE BRIXNewEmploy SET lID = 4294967297", "BRIXNewEmploy", 0, "lID: '4294967297' is no whole"},
    });
}

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
