#include "MorvUt/ui/grids/DefaultSplit.h"

#include "Afx/windows/DataExchange.h"
#include "Afx/windows/MessageBox.h"
#include "MorvUt/res/layouts/DefaultSplit.h"
#include "MorvUt/res/Strings.h"
#include "MorvUt/ui/grids/Percentages.h"

using Lattice::Format;

IMPLEMENT_DYNAMIC(CDefaultSplitBaseDlg, TXPropertySheet)
IMPLEMENT_DYNAMIC(CDefaultSplitBasePage, TXPropertyPage)

CDefaultSplitBasePage::CDefaultSplitBasePage() : TXPropertyPage(kDefaultSplitLayout)
{
    m_grid.AddColumn(1, LibraryText(IDS_SPLIT_NAME), Format::Text);
    m_grid.AddColumn(2, LibraryText(IDS_SPLIT_SHARE), Format::Percent);
    m_remaining.AddColumn(1, "", Format::Text);
    m_remaining.AddColumn(2, "", Format::Percent);
    const int row = m_remaining.AppendRow();
    m_remaining.SetRowHeading(row, LibraryText(IDS_SPLIT_LEFT));
    m_remaining.SetCell(row, 0, {LibraryText(IDS_SPLIT_LEFT), Format::Text, true});
    m_remaining.SetCellReadOnly(row, kPercentColumn);
    OnUpdateRemaining();
}

void CDefaultSplitBasePage::DoDataExchange(CDataExchange* exchange)
{
    DDX_Control(exchange, IDC_DEFAULT_SPLIT_GRID, m_grid);
    DDX_Control(exchange, IDC_DEFAULT_SPLIT_REMAINING, m_remaining);
    m_grid.DDX(exchange);
}

bool CDefaultSplitBasePage::OnInitDialog()
{
    const bool setsFocus = TXPropertyPage::OnInitDialog();
    m_grid.SetAccessibleName(Text());
    m_remaining.SetAccessibleName(LibraryText(IDS_SPLIT_LEFT));
    OnUpdateRemaining();
    return setsFocus;
}

void CDefaultSplitBasePage::SetRow(int row, double percent)
{
    while (m_grid.GetRowCount() <= row)
        m_grid.SetCellReadOnly(m_grid.AppendRow(), 0);
    m_grid.SetCellNumber(row, kPercentColumn, percent);
    m_grid.SetCellReadOnly(row, kPercentColumn, m_readOnly);
    m_grid.ClearUndo();
    OnUpdateRemaining();
}

std::vector<double> CDefaultSplitBasePage::Percents() const
{
    std::vector<double> percents;
    for (int row = 0; row < m_grid.GetRowCount(); ++row) {
        const Lattice::Cell cell = m_grid.GetCell(row, kPercentColumn);
        if (const auto* const percent = std::get_if<double>(&cell.value))
            percents.push_back(*percent);
    }
    return percents;
}

void CDefaultSplitBasePage::OnUpdateRemaining()
{
    const std::vector<double> percents = Percents();
    const PercentShare left{PercentShare::Kind::Percent, PercentRemainder(std::span<const double>(percents))};
    m_remaining.SetCellNumber(0, kPercentColumn, left.Percent());
}

bool CDefaultSplitBasePage::Validate()
{
    if (!m_isActive || m_readOnly || IsSplitComplete(Percents()))
        return true;
    return AfxMessageBox(GetNotAllocatedMessage(), MB_OKCANCEL) == IDOK;
}

bool CDefaultSplitBasePage::OnKillActive() { return TXPropertyPage::OnKillActive() && Validate(); }

void CDefaultSplitBasePage::SetReadOnly(bool readOnly)
{
    m_readOnly = readOnly;
    for (int row = 0; row < m_grid.GetRowCount(); ++row)
        m_grid.SetCellReadOnly(row, kPercentColumn, readOnly);
    m_grid.ClearUndo(); // which would change them
}

CString CDefaultSplitBasePage::GetNotAllocatedMessage() { return LibraryText(IDS_SPLIT_INCOMPLETE); }

void CDefaultSplitBasePage::CPercentGrid::OnGridCellEndEdit(int row, int column)
{
    CGrid::OnGridCellEndEdit(row, column);
    m_page.OnUpdateRemaining();
    m_page.SetModified();
}

void CDefaultSplitBasePage::CPercentGrid::OnUndone()
{
    CGrid::OnUndone();
    m_page.OnUpdateRemaining();
}
