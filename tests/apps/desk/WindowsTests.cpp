// What only real windows show of the desktop program.

#include "AfxWx/RealHands.h"
#include "apps/desk/DeskTest.h"
#include "Lattice/Grid.h"
#include "layouts/Sheets.h"

namespace
{

class DeskInWindows : public DeskTest
{
protected:
    /// A new schedule with interest, on the page of its payments.
    void RunPayments(Script script)
    {
        RunIn("C0002", [=](Hands& hands) {
            hands.Pick(IDC_RETURN_KIND, "Interest");
            InNext([=](Hands& sheet) {
                sheet.Type(IDC_INTEREST_NAME, "Saltmarsh Savings");
                NextPage(sheet);
                script(sheet);
                sheet.Click(IDCANCEL);
            });
            hands.Click(IDC_RETURN_NEW);
        });
    }
    static int ModelWidth(const CWnd& list, int column)
    {
        if (const auto* const grid = dynamic_cast<const Lattice::CGrid*>(&list))
            return grid->GetColumn(column)->width;
        return dynamic_cast<const CListCtrl&>(list).GetColumns()[static_cast<std::size_t>(column)].width;
    }
    /// Drags an edge there and back, the model following; the width that it has then.
    static int Drag(CWnd& list)
    {
        constexpr int kColumn = 1, kBy = 60;
        const int before = ::Test::ShownWidth(list, kColumn);
        ::Test::DragEdge(list, kColumn, 2 * kBy);
        EXPECT_NEAR(ModelWidth(list, kColumn), before + 2 * kBy, 1);
        ::Test::DoubleClickEdge(list, kColumn);
        EXPECT_EQ(ModelWidth(list, kColumn), ::Test::ShownWidth(list, kColumn));
        EXPECT_LT(ModelWidth(list, kColumn), before + 2 * kBy) << "which no text needs";
        ::Test::DragEdge(list, kColumn, kBy);
        EXPECT_EQ(ModelWidth(list, kColumn), ::Test::ShownWidth(list, kColumn));
        return ModelWidth(list, kColumn);
    }
    static void ExpectRemembered(const CWnd& list, int width)
    {
        EXPECT_EQ(ModelWidth(list, 1), width);
        EXPECT_EQ(::Test::ShownWidth(list, 1), width);
    }
};

} // namespace

TEST_F(DeskInWindows, ColumnThatWasDraggedIsAsWideAtTheNextOpening)
{
    int list = 0, grid = 0;
    Run([&](Hands& hands) { list = Drag(hands.Control(IDC_CLIENTS_LIST)); });
    RunPayments([&](Hands& hands) { grid = Drag(hands.Control(IDC_PAYMENTS_GRID)); });
    Run([&](Hands& hands) { ExpectRemembered(hands.Control(IDC_CLIENTS_LIST), list); });
    RunPayments([&](Hands& hands) { ExpectRemembered(hands.Control(IDC_PAYMENTS_GRID), grid); });
}
