#include <gtest/gtest.h>

#include "Kiln/controls/AmtEdit.h"
#include "Kiln/controls/DoubleEdit.h"
#include "Kiln/controls/SortListCtrl.h"
#include "support/Hands.h"
#include "support/Table.h"

TEST(CAmtEdit, TakesSumsAndShowsWhatTheyMake)
{
    CWnd around;
    Kiln::CAmtEdit edit;
    edit.Create(&around, 7);
    for (const auto& [typed, preview, left, why] :
         ::Test::Table<const char*, const char*, const char*>("Kiln/Controls.tsv")) {
        SCOPED_TRACE(typed);
        edit.SetWindowText("");
        Afx::HeadlessWindowSystem::Type(edit, typed);
        EXPECT_EQ(edit.GetPreview(), preview) << why;
        Afx::HeadlessWindowSystem::Leave();
        EXPECT_EQ(edit.Text(), left) << why;
    }
    std::string ones = "1";
    while (ones.size() < 1 << 20)
        ones += "+1";
    EXPECT_EQ(Kiln::ParseAmountSum(ones), Kiln::CAmt((1 << 19) * 10'000LL + 10'000)) << "a megabyte, in no time";
}

TEST(CDoubleEdit, ReadsNumbersAndWritesThemShort)
{
    for (const auto& [typed, number, written, why] :
         ::Test::Table<const char*, std::optional<double>, const char*>("Kiln/Controls.tsv")) {
        SCOPED_TRACE(typed);
        EXPECT_EQ(Kiln::ParseNumber(typed), number) << why;
        if (number) {
            EXPECT_EQ(Kiln::FormatNumber(*number, 8), written);
        }
    }
}

TEST(CSortListCtrl, KeepsItsOrderAndWhatIsSelected)
{
    Kiln::CSortListCtrl list;
    list.SetHeadings("S,16;Description,10;Due,50");
    EXPECT_EQ(list.GetColumns()[1].width, 52) << "at least the heading's text";
    const auto fill = [&list] {
        list.RemoveAllRows();
        list.AddRow({1, CString("beta"), Kiln::CDate(2024, 4, 6)}, 10);
        list.AddRow({0, CString("Alpha"), Kiln::CDate()}, 20);
        list.AddRow({2, CString("BETA"), Kiln::CDate(2023, 4, 6)}, 30);
        list.Sort();
    };
    const auto order = [&list] {
        std::string text;
        for (int row = 0; row < list.GetItemCount(); ++row)
            text += std::to_string(list.GetItemData(row) / 10);
        return text;
    };
    fill();
    EXPECT_EQ(order(), "213") << "by image";
    list.Select(0);
    list.SetFocusedRow(0);
    list.ClickColumn(1);
    EXPECT_EQ(order(), "213") << "without case, equal ones as they were added or stood";
    list.ClickColumn(1);
    EXPECT_EQ(order(), "132");
    EXPECT_TRUE(list.IsSelected(2) && list.GetFocusedRow() == 2);
    list.ClickColumn(2);
    EXPECT_EQ(order(), "231") << "by day, empty ones first";
    fill();
    EXPECT_EQ(order(), "231") << "the order outlives the rows";
    EXPECT_EQ(list.GetItemText(2, 2), "06/04/2024");
}
