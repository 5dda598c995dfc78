// Grids worked by scripts: new rows, totals, splits, changes of basis.

#include <random>

#include "Afx/system/Resources.h"
#include "Afx/windows/DataExchange.h"
#include "MorvUt/taxyear/CurrentTaxYear.h"
#include "MorvUt/ui/grids/ChangeOfBasisGrid.h"
#include "MorvUt/ui/grids/DefaultSplit.h"
#include "MorvUt/ui/grids/EntitySplitGrid.h"
#include "MorvUt/ui/grids/InsertableGrid.h"
#include "support/Hands.h"
#include "support/Practice.h"
#include "support/Slots.h"

namespace
{

using Kiln::CAmt;
using Lattice::Format;
using ::Test::Hands;
using ::Test::Work;
using Split = Brix::CBTaxNoTaxInvestmentIncomeSplit;

constexpr unsigned kGridId = 700, kButtonId = 701;

/// A date, net, tax, and gross, which is computed; net must be filled.
class CPayments : public CInsertableGrid
{
public:
    CPayments() { SetupGrid(); }

protected:
    const InsertableColumn* GetColumnDefinitions() const override
    {
        static constexpr InsertableColumn kColumns[] = {{1, 0, "Paid", Format::Date},
                                                        {2, kColumnRequired, "Net"},
                                                        {3, kColumnAutomatic, "Tax"},
                                                        {4, kColumnNotTested, "Gross"},
                                                        {5, kColumnNotTested, "Paid by", Format::Combo},
                                                        {0, 0}};
        return kColumns;
    }
    void OnNewRowCreated(int row) override { SetCellReadOnly(row, 3); }
    void OnCalcRow(int row) override
    {
        const CAmt net = GetCellAmount(row, 1), tax = GetCellAmount(row, 2);
        SetCellAmount(row, 3, tax.IsValid() ? net + tax : net);
    }
    void OnControlCreated(int id, CWnd&) override
    {
        if (id == 5 && GetCombo(5).GetCount() == 0)
            GetCombo(5).AddString("Ann");
    }
    void ComboToGridItem(int row, int column) override { SetCellText(row, column, GetCombo(5).Text() + "'s account"); }
};

template<class Grid>
class COneGrid : public CDialog
{
public:
    template<class... Args>
    explicit COneGrid(const Args&... args) : grid(args...)
    {
        grid.Create(this, kGridId);
        button.Create(this, kButtonId);
    }
    Grid grid;
    CButton button;
};

std::string Shown(const Lattice::CGrid& grid, int column = -1)
{
    std::string text;
    for (int row = 0; row < grid.GetRowCount(); ++row)
        for (int i = std::max(column, 0); i < (column < 0 ? grid.GetColumnCount() : column + 1); ++i)
            text += grid.GetCellText(row, i).Str() + (i + 1 < grid.GetColumnCount() && column < 0 ? "|" : "\n");
    return text;
}

CAmt OfPence(std::int64_t pence) { return CAmt::FromPence(pence); }

class Splits : public ::testing::Test, protected ::Test::Practice
{
protected:
    void Fill(CEntitySplitGrid& grid, const CAmt& amount, int count, bool saves = false, bool readOnly = false)
    {
        CEntityArray entities;
        for (int i = 1; i <= count; ++i)
            entities.Add({i, 0, ("E" + std::to_string(i)).c_str()});
        CDataExchange exchange(nullptr, saves);
        grid.DDXFunc(&exchange, amount, entities, 0, readOnly, list);
    }
    Split list;
    const CEntitySplitGrid::ShareColumns columns{Split::kClientID, -1, Split::kShare, -1};
};

} // namespace

TEST(InsertableGridSlots, StandInTheOrderThatModulesAreBuiltFor)
{
    using G = CInsertableGrid;
    EXPECT_TRUE(::Test::AreConsecutive(&G::AddRow, &G::CheckForNewRow, &G::CheckDeleteButtonForEnable, &G::AllowDelete,
                                       &G::Load, &G::Save, &G::OnNewRowCreated, &G::OnCalcRow, &G::OnControlCreated,
                                       &G::GridItemToCombo, &G::ComboToGridItem));
    EXPECT_TRUE(::Test::AreConsecutive(&CTotallingGrid::GetCellAmt, &CTotallingGrid::SetTotal));
    using S = CEntitySplitGrid;
    EXPECT_TRUE(::Test::AreConsecutive(&S::CPSGetClientID, &S::PPSGetPClientID, &S::ParentNewCPS, &S::ParentNewPPS));
}

TEST(CInsertableGrid, OffersABlankRowUpToItsMaximum)
{
    SetCurrentTaxYear(2024 - 1991);
    ::Test::SetNow(2024, 6, 1, 10, 0, 0); // a leap year, the one before it is none
    COneGrid<CPayments> dialog;
    CPayments& grid = dialog.grid;
    grid.SetMaximumRows(3);
    grid.SetDeleteButton(&dialog.button);
    Work(dialog, [&](Hands& hands) {
        grid.CheckForNewRow();
        EXPECT_EQ(Shown(grid), "||A||\n") << "the first, with its automatic cell";
        grid.CheckForNewRow();
        EXPECT_EQ(grid.GetRowCount(), 1) << "nothing behind a blank one";
        Afx::UserActs::Focus(grid);
        hands.Write("29/2");
        hands.Press(VK_TAB);
        hands.ExpectMessage("29 February 2023 does not exist; February 2023 has 28 days");
        hands.Write("6/4/24");
        hands.Press(VK_TAB);
        EXPECT_EQ(grid.GetRowCount(), 1) << "net is not filled";
        hands.Write("80+10");
        hands.Press(VK_TAB);
        EXPECT_EQ(grid.GetRowCount(), 2);
        hands.Write("10");
        hands.Press(VK_TAB);
        EXPECT_EQ(Shown(grid), "06/04/2024|90.00|10.00|100.00|\n||A||\n");
        grid.GoTo(1, 0);
        ::Test::Windows().SetClipboard("\t1\n\t3\t4\t7\n");
        hands.Press('V', Afx::kControl);
        hands.ExpectMessage("Nothing was pasted. Row 3, Gross: this cell cannot be changed.");
        EXPECT_EQ(grid.GetRowCount(), 2) << "nor was a row added for it";
        ::Test::Windows().SetClipboard("\t1\t2\n\t3\t4\n");
        hands.Press('V', Afx::kControl);
        EXPECT_EQ(Shown(grid), "06/04/2024|90.00|10.00|100.00|\n|1.00|2.00|3.00|\n|3.00|4.00|7.00|\n");
        grid.GoTo(2, 0);
        hands.Press('V', Afx::kControl);
        hands.ExpectMessage("Nothing was pasted: there is no room for so many rows.");
        EXPECT_EQ(Shown(grid), "06/04/2024|90.00|10.00|100.00|\n|1.00|2.00|3.00|\n|3.00|4.00|7.00|\n") << "as before";
        hands.Answer(IDYES);
        hands.Press(VK_DELETE, Afx::kControl);
        hands.ExpectMessage("Delete this row?");
        EXPECT_EQ(grid.GetRowCount(), 3) << "one deleted, one offered";
        EXPECT_TRUE(dialog.button.IsWindowEnabled());
        grid.GoTo(0, 4);
        hands.Press(VK_DOWN, Afx::kAlt);
        hands.Press(VK_DOWN);
        hands.Press(VK_RETURN);
        hands.Press(VK_RETURN);
        EXPECT_EQ(grid.GetCellText(0, 4), "Ann's account") << "as the derived grid keeps what was chosen";
        while (grid.Undo()) {
        }
        EXPECT_EQ(Shown(grid), "||A||\n");
        dialog.EndDialog(IDOK);
    });
    CCurrentTaxYearSingleton::Destroy();
}

TEST(CTotallingGrid, ComputesWhatFollowsFromAnEditAndNothingElse)
{
    constexpr int kRows = 50, kColumns = 6;
    COneGrid<CTotallingGrid> dialog;
    CTotallingGrid& grid = dialog.grid;
    for (int column = 0; column <= kColumns; ++column)
        grid.AddColumn(column + 1, "C", Format::Amount);
    for (int row = 0; row <= kRows; ++row)
        grid.AppendRow();
    grid.SetRowTotalling(kRows, kColumns, kRows, 0, kColumns - 1); // the sum of sums, set first
    for (int row = 0; row < kRows; ++row)
        grid.SetRowTotalling(row, kColumns, row, 0, kColumns - 1);
    for (int column = 0; column < kColumns; ++column)
        grid.SetColumnTotalling(kRows, column, column, 0, kRows - 1);
    std::mt19937 random(5);
    std::int64_t sum = 0;
    for (int row = 0; row < kRows; ++row)
        for (int column = 0; column < kColumns; ++column) {
            const auto pence = static_cast<std::int64_t>(random() % 100'000) - 50'000;
            sum += pence;
            grid.SetCellAmount(row, column, OfPence(pence));
        }
    grid.UpdateTotals(true);
    EXPECT_EQ(grid.GetCellAmount(kRows, kColumns), OfPence(sum));
    const std::size_t before = grid.GetComputedCount();
    Work(dialog, [&](Hands& hands) {
        sum += 100 - grid.GetCellAmount(7, 3).GetPence();
        grid.GoTo(7, 3);
        hands.Write("1");
        hands.Press(VK_RETURN);
        EXPECT_EQ(grid.GetComputedCount() - before, 3u) << "of the row, of the column, of all";
        EXPECT_EQ(grid.GetCellAmount(kRows, kColumns), OfPence(sum));
        const std::size_t pasted = grid.GetComputedCount();
        ::Test::Windows().SetClipboard(grid.GetCellText(0, 0).Str() + "\t0\n1\t2\n");
        const std::int64_t unpasted = sum;
        sum += 300 - grid.GetCellAmount(0, 1).GetPence() - grid.GetCellAmount(1, 0).GetPence() -
               grid.GetCellAmount(1, 1).GetPence();
        grid.GoTo(0, 0);
        hands.Press('V', Afx::kControl);
        EXPECT_EQ(grid.GetComputedCount() - pasted, 5u) << "each once, however many cells";
        EXPECT_EQ(grid.GetCellAmount(kRows, kColumns), OfPence(sum));
        grid.SetCellAmount(2, 0, grid.GetCellAmount(2, 0) + OfPence(100));
        grid.UpdateTotals(true);
        grid.Undo();
        EXPECT_EQ(grid.GetCellAmount(kRows, kColumns), OfPence(unpasted + 100)) << "not the total of then";
        for (int column = 0; column < kColumns; ++column)
            grid.EmptyCell(9, column);
        grid.UpdateTotals(true);
        EXPECT_EQ(grid.GetCellText(9, kColumns), "") << "a zero total";
        grid.SetCellError(7, 3);
        grid.OnCellEndEdit(7, 3);
        EXPECT_EQ(grid.GetCellText(kRows, kColumns), "Error") << "a total that leaves something out would be believed";
        grid.GoTo(9, kColumns);
        hands.Press(VK_F4);
        hands.ExpectMessage("The sum of cells that are all blank.");
        dialog.EndDialog(IDOK);
    });
}

TEST_F(Splits, GiveEveryPennyBackWhateverIsShown)
{
    std::mt19937 random(3);
    for (int round = 0; round < 12; ++round) {
        const int count = 2 + static_cast<int>(random() % 39);
        std::int64_t total = 0;
        std::vector<std::int64_t> shares;
        for (int i = 0; i < count; ++i) {
            shares.push_back(static_cast<std::int64_t>(random() % (10'000'000'000 / 40)));
            total += shares.back();
        }
        Sql("DELETE FROM BRIXBTaxNoTaxInvestmentIncomeSplit");
        for (int i = 0; i < count; ++i)
            Sql("INSERT INTO BRIXBTaxNoTaxInvestmentIncomeSplit (lID, lClientID, amtShare) VALUES (%d, %d, %m)", i + 1,
                i + 1, OfPence(shares[static_cast<std::size_t>(i)]));
        list.Open();
        CEntitySplitGrid grid(columns);
        Fill(grid, OfPence(total), count);
        const std::string amounts = Shown(grid, CEntitySplitGrid::kShare);
        grid.OnUsePCentSplit(1);
        const auto left = PercentUnits(std::get<double>(grid.GetCell(count + 1, CEntitySplitGrid::kShare).value));
        ASSERT_LE(std::abs(*left), count) << "what rounding left";
        grid.OnUsePCentSplit(0);
        ASSERT_EQ(Shown(grid, CEntitySplitGrid::kShare), amounts);
        for (int i = 0; i < count; ++i)
            ASSERT_EQ(grid.GetShareAmount(i), OfPence(shares[static_cast<std::size_t>(i)]));
    }
}

TEST_F(Splits, AreTypedInEitherUnitAndSaved)
{
    COneGrid<CEntitySplitGrid> dialog(columns);
    CEntitySplitGrid& grid = dialog.grid;
    list.Open();
    Fill(grid, OfPence(10'001), 3);
    Work(dialog, [&](Hands& hands) {
        EXPECT_TRUE(grid.SelectClient(1, 0));
        EXPECT_FALSE(grid.SelectClient(1, 1));
        hands.Write("40");
        hands.Press(VK_RETURN);
        EXPECT_EQ(Shown(grid, CEntitySplitGrid::kShare), "100.01\n40.00\n\n\n60.01\n");
        grid.OnUsePCentSplit(1);
        grid.GoTo(1, CEntitySplitGrid::kShare);
        hands.Press('D', Afx::kControl); // above it stand pounds
        grid.GoTo(2, CEntitySplitGrid::kShare);
        EXPECT_EQ(Shown(grid, CEntitySplitGrid::kShare), "100.01\n39.99600040\n\n\n60.00399960\n");
        hands.Write("25");
        hands.Press(VK_RETURN);
        hands.Write("x");
        hands.Press(VK_RETURN);
        hands.ExpectMessage("Please enter a percentage, as 33.33.");
        hands.Press(VK_ESCAPE);
        grid.OnUsePCentSplit(0);
        EXPECT_EQ(Shown(grid, CEntitySplitGrid::kShare), "100.01\n40.00\n25.00\n\n35.01\n");
        grid.UpdateNetAmount(CAmt::kZero);
        EXPECT_EQ(Shown(grid, CEntitySplitGrid::kShare), "0.00\n40.00\n25.00\n\nError\n");
        grid.OnUsePCentSplit(1);
        EXPECT_EQ(Shown(grid, CEntitySplitGrid::kShare), "0.00\nError\nError\n\n100.00000000\n");
        grid.UpdateNetAmount(OfPence(10'000));
        EXPECT_EQ(Shown(grid, CEntitySplitGrid::kShare), "100.00\n40.00000000\n25.00000000\n\n35.00000000\n");
        grid.UpdateNetAmount(OfPence(20'000));
        EXPECT_EQ(grid.GetShareAmount(0), OfPence(8'000)) << "what is shown stays";
        grid.UpdateNetAmount(OfPence(10'000));
        hands.Press(VK_DELETE, Afx::kControl); // its rows are its entities'
        grid.OnUsePCentSplit(0);
        dialog.EndDialog(IDOK);
    });
    Fill(grid, CAmt::kZero, 3, true, true);
    EXPECT_EQ(Query("SELECT COUNT(*) FROM BRIXBTaxNoTaxInvestmentIncomeSplit"), "0") << "read-only";
    Fill(grid, CAmt::kZero, 3, true);
    EXPECT_EQ(Query("SELECT lClientID, amtShare FROM BRIXBTaxNoTaxInvestmentIncomeSplit ORDER BY lClientID"),
              "1|40.00, 2|25.00");
}

TEST(CDefaultSplitBasePage, AsksAboutASplitThatDoesNotAddUp)
{
    CDefaultSplitBaseDlg sheet("Split");
    CDefaultSplitBasePage page;
    sheet.AddPage(&page);
    EXPECT_EQ(page.GetRemainingGrid().GetCellText(0, 1), "100.00000000") << "without rows";
    page.SetRow(0, 33.33333333);
    page.SetRow(2, 33.33333334);
    page.SetRow(1, 33.33333333);
    EXPECT_EQ(page.GetRemainingGrid().GetCellText(0, 1), "0.00000000");
    EXPECT_EQ(Work(sheet,
                   [&](Hands& hands) {
                       hands.Press(VK_RIGHT);
                       hands.Write("33.33");
                       hands.Press(VK_RETURN);
                       EXPECT_EQ(page.GetRemainingGrid().GetCellText(0, 1), "0.00333333");
                       hands.Press(VK_DELETE, Afx::kControl); // nor rows of a page that makes them itself
                       hands.Answer(IDCANCEL);
                       hands.Click(IDOK);
                       hands.ExpectMessage("The split does not add up to 100%. Continue?");
                       hands.Answer(IDOK);
                       hands.Click(IDOK);
                       hands.ExpectMessage("The split does not add up to 100%. Continue?");
                   }),
              IDOK);
    page.SetReadOnly(true);
    EXPECT_TRUE(page.Validate());
}

TEST(CChangeOfBasisGrid, RefusesNegativeResultsAndAsksAboutChanges)
{
    constexpr Afx::StringResource kStrings[] = {
        {1, "Sole"}, {2, "Partner"}, {3, "The figures have changed. Keep them?"}};
    const Afx::ResourceContext resources(kStrings, 3);
    const Afx::ResourceContextGuard guard(resources);
    Kiln::CAmtEdit before, result;
    COneGrid<CChangeOfBasisGrid> dialog;
    CChangeOfBasisGrid& grid = dialog.grid;
    grid.Init(before, result, 1, 2);
    grid.Set(OfPence(100), OfPence(200), CAmt(), OfPence(300), 1);
    grid.Set(OfPence(400), CAmt(), CAmt(), OfPence(-1), 2);
    EXPECT_EQ(before.Text() + " " + result.Text(), "5.00 2.99");
    Work(dialog, [&](Hands& hands) {
        for (const auto& [year, answers, keeps] : {std::tuple(2003, false, true), {2004, true, false}}) {
            SetCurrentTaxYear(static_cast<short>(year - 1991));
            grid.GoTo(0, 1);
            hands.Write(year == 2003 ? "7" : "8");
            hands.Press(VK_RETURN);
            if (answers)
                hands.Answer(IDNO);
            EXPECT_EQ(grid.Validate(0, 3, 1), keeps) << year;
            if (answers)
                hands.ExpectMessage("The figures have changed. Keep them?");
        }
        EXPECT_FALSE(grid.Validate(1, 3, 0));
        EXPECT_EQ(grid.GetCurrentRow() * 10 + grid.GetCurrentColumn(), 32) << "the negative result";
        EXPECT_EQ(before.Text(), "12.00");
        hands.Press(VK_DELETE, Afx::kControl);
        EXPECT_EQ(grid.GetRowCount(), 4) << "for good";
        dialog.EndDialog(IDOK);
    });
    CCurrentTaxYearSingleton::Destroy();
}
