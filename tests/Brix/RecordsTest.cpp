#include "Brix/Records.h"

#include <map>
#include <set>

#include "NewPractice.h"

using Cellar::ColumnType;
using Cellar::Value;
using Quarry::Table;

namespace
{

/// What other programs rely on: the numbers they listen to and the ordinals they sort by.
TEST(RecordDeclarations, KeepPublishedNumbersAndOrdinals)
{
    const struct
    {
        const Table& table;
        int number; // 0: not published
        std::map<int, const char*> columns;
    } rows[] = {
        {Brix::CTaxForm::Declaration(), 308, {{110, "bDormant"}}},
        {Brix::CPartnershipTaxForm::Declaration(), 226, {}},
        {Brix::CPFile::Declaration(), 0, {{1, "nValue"}}},
        {Brix::CUser::Declaration(), 0, {{14, "nUserValue"}}},
        {Brix::CMinisters::Declaration(), 380, {}},
        {Brix::CCalculatedBenefits::Declaration(), 381, {{1, "nType"}}},
        {Brix::CNewEmploy::Declaration(), 362, {{5, "nOrdering"}, {60, "nP11D"}}},
        {Brix::CPensionStateBenefits::Declaration(), 0, {{14, "nOrdering"}}},
        {Brix::CPSBDetails::Declaration(), 0, {{6, "nOrdering"}}},
        {Brix::CBTaxProprietor::Declaration(), 166, {}},
        {Brix::CPartnershipClients::Declaration(), 167, {}},
        {Brix::CFBISubmissions::Declaration(), 550, {{1, "nYear"}, {16, "dtSubmitted"}}},
        {Brix::CPartnershipFBISubmissions::Declaration(), 546, {{4, "nYear"}, {16, "dtSubmitted"}}},
        {Brix::CNewInterest::Declaration(), 0, {{17, "nOrdering"}}},
        {Brix::CNewInterestPayment::Declaration(), 0, {{2, "nOrdering"}}},
        {Brix::CNewInterestUT::Declaration(), 0, {{17, "nOrdering"}}},
        {Brix::CCGTAcq::Declaration(), 0, {{1, "nOrdering"}}},
        {Brix::CEmployUKIncomeDetails::Declaration(), 0, {{2, "nOrdering"}}},
        {Brix::COtherOut::Declaration(), 0, {{7, "nOrdering"}}},
        {Brix::CPlan::Declaration(), 0, {{7, "nOrdering"}}},
        {Brix::CPlanPayment::Declaration(), 0, {{1, "nOrdering"}}},
        {Brix::CPropUK::Declaration(), 0, {{7, "nOrdering"}}},
        {Brix::CMTD_Employments::Declaration(), 0, {{1, "strKey"}}},
        {Brix::CMTD_PensionStateBenefits::Declaration(), 0, {{3, "dtStart"}}},
        {Brix::CMTD_TaxFreeAllowances::Declaration(), 0, {{3, "amtAmount"}}},
        {Brix::CCountry::Declaration(), 0, {{1, "strName"}}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.table.className);
        if (row.number != 0) {
            EXPECT_EQ(row.table.number, row.number);
        }
        for (const auto& [ordinal, name] : row.columns) {
            const Quarry::Column* const column = row.table.Find(ordinal);
            ASSERT_NE(column, nullptr) << ordinal;
            EXPECT_STREQ(column->name, name);
        }
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

/// A value of the column's type, another one for each `nth`.
Value Sample(const Quarry::Column& column, int nth)
{
    switch (column.type) {
    case ColumnType::Int:
    case ColumnType::SmallInt:
        return 2020 + nth;
    case ColumnType::Bit:
        return nth % 2 == 0;
    case ColumnType::Text:
        return "it's text " + std::to_string(nth);
    case ColumnType::Binary:
        return Cellar::Bytes{0, static_cast<std::uint8_t>(nth)};
    case ColumnType::Date:
        return Kiln::CDate(2024, 4, 5 + nth);
    case ColumnType::DateTime:
        return COleDateTime(2024, 4, 5 + nth, 12, 30, 0, 5);
    case ColumnType::Money:
        return Kiln::CAmt(123'456 + nth);
    case ColumnType::Double:
        return 0.1 + nth;
    }
    return {};
}

/// Gives every column of the current row its sample; the id of a saved row stays.
void Fill(Quarry::CDataList& list, int nth)
{
    for (const Quarry::Column& column : list.GetTable().columns) {
        if (std::string_view(column.name) != "lID")
            list.Set(column.ordinal, Sample(column, nth));
    }
}

void ExpectFilled(const Quarry::CDataList& list, int nth)
{
    for (const Quarry::Column& column : list.GetTable().columns) {
        if (std::string_view(column.name) != "lID") {
            EXPECT_EQ(list.Get(column.ordinal), Sample(column, nth)) << column.name;
        }
    }
}

class Records : public NewPractice
{};

TEST_F(Records, OfEveryClassAreAddedChangedAndDeleted)
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
            list.Update();
        }
        ASSERT_TRUE(list.Open());
        ASSERT_EQ(list.GetCount(), 3);
        ExpectFilled(list, 0);
        ASSERT_TRUE(list.MoveTo(2));
        ExpectFilled(list, 2);
        Fill(list, 3);
        list.Update();
        ASSERT_TRUE(list.MoveFirst());
        list.Delete();
        ASSERT_TRUE(list.Open());
        ASSERT_EQ(list.GetCount(), 2);
        ASSERT_TRUE(list.MoveTo(1));
        ExpectFilled(list, 3);
    }
}

} // namespace
