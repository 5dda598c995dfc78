#include "MorvUt/ui/grids/TotallingGrid.h"

#include <algorithm>

#include "MorvUt/res/Strings.h"
#include "MorvUt/ui/grids/Totals.h"

using Lattice::CGrid;

IMPLEMENT_DYNAMIC(CTotallingGrid, CGrid)

int CTotallingGrid::SetColumnTotalling(int row, int column, int summed, int first, int last)
{
    return Add(std::make_unique<CGridTotalInfoColumn>(*this, row, column, summed, first, last), summed, true);
}

int CTotallingGrid::SetRowTotalling(int row, int column, int summed, int first, int last)
{
    return Add(std::make_unique<CGridTotalInfoRow>(*this, row, column, summed, first, last), summed, false);
}

int CTotallingGrid::Add(std::unique_ptr<CGridTotalInfoABC> total, int summed, bool isColumn)
{
    Lattice::Cell cell = GetCell(total->GetRow(), total->GetColumn());
    cell.format = Lattice::Format::Amount;
    cell.readOnly = cell.isTotal = true;
    SetCell(total->GetRow(), total->GetColumn(), cell);
    (isColumn ? m_overColumn : m_overRow)[summed].push_back(m_totals.size());
    m_totals.push_back(std::move(total));
    m_order.clear();
    return 1;
}

void CTotallingGrid::Reset()
{
    m_totals.clear();
    m_overColumn.clear();
    m_overRow.clear();
    m_order.clear();
    m_due.clear();
}

std::vector<std::size_t> CTotallingGrid::TotalsOver(int row, int column) const
{
    std::vector<std::size_t> over;
    const auto collect = [&](const auto& totals, int key) {
        if (const auto found = totals.find(key); found != totals.end())
            for (const std::size_t index : found->second)
                if (m_totals[index]->Sums(row, column))
                    over.push_back(index);
    };
    collect(m_overColumn, column);
    collect(m_overRow, row);
    return over;
}

/// Totals that sum themselves, round about, come in the order in which they were set.
const std::vector<std::size_t>& CTotallingGrid::Order()
{
    if (!m_order.empty() || m_totals.empty())
        return m_order;
    std::vector<int> waitsFor(m_totals.size());
    for (const auto& total : m_totals)
        for (const std::size_t over : TotalsOver(total->GetRow(), total->GetColumn()))
            ++waitsFor[over];
    std::vector<bool> isPlaced(m_totals.size());
    m_places.resize(m_totals.size());
    const auto place = [&](std::size_t index) {
        isPlaced[index] = true;
        m_places[index] = m_order.size();
        m_order.push_back(index);
    };
    for (std::size_t i = 0; i < m_totals.size(); ++i)
        if (waitsFor[i] == 0)
            place(i);
    for (std::size_t at = 0; at < m_order.size(); ++at)
        for (const std::size_t over : TotalsOver(m_totals[m_order[at]]->GetRow(), m_totals[m_order[at]]->GetColumn()))
            if (--waitsFor[over] == 0 && !isPlaced[over])
                place(over);
    for (std::size_t i = 0; i < m_totals.size(); ++i)
        if (!isPlaced[i])
            place(i);
    return m_order;
}

void CTotallingGrid::Compute(std::size_t index, bool redraw)
{
    const CGridTotalInfoABC& total = *m_totals[index];
    ++m_computed;
    SetTotal(total.GetRow(), total.GetColumn(), SumOf(total.GetAmounts()), redraw);
}

void CTotallingGrid::UpdateTotals(bool redraw)
{
    SetRedraw(false);
    for (const std::size_t index : Order())
        Compute(index, false);
    SetRedraw(true);
    if (redraw)
        Changed(Afx::Part::Cells);
}

void CTotallingGrid::NoteDue(int row, int column)
{
    Order(); // as far as it was not worked out
    for (const std::size_t index : TotalsOver(row, column))
        m_due.insert(m_places[index]);
}

void CTotallingGrid::OnCellEndEdit(int row, int column)
{
    NoteDue(row, column);
    ComputeDue();
}

void CTotallingGrid::ComputeDue()
{
    Order();
    while (!m_due.empty()) {
        const std::size_t place = *m_due.begin();
        m_due.erase(m_due.begin());
        const CGridTotalInfoABC& total = *m_totals[m_order[place]];
        const CString before = GetCellText(total.GetRow(), total.GetColumn());
        Compute(m_order[place], true);
        if (GetCellText(total.GetRow(), total.GetColumn()) != before)
            for (const std::size_t over : TotalsOver(total.GetRow(), total.GetColumn()))
                if (m_places[over] > place)
                    m_due.insert(m_places[over]);
    }
}

void CTotallingGrid::OnGridCellEndEdit(int row, int column)
{
    CGrid::OnGridCellEndEdit(row, column);
    NoteDue(row, column);
    if (!IsChangingMany())
        ComputeDue();
}

void CTotallingGrid::OnManyChanged()
{
    CGrid::OnManyChanged();
    ComputeDue();
}

void CTotallingGrid::OnUndone()
{
    CGrid::OnUndone();
    UpdateTotals(true);
}

Kiln::CAmt CTotallingGrid::GetCellAmt(int row, int column)
{
    const Kiln::CAmt amount = GetCellAmount(row, column);
    return amount.IsValid() || !Lattice::IsEmpty(GetCell(row, column)) ? amount : Kiln::CAmt();
}

void CTotallingGrid::SetTotal(int row, int column, const Kiln::CAmt& total, bool redraw)
{
    if (!redraw)
        SetRedraw(false);
    SetCellResult(row, column, ShownTotal(total));
    if (!redraw)
        SetRedraw(true);
}

CString CTotallingGrid::WhyCell(int row, int column) const
{
    constexpr int kMost = 12; // a message must stay readable
    const auto found = std::find_if(m_totals.begin(), m_totals.end(), [=](const auto& total) {
        return total->GetRow() == row && total->GetColumn() == column;
    });
    if (found == m_totals.end())
        return {};
    CString why = LibraryText(IDS_GRID_SUM_OF);
    int named = 0, more = 0;
    for (const auto& [summedRow, summedColumn] : (*found)->GetCells()) {
        const CString text = GetCellText(summedRow, summedColumn);
        if (text.IsEmpty())
            continue;
        if (++named > kMost) {
            ++more;
            continue;
        }
        CString place = summedColumn == column ? GetRowHeading(summedRow) : GetColumn(summedColumn)->heading;
        if (place.IsEmpty())
            place.Format("%d", summedRow + 1);
        why += "\n" + place + ": " + text;
    }
    if (more > 0)
        why.AppendFormat("\n... and %d more", more);
    return named == 0 ? LibraryText(IDS_GRID_SUM_OF_NOTHING) : why;
}
