#pragma once

// The payments of a source of interest.

#include "Afx/windows/MessageMap.h"
#include "Brix/Records.h"
#include "MorvUt/ui/grids/InsertableGrid.h"
#include "MorvUt/ui/sheets/TXPropertyPage.h"

namespace Desk
{

/// A payment a row: its day, the net amount, the tax taken off, and the gross amount that the two make. Below it the
/// totals.
class CPaymentsPage : public TXPropertyPage
{
public:
    /// Of the list's current row, which may be new.
    explicit CPaymentsPage(Brix::CNewInterest& interest);
    ~CPaymentsPage() override;
    void OnOK() override;

protected:
    bool OnInitDialog() override;
    void DoDataExchange(CDataExchange* exchange) override;
    void OnDestroy() override;
    DECLARE_MESSAGE_MAP()
    afx_msg void OnRemove();

private:
    static constexpr int kPaid = 0, kNet = 1, kTax = 2, kGross = 3; // columns

    class CPaymentGrid : public CInsertableGrid
    {
    public:
        explicit CPaymentGrid(CPaymentsPage& page) noexcept : m_page(page) {}
        void OnCalcRow(int row) override;
        Kiln::CAmt Amount(int row, int column) const; // null for an empty cell

    protected:
        const InsertableColumn* GetColumnDefinitions() const override;
        void OnGridCellEndEdit(int row, int column) override;
        void OnManyChanged() override;
        bool OnDeleteRow(int row) override;
        void OnUndone() override;

    private:
        CPaymentsPage& m_page;
    };

    class CTotalsGrid : public Lattice::CGrid
    {
    public:
        explicit CTotalsGrid(const CPaymentsPage& page) noexcept : m_page(page) {}
        CString WhyCell(int row, int column) const override;

    private:
        const CPaymentsPage& m_page;
    };

    void ShowTotals();
    bool IsBlank(int row) const;

    Brix::CNewInterest& m_interest;
    Brix::CNewInterestPayment m_payments;
    CPaymentGrid m_grid{*this};
    CTotalsGrid m_totals{*this};
};

} // namespace Desk
