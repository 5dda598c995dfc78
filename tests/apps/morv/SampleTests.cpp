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
    Sample("practice.db", 400);
    for (const auto& [from, why] : Table<std::string>("apps/morv/Sample.tsv"))
        EXPECT_NE(Execute(TempDir() + "/practice.db", "SELECT 1 FROM " + from + " LIMIT 1"), "") << from;
}

} // namespace
