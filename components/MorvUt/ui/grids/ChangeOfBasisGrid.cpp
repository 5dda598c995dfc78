#include "MorvUt/ui/grids/ChangeOfBasisGrid.h"

#include "Afx/windows/MessageBox.h"
#include "MorvUt/res/Strings.h"
#include "MorvUt/taxyear/CurrentTaxYear.h"
#include "MorvUt/ui/grids/Totals.h"

IMPLEMENT_DYNAMIC(CChangeOfBasisGrid, CTotallingGrid)

namespace
{

constexpr int kBasisRows = 4, kResultRow = 3;

/// A string of the current module's, else of the library's.
CString BasisText(unsigned id)
{
    CString text;
    if (text.LoadString(id))
        return text;
    const Afx::ResourceContextGuard library(MorvUtResources());
    return Afx::FillPlacesOf(id, {});
}

} // namespace

void CChangeOfBasisGrid::Init(Kiln::CAmtEdit& before, Kiln::CAmtEdit& result, unsigned heading1, unsigned heading2,
                              unsigned heading3, unsigned heading4)
{
    m_before = &before;
    m_result = &result;
    AddColumn(1, "", Lattice::Format::Text);
    int id = 1;
    for (const unsigned heading : {heading1, heading2, heading3, heading4})
        if (heading != 0)
            AddColumn(++id, BasisText(heading), Lattice::Format::Amount);
    for (const unsigned caption : {IDS_BASIS_BEFORE, IDS_BASIS_ADJUSTMENT, IDS_BASIS_AFTER, IDS_BASIS_RESULT}) {
        const int row = AppendRow();
        SetRowHeading(row, LibraryText(caption));
        SetCell(row, 0, {LibraryText(caption), Lattice::Format::Text, true});
    }
    m_loaded.assign(static_cast<std::size_t>(GetColumnCount() - 1), {});
    ClearUndo();
}

void CChangeOfBasisGrid::Get(Kiln::CAmt& before, Kiln::CAmt& adjustment, Kiln::CAmt& after, Kiln::CAmt& result,
                             int column) const
{
    int row = 0;
    for (Kiln::CAmt* const amount : {&before, &adjustment, &after, &result}) {
        const bool isEmpty = Lattice::IsEmpty(GetCell(row, column));
        *amount = isEmpty ? Kiln::CAmt() : GetCellAmount(row, column);
        ++row;
    }
}

void CChangeOfBasisGrid::Set(const Kiln::CAmt& before, const Kiln::CAmt& adjustment, const Kiln::CAmt& after,
                             const Kiln::CAmt& result, int column)
{
    const BasisColumn amounts{before, adjustment, after, result};
    for (int row = 0; row < kBasisRows; ++row)
        SetCellAmount(row, column, amounts[static_cast<std::size_t>(row)]);
    if (column >= 1 && static_cast<std::size_t>(column) <= m_loaded.size())
        m_loaded[static_cast<std::size_t>(column) - 1] = amounts;
    ClearUndo();
    ShowSums();
}

bool CChangeOfBasisGrid::Validate(unsigned checkNegative, unsigned messageId, int checkChange)
{
    std::vector<BasisColumn> columns(m_loaded.size());
    for (std::size_t i = 0; i < columns.size(); ++i)
        Get(columns[i][0], columns[i][1], columns[i][2], columns[i][3], static_cast<int>(i) + 1);
    const BasisChecks checks{checkNegative != 0, checkChange != 0, GetCurrentRealTaxYear()};
    for (const BasisFinding& finding : CheckBasis(columns, m_loaded, checks)) {
        if (finding.kind == BasisFinding::Kind::Negative) {
            GoTo(kResultRow, static_cast<int>(finding.column) + 1);
            return false;
        }
        if (AfxMessageBox(BasisText(messageId), MB_YESNO) != IDYES)
            return false;
    }
    return true;
}

Kiln::CAmt CChangeOfBasisGrid::SumOfRow(int row)
{
    std::vector<Kiln::CAmt> amounts;
    for (int column = 1; column < GetColumnCount(); ++column)
        amounts.push_back(GetCellAmt(row, column));
    return SumOf(amounts);
}

void CChangeOfBasisGrid::ShowSums()
{
    if (m_before)
        m_before->SetAmt(ShownTotal(SumOfRow(0)));
    if (m_result)
        m_result->SetAmt(ShownTotal(SumOfRow(kResultRow)));
}

void CChangeOfBasisGrid::OnGridCellEndEdit(int row, int column)
{
    CTotallingGrid::OnGridCellEndEdit(row, column);
    ShowSums();
}

void CChangeOfBasisGrid::OnUndone()
{
    CTotallingGrid::OnUndone();
    ShowSums();
}
