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

class CGrid : public ::testing::Test, protected ::Test::GridStories
{
protected:
    CGrid()
    {
        Opens<CGridDialog>("Dialog");
        On("While asked: row 1 is deleted", [this] {
            ::Test::Windows().OnUnexpected([&grid = Grid()](const auto&) { return grid.DeleteRow(1), IDOK; });
        });
        On("Focus within the grid", [this] { EXPECT_TRUE(Grid().HasFocusWithin()); });
        On("Too long a line for a cell is in the clipboard",
           [] { Afx::WindowSystem::Current()->SetClipboard(std::string(CEdit::kLongestLine + 1, 'x')); });
    }
};

STORIES(CGrid, "Lattice/Grid.story");

/// A million rows that count how often they are read.
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

} // namespace

TEST_F(CGrid, SaysWhatAReaderMustKnow)
{
    Sample::CSampleGrid grid;
    grid.FillWithEveryKind();
    for (const auto& [row, column, fromRow, fromColumn, said, why] :
         ::Test::Table<int, int, int, int, const char*>("Lattice/Grid.tsv"))
        EXPECT_EQ(grid.Describe(row, column, fromRow, fromColumn), said) << why;
}

TEST_F(CGrid, ReadsNoMoreOfALongListThanIsSeen)
{
    int reads[2];
    for (const int rows : {1'000, 1'000'000}) {
        LongSource source;
        source.rows = rows;
        CGridDialog dialog;
        dialog.grid.SetSource(&source);
        ::Test::Work(dialog, [&](::Test::Hands& hands) {
            hands.Press(VK_NEXT);
            EXPECT_EQ(dialog.grid.GetCurrentRow(), 20);
            hands.Write("5");
            hands.Press(VK_DELETE);
            EXPECT_FALSE(dialog.grid.IsEditing());
            dialog.EndDialog(IDOK);
        });
        reads[rows > 1'000] = source.reads;
    }
    EXPECT_EQ(reads[0], reads[1]);
}
