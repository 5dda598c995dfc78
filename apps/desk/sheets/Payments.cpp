#include "sheets/Payments.h"

#include "Afx/windows/DataExchange.h"
#include "layouts/Sheets.h"
#include "MorvUt/res/Strings.h"
#include "MorvUt/ui/grids/Totals.h"
#include "Remembered.h"

namespace Desk
{

using Kiln::CAmt;
using Lattice::Format;
using Payment = Brix::CNewInterestPayment;

namespace
{

constexpr char kPaymentsGrid[] = "Payments";
constexpr InsertableColumn kPaymentColumns[] = {
    {1, kColumnRequired, "Date", Format::Date},
    {2, kColumnRequired, "Net", Format::Amount},
    {3, 0, "Tax", Format::Amount},
    {4, kColumnNotTested, "Gross", Format::Amount},
    {0, 0},
};

/// What a tax that was not entered adds to the net amount: nothing.
CAmt GrossOf(const CAmt& net, const CAmt& tax) { return net.IsNull() ? tax : tax.IsNull() ? net : net + tax; }

} // namespace

// The grid.

const InsertableColumn* CPaymentsPage::CPaymentGrid::GetColumnDefinitions() const { return kPaymentColumns; }

CAmt CPaymentsPage::CPaymentGrid::Amount(int row, int column) const
{
    return Lattice::IsEmpty(GetCell(row, column)) ? CAmt() : GetCellAmount(row, column);
}

void CPaymentsPage::CPaymentGrid::OnCalcRow(int row)
{
    SetCellResult(row, kGross, GrossOf(Amount(row, kNet), Amount(row, kTax)));
    SetCellReadOnly(row, kGross);
}

void CPaymentsPage::CPaymentGrid::OnGridCellEndEdit(int row, int column)
{
    CInsertableGrid::OnGridCellEndEdit(row, column);
    if (!IsChangingMany())
        m_page.ShowTotals();
    m_page.SetModified();
}

void CPaymentsPage::CPaymentGrid::OnManyChanged()
{
    CInsertableGrid::OnManyChanged();
    m_page.ShowTotals();
}

bool CPaymentsPage::CPaymentGrid::OnDeleteRow(int row)
{
    const bool isDeleted = CInsertableGrid::OnDeleteRow(row);
    m_page.ShowTotals();
    m_page.SetModified();
    return isDeleted;
}

void CPaymentsPage::CPaymentGrid::OnUndone()
{
    CInsertableGrid::OnUndone();
    m_page.ShowTotals();
}

CString CPaymentsPage::CTotalsGrid::WhyCell(int, int column) const
{
    CString why = LibraryText(IDS_GRID_SUM_OF);
    bool isAny = false;
    for (int row = 0; row < m_page.m_grid.GetRowCount(); ++row)
        if (const CString text = m_page.m_grid.GetCellText(row, column); !text.IsEmpty()) {
            why += "\n" + m_page.m_grid.GetCellText(row, kPaid) + ": " + text;
            isAny = true;
        }
    return isAny ? why : LibraryText(IDS_GRID_SUM_OF_NOTHING);
}

// The page.

BEGIN_MESSAGE_MAP(CPaymentsPage, TXPropertyPage)
ON_BN_CLICKED(IDC_PAYMENTS_DELETE, OnRemove)
END_MESSAGE_MAP()

CPaymentsPage::CPaymentsPage(Brix::CNewInterest& interest) : TXPropertyPage(kPaymentsLayout), m_interest(interest)
{
    m_grid.SetupGrid();
    m_grid.GetUWEdit(kPaymentColumns[kPaid].id).m_bUnderwriting = false; // payments are of the tax year
    for (const InsertableColumn* column = kPaymentColumns; column->id != 0; ++column)
        m_totals.AddColumn(column->id, column->heading, column->id == 1 ? Format::Text : column->format);
    const int row = m_totals.AppendRow();
    m_totals.SetRowHeading(row, "Total");
    m_totals.SetCell(row, kPaid, {CString("Total"), Format::Text, true});
    m_totals.SetTotalRow(row);
    for (int column = kNet; column <= kGross; ++column)
        m_totals.SetCell(row, column, {CAmt(), Format::Amount, true, false, true});
}

CPaymentsPage::~CPaymentsPage() = default;

void CPaymentsPage::DoDataExchange(CDataExchange* exchange)
{
    DDX_Control(exchange, IDC_PAYMENTS_GRID, m_grid);
    DDX_Control(exchange, IDC_PAYMENTS_TOTALS, m_totals);
    m_grid.DDX(exchange);
}

bool CPaymentsPage::OnInitDialog()
{
    const bool setsFocus = TXPropertyPage::OnInitDialog();
    m_grid.SetDeleteButton(GetDlgItem(IDC_PAYMENTS_DELETE));
    RestoreWidths(m_grid, kPaymentsGrid);
    m_grid.DeleteAllRows();
    for (m_payments.Open({{Payment::kNewInterestID, m_interest.GetID()}}, {{Payment::kOrdering}}); !m_payments.IsEOL();
         m_payments.MoveNext()) {
        m_grid.AddRow();
        const int row = m_grid.GetRowCount() - 1;
        if (m_payments.GetPaid().IsValid())
            m_grid.SetCellValue(row, kPaid, m_payments.GetPaid());
        m_grid.SetCellAmount(row, kNet, m_payments.GetNet());
        m_grid.SetCellAmount(row, kTax, m_payments.GetTax());
        m_grid.OnCalcRow(row);
    }
    m_grid.CheckForNewRow();
    m_grid.ClearUndo();
    ShowTotals();
    return setsFocus;
}

void CPaymentsPage::OnDestroy()
{
    KeepWidths(m_grid, kPaymentsGrid);
    m_grid.SetDeleteButton(nullptr);
    TXPropertyPage::OnDestroy();
}

void CPaymentsPage::OnRemove() { m_grid.DeleteCurrentRow(); }

void CPaymentsPage::ShowTotals()
{
    for (int column = kNet; column <= kGross; ++column) {
        std::vector<CAmt> amounts;
        amounts.reserve(static_cast<std::size_t>(m_grid.GetRowCount()));
        for (int row = 0; row < m_grid.GetRowCount(); ++row)
            amounts.push_back(m_grid.Amount(row, column));
        m_totals.SetCellResult(0, column, ShownTotal(SumOf(amounts)));
    }
}

bool CPaymentsPage::IsBlank(int row) const
{
    for (int column = kPaid; column <= kTax; ++column)
        if (!Lattice::IsEmpty(m_grid.GetCell(row, column)))
            return false;
    return true;
}

/// The rows of the grid become those of the table, the first the first.
void CPaymentsPage::OnOK()
{
    m_payments.CheckStored({{Payment::kNewInterestID, m_interest.GetID()}});
    int stored = 0;
    for (int row = 0; row < m_grid.GetRowCount(); ++row) {
        if (IsBlank(row))
            continue;
        if (!m_payments.MoveTo(stored)) {
            m_payments.AddNew();
            m_payments.SetNewInterestID(m_interest.GetID());
        }
        const Lattice::Cell paid = m_grid.GetCell(row, kPaid);
        const auto* const date = std::get_if<Kiln::CDate>(&paid.value);
        m_payments.SetOrdering(++stored);
        m_payments.SetPaid(date ? *date : Kiln::CDate());
        m_payments.SetNet(m_grid.Amount(row, kNet));
        m_payments.SetTax(m_grid.Amount(row, kTax));
        m_payments.Update();
    }
    while (m_payments.MoveTo(stored))
        m_payments.Delete();
    m_grid.ClearUndo();
    TXPropertyPage::OnOK();
}

} // namespace Desk
