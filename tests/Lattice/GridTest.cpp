#include "Lattice/Grid.h"

#include "Afx/windows/Edit.h"
#include "Lattice/GridStories.h"
#include "Lattice/SampleGrid.h"
#include "support/Table.h"

namespace
{

class CGridDialog : public CDialog
{
public:
    CGridDialog()
    {
        ::Test::Put(grid, *this, 200, "Grid");
        ::Test::Put(after, *this, 201, "After");
    }
    Sample::CSampleGrid grid;
    CEdit after;
};

/// Rows that count how often they are read.
struct LongSource : Lattice::RowSource
{
    int rows = 0;
    mutable int reads = 0;
    int GetRowCount() const override { return rows; }
    Lattice::Cell Read(int row, int) const override
    {
        ++reads;
        return {row, Lattice::Format::Number, true};
    }
};

class CGrid : public ::testing::Test, protected ::Test::GridStories
{
protected:
    CGrid()
    {
        Opens<CGridDialog>("Dialog");
        Around("List of", [this](const std::string& rows, ::Test::Acts inside) {
            LongSource source;
            source.rows = std::stoi(rows);
            CGridDialog dialog;
            dialog.grid.SetSource(&source);
            ::Test::Work(dialog, std::move(inside));
            m_reads = source.reads;
        });
        Is("Cells read", [this] { return m_reads; });
        On("While asked: row 1 is deleted", [this] {
            ::Test::Windows().OnUnexpected([&grid = Grid()](const auto&) { return grid.DeleteRow(1), IDOK; });
        });
        On("The month comes first", [] { Kiln::CDate::SetParseOrder(Kiln::CDate::ParseOrder::MonthFirst); });
        On("Focus within the grid", [this] { EXPECT_TRUE(Grid().HasFocusWithin()); });
    }
    ~CGrid() override { Kiln::CDate::SetParseOrder(Kiln::CDate::ParseOrder::DayFirst); }

private:
    int m_reads = 0;
};

STORIES(CGrid, "Lattice/Grid.story");

} // namespace

TEST_F(CGrid, SaysWhatAReaderMustKnow)
{
    Sample::CSampleGrid grid;
    grid.FillWithEveryKind();
    for (const auto& [row, column, fromRow, fromColumn, said, why] :
         ::Test::Table<int, int, int, int, const char*>("Lattice/Grid.tsv"))
        EXPECT_EQ(grid.Describe(row, column, fromRow, fromColumn), said) << why;
}
