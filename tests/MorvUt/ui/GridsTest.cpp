// Grids: what their stories need, and totals, splits and changes of basis over whole domains.

#include "Afx/system/Resources.h"
#include "Afx/windows/DataExchange.h"
#include "Lattice/GridStories.h"
#include "MorvUt/res/Strings.h"
#include "MorvUt/taxyear/CurrentTaxYear.h"
#include "MorvUt/ui/grids/ChangeOfBasisGrid.h"
#include "MorvUt/ui/grids/DefaultSplit.h"
#include "MorvUt/ui/grids/EntitySplitGrid.h"
#include "MorvUt/ui/grids/InsertableGrid.h"
#include "support/Practice.h"
#include "support/Slots.h"

namespace
{

using Kiln::CAmt;
using Lattice::Format;
using ::Test::Hands;
using ::Test::Work;
using Split = Brix::CBTaxNoTaxInvestmentIncomeSplit;

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
        ::Test::Put(grid, *this, 700, "Grid");
        button.Create(this, 701);
        button.SetWindowText("Delete row");
    }
    Grid grid;
    CButton button;
};

CAmt OfPence(std::int64_t pence) { return CAmt::FromPence(pence); }

/// A pound more in each row, ten less in each column, with the totals of both and of all.
class CTotals : public CTotallingGrid
{
public:
    static constexpr int kRows = 50, kColumns = 6;
    CTotals()
    {
        for (const char* const heading : {"A", "B", "C", "D", "E", "F", "All"})
            AddColumn(heading[0], heading, Format::Amount);
        for (int row = 0; row <= kRows; ++row)
            AppendRow();
        SetRowTotalling(kRows, kColumns, kRows, 0, kColumns - 1); // the sum of sums, set first
        for (int row = 0; row < kRows; ++row)
            SetRowTotalling(row, kColumns, row, 0, kColumns - 1);
        for (int column = 0; column < kColumns; ++column) {
            SetColumnTotalling(kRows, column, column, 0, kRows - 1);
            for (int row = 0; row < kRows; ++row)
                SetCellAmount(row, column, OfPence(100 * (row - 10 * column)));
        }
        UpdateTotals(true);
    }
};

class Grids : public ::testing::Test, protected ::Test::Practice, protected ::Test::GridStories
{
protected:
    Grids()
    {
        SetCurrentTaxYear(2024 - 1991);
        ::Test::SetNow(2024, 6, 1, 10, 0, 0); // a leap year, the one before it is none
        Around("Payments, three at most", [](::Test::Acts inside) {
            COneGrid<CPayments> dialog;
            dialog.grid.SetMaximumRows(3);
            dialog.grid.SetDeleteButton(&dialog.button);
            Work(dialog, std::move(inside));
        });
        On("The first row cannot be changed", [this] {
            for (int column = 0; column < Grid().GetColumnCount(); ++column)
                Grid().SetCellReadOnly(0, column);
        });
        On("Ben pays, too", [this] { Grid().SetColumnChoices(4, {"Ben", "Ann"}); });
        On("Look for a new row", [this] { static_cast<CInsertableGrid&>(Grid()).CheckForNewRow(); });
        Opens<COneGrid<CTotals>>("Totals");
        Is("Totals computed", [this] {
            const std::size_t before = std::exchange(m_computed, Totals().GetComputedCount());
            return m_computed - before;
        });
        On("The program writes into", [this](const std::string& cell, const std::string& text) {
            const auto [row, column] = PlaceOf(cell);
            CAmt amount;
            amount.Parse(text.c_str());
            Totals().SetCellAmount(row, column, amount);
            Totals().UpdateTotals(true);
        });
        On("The program shows an error in", [this](const std::string& cell) {
            const auto [row, column] = PlaceOf(cell);
            Totals().SetCellError(row, column);
            Totals().OnCellEndEdit(row, column);
        });
        Around("Shares of 100.01 among three", [this](const ::Test::Acts& inside) {
            COneGrid<CEntitySplitGrid> dialog(columns);
            list.Open();
            Fill(dialog.grid, OfPence(10'001), 3);
            Work(dialog, inside);
            Fill(dialog.grid, CAmt::kZero, 3, true, true);
            EXPECT_EQ(InTable("BRIXBTaxNoTaxInvestmentIncomeSplit: lID"), "") << "read-only";
            Fill(dialog.grid, CAmt::kZero, 3, true);
        });
        Is("Shares", [this] { return Shares(SplitGrid()); });
        On("Read-only", [this](const std::string& yes) { SplitGrid().SetReadOnly(yes == "yes"); });
        On("By per cent", [this] { SplitGrid().OnUsePCentSplit(1); });
        On("By amount", [this] { SplitGrid().OnUsePCentSplit(0); });
        On("The amount becomes",
           [this](const std::string& pence) { SplitGrid().UpdateNetAmount(OfPence(std::stoi(pence))); });
        Is("The first share is", [this] { return SplitGrid().GetShareAmount(0).Format(); });
        On("The program selects client 1",
           [this] { EXPECT_TRUE(SplitGrid().SelectClient(1, 0) && !SplitGrid().SelectClient(1, 1)); });
        Around("A third each", [](::Test::Acts inside) {
            CDefaultSplitBaseDlg sheet("Split");
            CDefaultSplitBasePage page;
            sheet.AddPage(&page);
            EXPECT_EQ(page.GetRemainingGrid().GetCellText(0, 1), "100.00000000") << "without rows";
            page.SetRow(0, 33.33333333);
            page.SetRow(2, 33.33333334);
            page.SetRow(1, 33.33333333);
            EXPECT_EQ(Work(sheet, std::move(inside)), IDOK);
            page.SetReadOnly(true);
            EXPECT_TRUE(page.Validate());
        });
        On("Stored", InTable);
    }
    ~Grids() override { CCurrentTaxYearSingleton::Destroy(); }
    void Fill(CEntitySplitGrid& grid, const CAmt& amount, int count, bool saves = false, bool readOnly = false)
    {
        CEntityArray entities;
        for (int i = 1; i <= count; ++i)
            entities.Add({i, 0, ("E" + std::to_string(i)).c_str()});
        CDataExchange exchange(nullptr, saves);
        grid.DDXFunc(&exchange, amount, entities, 0, readOnly, list);
    }
    CEntitySplitGrid& SplitGrid() const { return static_cast<CEntitySplitGrid&>(Grid()); }
    CTotals& Totals() const { return static_cast<CTotals&>(Grid()); }
    /// Of the amount, of each entity, and what is left; "-" for nothing.
    static std::string Shares(const CEntitySplitGrid& grid)
    {
        std::string text;
        for (int row = 0; row < grid.GetRowCount(); ++row) {
            const CString share = grid.GetCellText(row, CEntitySplitGrid::kShare);
            text += (row ? ", " : "") + (share.IsEmpty() ? "-" : share.Str());
        }
        return text;
    }
    Split list;
    const CEntitySplitGrid::ShareColumns columns{Split::kClientID, -1, Split::kShare, -1};
    std::size_t m_computed = 0;
};
STORIES(Grids, "MorvUt/ui/Grids.story");

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

TEST(CChangeOfBasisGrid, SumsItsColumnsAndGoesToANegativeResult)
{
    constexpr Afx::StringResource kStrings[] = {{1, "Sole"}, {2, "Partner"}};
    const Afx::ResourceContext resources(kStrings, 2);
    const Afx::ResourceContextGuard guard(resources);
    Kiln::CAmtEdit before, result;
    CChangeOfBasisGrid grid;
    grid.Init(before, result, 1, 2);
    EXPECT_EQ(grid.GetColumn(2)->heading, "Partner");
    grid.Set(OfPence(100), OfPence(200), CAmt(), OfPence(300), 1);
    grid.Set(OfPence(400), CAmt(), CAmt(), OfPence(-300), 2);
    EXPECT_EQ(before.Text() + " " + result.Text(), "5.00 ") << "nothing for zero";
    EXPECT_FALSE(grid.Validate(1, 0, 0));
    EXPECT_EQ(grid.GetCurrentRow() * 10 + grid.GetCurrentColumn(), 32);
    grid.SetCellAmount(0, 1, CAmt());
    ::Test::Windows().Answer(IDNO);
    EXPECT_FALSE(grid.Validate(0, IDS_BASIS_RESULT, 1));
    EXPECT_EQ(::Test::Windows().Messages().back().text, "Result") << "a string of the library's";
}
