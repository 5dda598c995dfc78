#include "Lattice/Grid.h"

#include <gtest/gtest.h>

#include "Lattice/SampleGrid.h"
#include "support/Hands.h"

namespace
{

using namespace Sample;
using Lattice::Format;

constexpr unsigned kGrid = 200, kAfter = 201;
class CGridDialog : public CDialog
{
public:
    CGridDialog()
    {
        grid.Create(this, kGrid);
        after.Create(this, kAfter);
    }
    CSampleGrid grid;
    CEdit after;
};

std::string Row(const CSampleGrid& grid, int row)
{
    std::string text;
    for (int column = 0; column < grid.GetColumnCount(); ++column)
        text += grid.GetCellText(row, column).Str() + "|";
    return text;
}

/// A million rows that count how often they are read.
struct LongSource : Lattice::RowSource
{
    int rows = 0;
    mutable int reads = 0;
    int GetRowCount() const override { return rows; }
    Lattice::Cell Read(int row, int) const override
    {
        ++reads;
        return {row, Format::Number, true};
    }
};

} // namespace

TEST(CGrid, IsTypedIntoByKeyboard)
{
    CGridDialog dialog;
    CSampleGrid& grid = dialog.grid;
    ::Test::Work(dialog, [&](::Test::Hands& hands) {
        hands.ExpectFocus(kGrid);
        hands.Write("Ann");
        hands.Press(VK_TAB);
        hands.Write("10+2.50");
        hands.Press(VK_TAB);
        hands.Write("x");
        hands.Press(VK_TAB);
        hands.ExpectMessage("Please enter a percentage, as 33.33.");
        EXPECT_TRUE(grid.IsEditing());
        hands.Write("33.333333336"); // over it, since it is selected
        hands.Press(VK_TAB);
        hands.Write("5/4/24");
        hands.Press(VK_TAB);
        hands.Write("n ");
        hands.Press(VK_TAB);
        hands.Press(VK_DOWN, Afx::kAlt);
        hands.Press(VK_DOWN);
        hands.Press(VK_DOWN);
        hands.Press(VK_RETURN); // closes the list
        hands.Press(VK_RETURN);
        EXPECT_EQ(Row(grid, 0), "Ann|12.50|33.33333334|05/04/2024|yes|green|");
        EXPECT_EQ(grid.GetCurrentRow(), 1) << "down";
        grid.GoTo(1, kAmount);
        hands.Press(VK_DOWN);
        hands.Press(VK_UP);
        hands.Press('D', Afx::kControl);
        EXPECT_EQ(grid.GetCellText(2, kAmount), "25.00");
        hands.Press(VK_F2);
        hands.Write("9");
        hands.Press(VK_ESCAPE);
        EXPECT_EQ(grid.GetCellText(1, kAmount), "12.50") << "as it was";
        hands.Press(VK_RETURN);
        hands.Write("-1");
        Afx::UserActs::Focus(dialog.after); // leaving takes over
        EXPECT_EQ(grid.GetCellText(2, kAmount), "11.50");
        Afx::UserActs::Focus(grid);
        hands.Press(VK_END, Afx::kControl);
        hands.Write("7");
        EXPECT_FALSE(grid.IsEditing()) << "a total";
        hands.Press(VK_F4);
        hands.ExpectMessage("First and Second");
        hands.Press(VK_TAB);
        hands.ExpectFocus(kAfter);
        dialog.after.SetWindowText("full");
        grid.GoTo(1, kChoice);
        Afx::UserActs::Focus(grid);
        hands.Press(VK_F2);
        hands.Press(VK_OEM_PERIOD, Afx::kControl);
        EXPECT_TRUE(grid.IsEditing()) << "no field is empty";
        hands.Press(VK_TAB);
        hands.ExpectFocus(kAfter);
        while (grid.Undo()) {
        }
        EXPECT_EQ(Row(grid, 0) + Row(grid, 2), "||||||||||||");
        hands.Press(VK_ESCAPE);
    });
}

TEST(CGrid, StandsWhateverTheProgramDoesMeanwhile)
{
    CGridDialog dialog;
    CSampleGrid& grid = dialog.grid;
    ::Test::Work(dialog, [&](::Test::Hands& hands) {
        ::Test::Windows().OnUnexpected([&](const auto&) { return grid.DeleteRow(1), IDOK; });
        grid.GoTo(1, kShare);
        hands.Write("x");
        hands.Press(VK_RETURN);
        hands.ExpectMessage("Please enter a percentage, as 33.33.");
        EXPECT_TRUE(!grid.IsEditing() && grid.HasFocusWithin()) << "its row is gone, the keyboard leads on";
        grid.GoTo(0, kAmount);
        hands.Write("5");
        grid.DeleteRow(0);
        hands.ExpectFocus(kGrid);
        grid.InsertRow(0);
        grid.GoTo(0, kAmount);
        hands.Write("6");
        hands.Press(VK_RETURN);
        grid.InsertRow(0);
        EXPECT_FALSE(grid.Undo()) << "the first row is another now";
        dialog.EndDialog(IDOK);
    });
    ::Test::Windows().OnUnexpected(nullptr);
}

TEST(CGrid, PastesAllOfABlockOrNothing)
{
    const std::string tooLong(CEdit::kLongestLine + 1, 'x');
    struct Paste
    {
        const char* text;
        int row, column;
        const char* refused; // empty: pasted
        const char* rows;
    };
    for (const Paste& paste : {
             Paste{"a\t1\nb\t2", 0, kName, "", "a|1.00|||||b|2.00|||||"},
             Paste{"a\t1\nb\tx", 0, kName,
                   "Nothing was pasted. Row 2, Amount: \"x\" does not belong in an amount; write it as in 1,234.56",
                   "||||||||||||"},
             Paste{"1\n2\n3\n4", 0, kAmount, "Nothing was pasted. Row 3, Amount: this cell cannot be changed.",
                   "||||||||||||"},
             Paste{"red\t1", 0, kChoice, "Nothing was pasted. Row 1, last column: this cell cannot be changed.",
                   "||||||||||||"},
             Paste{tooLong.c_str(), 0, kName,
                   "Nothing was pasted. Row 1, Name: The text is too long: a cell takes 32767 characters.",
                   "||||||||||||"},
             Paste{"yes\tgreen", 1, kTicked, "", "||||||||||yes|green|"},
         }) {
        SCOPED_TRACE(paste.text);
        CGridDialog dialog;
        ::Test::Work(dialog, [&](::Test::Hands& hands) {
            Afx::WindowSystem::Current()->SetClipboard(paste.text);
            dialog.grid.GoTo(paste.row, paste.column);
            hands.Press('V', Afx::kControl);
            if (*paste.refused)
                hands.ExpectMessage(paste.refused);
            EXPECT_EQ(Row(dialog.grid, 0) + Row(dialog.grid, 1), paste.rows);
            EXPECT_EQ(dialog.grid.GetUndoCount(), *paste.refused ? 0u : 1u);
            dialog.grid.Undo();
            EXPECT_EQ(Row(dialog.grid, 0) + Row(dialog.grid, 1), "||||||||||||") << "one undo";
            dialog.EndDialog(IDOK);
        });
    }
}

TEST(CGrid, SaysWhatAReaderMustKnow)
{
    CSampleGrid grid;
    grid.FillWithEveryKind();
    struct Spoken
    {
        int row, column, fromRow, fromColumn;
        const char* text;
    };
    for (const Spoken& cell : {
             Spoken{0, kName, -1, -1, "Name, First, blank"},
             Spoken{0, kAmount, 0, kName, "Amount, automatic, minus £12.50"},
             Spoken{0, kShare, 0, kAmount, "Share, 50.00000000 per cent"},
             Spoken{1, kShare, 0, kShare, "Second, error"},
             Spoken{0, kChoice, 0, kTicked, "Kind, green, 2 of 2"},
             Spoken{2, kAmount, 1, kAmount, "Total, £1,234.00, read-only, total"},
         })
        EXPECT_EQ(grid.Describe(cell.row, cell.column, cell.fromRow, cell.fromColumn), cell.text);
}

TEST(CGrid, ReadsNoMoreOfALongListThanIsSeen)
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
