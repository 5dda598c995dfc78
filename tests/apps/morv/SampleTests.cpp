// The sample practice: the same in every run, sound, and with something of everything.

#include <set>

#include "apps/morv/Program.h"
#include "Brix/Schema.h"
#include "MorvUt/identifiers/TaxIdentifiers.h"
#include "support/Test.h"

namespace
{

using namespace ::Test;
using Cellar::SqlText;

std::unique_ptr<Cellar::CConnection> Sample(const std::string& name, int clients)
{
    const std::string path = TempDir() + "/" + name;
    EXPECT_EQ(MorvJson("practice create --sample --clients " + std::to_string(clients) + " " + path)["clients"],
              clients);
    EXPECT_EQ(MorvJson("practice check " + path)["ok"], true) << clients;
    return Cellar::CConnection::Open(CString(path));
}

TEST(Sample, IsSoundAndTheSameWhateverItsSize)
{
    const auto small = Sample("small.db", 60), same = Sample("same.db", 60), large = Sample("large.db", 1000);
    Sample("one.db", 1);
    const auto rows = [](auto& practice, const SqlText& from) {
        return practice->Query(SqlText("SELECT * FROM [") + from, {}).rows;
    };
    for (const Quarry::Table* const table : Brix::AllTables()) {
        const SqlText all = SqlText::Identifier(table->sqlName) + "]";
        EXPECT_TRUE(!*table->className || rows(small, all) == rows(same, all)) << table->sqlName;
    }
    EXPECT_EQ(rows(small, "BRIXClient]"), rows(large, "BRIXClient] WHERE [lID] <= 60"));

    std::set<std::string> references;
    const auto numbers = large->Queryf("SELECT [lID], [strUTR], [strNINumber] FROM [BRIXClient] UNION ALL "
                                       "SELECT 0, [strUTR], '' FROM [BRIXPartnership]");
    for (const auto& row : numbers.rows) {
        const std::string utr = Cellar::ToText(row[1]).Str(), number = Cellar::ToText(row[2]).Str();
        EXPECT_TRUE(references.insert(utr).second) << utr;
        EXPECT_EQ(IsValidUTR(utr.c_str()), Cellar::ToLong(row[0]) != 7) << "one was mistyped";
        EXPECT_TRUE(number.empty() || IsValidNINumber(number.c_str())) << number;
    }
}

TEST(Sample, HasSomethingOfEverything)
{
    const auto practice = Sample("practice.db", 400);
    const SqlText somewhere[] = {
        "BRIXClient WHERE strEntityType = 'Trust' AND lID > 12",
        "BRIXClient WHERE dtDeath IS NOT NULL AND bTrust = 0 AND lID > 12",
        "BRIXTaxForm WHERE nYear < 2010",
        "BRIXClientPeriodsInactivity WHERE dtEnd IS NULL",
        "BRIXOtherReturnInfo WHERE nTaxPayerStatus = 2 AND bTradingAllowance <> 0",
        "BRIXCalculatedBenefits WHERE nType = 50",
        "BRIXFBISubmissions WHERE nStatus <> 2",
        "BRIXNewInterest WHERE amtBFWD IS NULL AND amtAddition IS NOT NULL",
        "BRIXJointIncomeSourceTaxYear",
        "BRIXChildParentLink a, BRIXChildParentLink b, BRIXChildOtherParentLink o WHERE a.lChildID = b.lChildID AND "
        "a.lID < b.lID AND o.lChildID = a.lChildID",
        "BRIXBTaxNoTaxInvestmentIncomeSplit WHERE bOverride <> 0",
        "ClientEnquiry WHERE SourceID <> 0 AND lpClientID <> 0",
        "Source WHERE bUserCreated <> 0",
        "BRIXPlanPayment",
        "BRIXDTARate r, BRIXCountry c WHERE r.lCountryID = c.lID AND c.nLastYear IS NOT NULL",
    };
    for (const SqlText& from : somewhere)
        EXPECT_FALSE(practice->Query(SqlText("SELECT 1 FROM ") + from, {}).rows.empty()) << from.View();
}

} // namespace
