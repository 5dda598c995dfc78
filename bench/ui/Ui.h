#pragma once

// A sheet and a totalling grid, beside what a developer would write without the library.

#include <cstdint>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

#include "Afx/windows/Dialog.h"
#include "Afx/windows/WindowSystem.h"
#include "MorvUt/ui/grids/TotallingGrid.h"
#include "Ratios.h"

namespace Ui
{

constexpr int kRows = 1000, kColumns = 12; // of amounts; the totals stand in one more of each
constexpr int kColumnWidth = 44;           // dialog units

inline void Require(bool isSo, const char* what)
{
    if (!isSo)
        throw std::runtime_error(what);
}

/// "1,234.56" and its pence, which are not negative.
std::string TextOf(std::int64_t pence);
std::int64_t PenceOf(std::string_view text) noexcept;

/// A grid of amounts that keeps the sums of its rows, of its columns and of all, ours or a peer's.
class Summing
{
public:
    virtual ~Summing() = default;
    /// Makes all rows anew; the amounts are the same each time.
    virtual void Fill() = 0;
    virtual void Edit(int row, int column, const char* text) = 0;
    /// The pence of a cell or a sum.
    virtual std::int64_t At(int row, int column) const = 0;
};
/// Opens a grid, works in it, and closes it.
using Open = void (*)(const std::function<void(Summing&)>& work);

/// A plain array of pence, with sums by hand.
class Ledger : public Summing
{
public:
    void Fill() override;
    void Edit(int row, int column, const char* text) override;
    std::int64_t At(int row, int column) const override { return m_cells[row][column]; }

private:
    std::int64_t m_cells[kRows + 1][kColumns + 1];
};

/// Ours, which throws when it computes another number of totals than follow from what is done.
class OurGrid : public CDialog, public Summing
{
public:
    /// `draw` makes visible what has changed.
    explicit OurGrid(std::function<void()> draw = [] {});
    void Fill() override;
    void Edit(int row, int column, const char* text) override;
    std::int64_t At(int row, int column) const override { return PenceOf(grid.GetCellText(row, column).View()); }

    CTotallingGrid grid;

private:
    std::function<void()> m_draw;
};

/// Opens the dialog while `system` is installed.
void RunIn(std::unique_ptr<Afx::WindowSystem> system, CDialog& dialog);
/// Without a display: does `work` in the dialog, which ends then.
void RunHeadless(CDialog& dialog, const std::function<void()>& work);

/// An entry's time, the processor's of all threads.
void Register(const std::string& entry, const std::function<void(benchmark::State& state)>& time);
/// Filling and editing a grid `where`. Throws when the peer's sums are others.
void RegisterGrids(const std::string& where, Open ours, const std::string& peer, Open theirs);

// The subjects. Each throws when the peer does not agree with ours.
void RegisterSheet(Bench::Reasons& reasons);
void RegisterGrid(Bench::Reasons& reasons);
void RegisterWindows(Bench::Reasons& reasons); // within RunWithWindows

/// Runs with real windows; `noDisplay` when there is no display.
int RunWithWindows(const std::function<int()>& run, int noDisplay);

} // namespace Ui
