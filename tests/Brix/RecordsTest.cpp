#include "Brix/Records.h"

#include <functional>
#include <set>

#include "NewPractice.h"
#include "support/SampleValues.h"

using Quarry::Table;

namespace
{

/// What other programs rely on: the numbers they listen to and the ordinals they sort by.
TEST(RecordDeclarations, KeepPublishedNumbersAndOrdinals)
{
    for (const auto& [name, number, ordinal, column, why] :
         ::Test::Table<const char*, int, int, const char*>("Brix/Records.tsv")) {
        SCOPED_TRACE(name);
        const Table* const table = Brix::FindTable(name);
        ASSERT_TRUE(table && table->Find(ordinal));
        EXPECT_STREQ(table->Find(ordinal)->name, column);
        EXPECT_TRUE(number == 0 || table->number == number) << table->number;
    }
}

TEST(RecordDeclarations, FitTogether)
{
    std::set<int> numbers;
    std::set<std::string> names;
    for (const Table* const table : Brix::AllTables()) {
        SCOPED_TRACE(table->sqlName);
        EXPECT_TRUE(names.insert(table->sqlName).second);
        if (*table->className) {
            EXPECT_TRUE(numbers.insert(table->number).second) << table->number;
            EXPECT_EQ(table->columns[0].ordinal, 0);
        }
        for (const Table::Parent& parent : table->parents) {
            EXPECT_NE(table->Find(parent.column), nullptr) << parent.column;
            const Table* const parentTable = Brix::FindTable(parent.sqlTable);
            ASSERT_NE(parentTable, nullptr) << parent.sqlTable;
            EXPECT_NE(parentTable->Find(parent.parentColumn), nullptr) << parent.parentColumn;
        }
    }
}

class Records : public NewPractice
{
protected:
    /// Every column but the row's id, which stays.
    static void ForEachColumn(const Quarry::CDataList& list, const std::function<void(const Quarry::Column&)>& act)
    {
        for (const Quarry::Column& column : list.GetTable().columns)
            if (std::string_view(column.name) != "lID")
                act(column);
    }
    static void Fill(Quarry::CDataList& list, int nth)
    {
        ForEachColumn(list,
                      [&](const auto& column) { list.Set(column.ordinal, ::Test::SampleValue(column.type, nth)); });
        list.Update();
    }
    static void ExpectFilled(const Quarry::CDataList& list, int nth)
    {
        ForEachColumn(list, [&](const auto& column) {
            EXPECT_EQ(list.Get(column.ordinal), ::Test::SampleValue(column.type, nth)) << column.name;
        });
    }
};

ON_BOTH_DATABASES(Records);

TEST_P(Records, OfEveryClassAreAddedChangedAndDeleted)
{
    for (const Table* const table : Brix::AllTables()) {
        if (!*table->className)
            continue;
        SCOPED_TRACE(table->sqlName);
        Quarry::CDataList list(*table);
        EXPECT_FALSE(list.Open());
        for (int nth = 0; nth < 3; ++nth) {
            list.AddNew();
            Fill(list, nth);
        }
        ASSERT_TRUE(list.Open());
        ASSERT_EQ(list.GetCount(), 3);
        ExpectFilled(list, 0);
        ASSERT_TRUE(list.MoveTo(2));
        ExpectFilled(list, 2);
        Fill(list, 3);
        ASSERT_TRUE(list.MoveFirst());
        list.Delete();
        ASSERT_TRUE(list.Open());
        ASSERT_EQ(list.GetCount(), 2);
        ASSERT_TRUE(list.MoveTo(1));
        ExpectFilled(list, 3);
    }
}

TEST_P(Records, AreReadByNameFromTheRowOfAChange)
{
    static std::string heard;
    Quarry::AddDataChangedListenerForUpdate(
        Brix::CNewEmploy::kTableNumber, "BRIX", [](const Quarry::DataChange& change) {
            const Brix::CNewEmploy::Values before(*change.oldRow), after(*change.newRow);
            heard = before.GetGUID().Str() + "," + after.GetGUID().Str() + "," + std::to_string(after.GetP11D()) + "," +
                    after.GetPay().Format().Str() + (after.IsNull(Brix::CNewEmploy::kTax) ? ",no tax" : "");
            EXPECT_EQ(after.GetID(), change.newRow->GetLong(0));
            EXPECT_THROW(Brix::CClient::Values{*change.newRow}, std::logic_error);
        });
    Brix::CNewEmploy employments;
    employments.AddNew();
    employments.SetGUID("A");
    employments.Update();
    employments.SetGUID("B");
    employments.SetP11D(2);
    employments.SetPay(Kiln::CAmt::FromPence(123'45));
    employments.Update();
    EXPECT_EQ(heard, "A,B,2,123.45,no tax");
}

} // namespace
