// A totalling grid without a display, against a plain array of pence with sums by hand.

#include <algorithm>
#include <numeric>
#include <random>
#include <utility>
#include <vector>

#include "ui/Ui.h"

namespace Ui
{
namespace
{

constexpr unsigned kGridId = 101;
constexpr Afx::LayoutRow kGridRows[] = {{Afx::ControlKind::Custom, kGridId, "", 0, 0}};
constexpr Afx::DialogLayout kGridLayout = Afx::LayoutOf("Amounts", kGridRows);
constexpr std::size_t kTotals = kRows + kColumns + 1, kFollowing = 3; // of the row, of the column, of all

/// Random pence, up to 99,999.99 and the same each time, in the order of the rows.
const std::vector<std::int64_t>& Amounts()
{
    static const std::vector<std::int64_t> amounts = [] {
        std::mt19937 random(1);
        std::vector<std::int64_t> made(static_cast<std::size_t>(kRows * kColumns));
        for (std::int64_t& pence : made)
            pence = 1 + static_cast<std::int64_t>(random() % 9'999'999);
        return made;
    }();
    return amounts;
}

template<class Put>
void PutAmounts(Put put)
{
    auto amount = Amounts().begin();
    for (int row = 0; row < kRows; ++row)
        for (int column = 0; column < kColumns; ++column)
            put(row, column, *amount++);
}

void TimeFilling(benchmark::State& state, Open open)
{
    open([&state](Summing& grid) {
        for (auto _ : state)
            grid.Fill();
    });
}

void TimeEditing(benchmark::State& state, Open open)
{
    open([&state](Summing& grid) {
        grid.Fill();
        bool isOther = false;
        for (auto _ : state)
            grid.Edit(5, 3, std::exchange(isOther, !isOther) ? "1,234.56" : "98,765.43");
    });
}

/// What all cells hold after some edits.
std::vector<std::int64_t> CellsAfterEdits(Open open)
{
    std::vector<std::int64_t> cells;
    open([&cells](Summing& grid) {
        std::mt19937 random(2);
        grid.Fill();
        for (int i = 0; i < 40; ++i) {
            const auto row = static_cast<int>(random() % kRows), column = static_cast<int>(random() % kColumns);
            grid.Edit(row, column, TextOf(static_cast<std::int64_t>(random() % 1'000'000)).c_str());
        }
        for (int row = 0; row <= kRows; ++row)
            for (int column = 0; column <= kColumns; ++column)
                cells.push_back(grid.At(row, column));
    });
    return cells;
}

} // namespace

std::string TextOf(std::int64_t pence)
{
    constexpr std::int64_t kPound = 100;
    constexpr std::size_t kGroup = 3;
    std::string text = std::to_string(pence / kPound);
    for (std::size_t at = text.size(); at > kGroup;)
        text.insert(at -= kGroup, 1, ',');
    return text + '.' + std::to_string(kPound + pence % kPound).substr(1);
}

std::int64_t PenceOf(std::string_view text) noexcept
{
    std::int64_t pence = 0;
    for (const char character : text)
        if (character >= '0' && character <= '9')
            pence = pence * 10 + (character - '0');
    return pence;
}

void Ledger::Fill()
{
    std::fill_n(&m_cells[0][0], (kRows + 1) * (kColumns + 1), 0);
    PutAmounts([this](int row, int column, std::int64_t pence) {
        m_cells[row][column] = pence;
        m_cells[row][kColumns] += pence;
        m_cells[kRows][column] += pence;
        m_cells[kRows][kColumns] += pence;
    });
}

void Ledger::Edit(int row, int column, const char* text)
{
    m_cells[row][column] = PenceOf(text);
    m_cells[row][kColumns] = std::accumulate(m_cells[row], m_cells[row] + kColumns, std::int64_t{0});
    m_cells[kRows][column] = std::accumulate(m_cells, m_cells + kRows, std::int64_t{0},
                                             [=](std::int64_t sum, const auto& one) { return sum + one[column]; });
    m_cells[kRows][kColumns] = std::accumulate(m_cells[kRows], m_cells[kRows] + kColumns, std::int64_t{0});
}

OurGrid::OurGrid(std::function<void()> draw) : CDialog(kGridLayout), m_draw(std::move(draw))
{
    grid.Create(this, kGridId);
    for (int column = 0; column <= kColumns; ++column)
        grid.AddColumn(column + 1, column < kColumns ? "Month" : "Year", Lattice::Format::Amount, 0, kColumnWidth);
}

void OurGrid::Fill()
{
    const std::size_t before = grid.GetComputedCount();
    grid.DeleteAllRows();
    grid.Reset();
    for (int row = 0; row <= kRows; ++row) {
        grid.AppendRow();
        grid.SetRowTotalling(row, kColumns, row, 0, kColumns - 1);
    }
    for (int column = 0; column < kColumns; ++column)
        grid.SetColumnTotalling(kRows, column, column, 0, kRows - 1);
    PutAmounts([this](int row, int column, std::int64_t pence) {
        grid.SetCellAmount(row, column, Kiln::CAmt::FromPence(pence));
    });
    grid.UpdateTotals(true);
    Require(grid.GetComputedCount() - before == kTotals, "filling has computed another number of totals");
    m_draw();
}

/// As the user does, in a field over the cell.
void OurGrid::Edit(int row, int column, const char* text)
{
    const std::size_t before = grid.GetComputedCount();
    grid.GoTo(row, column);
    Require(grid.BeginEdit(), "the cell cannot be edited");
    m_draw();
    Require(grid.IsEditing(), "the field has not stayed");
    grid.GetEditor()->SetWindowText(text);
    Require(grid.EndEdit(), "the cell has refused its text");
    Require(grid.GetComputedCount() - before == kFollowing, "an edit has computed another number of totals");
    m_draw();
}

void RegisterGrids(const std::string& where, Open ours, const std::string& peer, Open theirs)
{
    Require(CellsAfterEdits(ours) == CellsAfterEdits(theirs), "the peer has other sums");
    const auto add = [&](const std::string& what, void (*time)(benchmark::State&, Open)) {
        const std::string subject = what + ", " + where + '/';
        Register(subject + "ours", [=](benchmark::State& state) { time(state, ours); });
        Register(subject + peer, [=](benchmark::State& state) { time(state, theirs); });
    };
    add("grid of 12,000 amounts filled", TimeFilling);
    add("one of 12,000 amounts edited", TimeEditing);
}

void RegisterGrid(Bench::Reasons& reasons)
{
    RegisterGrids(
        "no display",
        [](const std::function<void(Summing&)>& work) {
            OurGrid grid;
            RunHeadless(grid, [&] { work(grid); });
        },
        "array of pence",
        [](const std::function<void(Summing&)>& work) {
            const auto ledger = std::make_unique<Ledger>();
            work(*ledger);
        });
    reasons["grid of 12,000 amounts filled, no display"] = "ours has cells of a format, a state and a value of any "
                                                           "kind, finds out which totals sum which others, and asks of "
                                                           "each amount whether it is one; the peer adds up numbers";
    reasons["one of 12,000 amounts edited, no display"] = "ours opens a field over the cell, reads what users type, "
                                                          "keeps what stood there for undo, and asks of each of 1024 "
                                                          "amounts whether it is one; the peer adds up numbers";
}

} // namespace Ui
