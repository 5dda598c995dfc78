#pragma once

// The sheet and the page for a default split in per cent.

#include <vector>

#include "Lattice/Grid.h"
#include "MorvUt/Export.h"
#include "MorvUt/ui/sheets/TXPropertyPage.h"
#include "MorvUt/ui/sheets/TXPropertySheet.h"

class MORVUT_API CDefaultSplitBaseDlg : public TXPropertySheet
{
    DECLARE_DYNAMIC(CDefaultSplitBaseDlg)
    using TXPropertySheet::TXPropertySheet;
};

/// Percentages, a row each, and below them what remains of 100. The derived page makes the rows and keeps them.
class MORVUT_API CDefaultSplitBasePage : public TXPropertyPage
{
    DECLARE_DYNAMIC(CDefaultSplitBasePage)

    static constexpr int kPercentColumn = 1;

    CDefaultSplitBasePage();

    /// The percentage of a row; rows up to it are added.
    void SetRow(int row, double percent);
    /// Shows what remains.
    void OnUpdateRemaining();
    /// Whether the split may be kept. One that does not add up to 100 per cent, to eight decimals, is asked about.
    bool Validate();
    /// Without it the page is not checked: it is active at first.
    void SetActiveForValidation(bool active) noexcept { m_isActive = active; }
    void SetReadOnly(bool readOnly);
    Lattice::CGrid& GetGrid() noexcept { return m_grid; }
    Lattice::CGrid& GetRemainingGrid() noexcept { return m_remaining; }

    bool OnKillActive() override;

protected:
    bool OnInitDialog() override;
    void DoDataExchange(CDataExchange* exchange) override;
    /// What is asked when the split does not add up.
    virtual CString GetNotAllocatedMessage();

private:
    /// Tells its page when a percentage has changed.
    class CPercentGrid : public Lattice::CGrid
    {
    public:
        explicit CPercentGrid(CDefaultSplitBasePage& page) noexcept : m_page(page) {}

    protected:
        void OnGridCellEndEdit(int row, int column) override;
        void OnUndone() override;
        bool CanDeleteRow(int) override { return false; } // the derived page makes the rows

    private:
        CDefaultSplitBasePage& m_page;
    };

    std::vector<double> Percents() const;

    CPercentGrid m_grid{*this};
    Lattice::CGrid m_remaining;
    bool m_isActive = true;
    bool m_readOnly = false;
};
