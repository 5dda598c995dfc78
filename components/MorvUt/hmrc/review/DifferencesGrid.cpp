#include "MorvUt/hmrc/review/DifferencesGrid.h"

#include "Afx/windows/DataExchange.h"
#include "MorvUt/res/Strings.h"

using Lattice::CGrid;
using Lattice::Format;

IMPLEMENT_DYNAMIC(CMTDDifferencesGrid, CGrid)

CArray<GridAction> CMTDDifferencesGrid::m_arrGridActions;

CMTDDifferencesGrid::CMTDDifferencesGrid(bool hasEstimates)
{
    m_arrGridActions.RemoveAll();
    AddColumn(1, "", Format::Text);
    AddColumn(2, LibraryText(IDS_DIFFERENCES_HMRC), Format::Text);
    AddColumn(3, LibraryText(IDS_DIFFERENCES_RETURN), Format::Text);
    if (hasEstimates)
        AddColumn(4, LibraryText(IDS_DIFFERENCES_NOTE), Format::Text);
}

void CMTDDifferencesGrid::SetHeadingRow(const CString& text)
{
    m_arrGridActions.Add({GridAction::Kind::Heading, text, {}, {}, {}});
}

void CMTDDifferencesGrid::SetTextRow(const CString& caption, const CString& hmrc, const CString& ofReturn)
{
    m_arrGridActions.Add({GridAction::Kind::Text, caption, hmrc, ofReturn, {}});
}

void CMTDDifferencesGrid::SetDateRow(const CString& caption, const Kiln::CDate& hmrc, const Kiln::CDate& ofReturn)
{
    m_arrGridActions.Add({GridAction::Kind::Date, caption, hmrc, ofReturn, {}});
}

void CMTDDifferencesGrid::SetAmountRow(const CString& caption, const Kiln::CAmt& hmrc, const Kiln::CAmt& ofReturn)
{
    m_arrGridActions.Add({GridAction::Kind::Amount, caption, hmrc, ofReturn, {}});
}

void CMTDDifferencesGrid::SetEstimateAmountRow(const CString& caption, const Kiln::CAmt& hmrc,
                                               const Kiln::CAmt& ofReturn, const CString& note)
{
    m_arrGridActions.Add({GridAction::Kind::EstimateAmount, caption, hmrc, ofReturn, note});
}

void CMTDDifferencesGrid::DDX(CDataExchange* exchange)
{
    CGrid::DDX(exchange);
    if (exchange->m_bSaveAndValidate)
        return;
    SetRedraw(false);
    DeleteAllRows();
    for (const GridAction& action : m_arrGridActions) {
        const int row = AppendRow();
        SetRowHeading(row, action.caption);
        CGrid::SetHeadingRow(row, action.kind == GridAction::Kind::Heading);
        const Format format = action.kind == GridAction::Kind::Date     ? Format::Date
                              : action.kind >= GridAction::Kind::Amount ? Format::Amount
                                                                        : Format::Text;
        SetCell(row, kCaption, {action.caption, Format::Text, true});
        SetCell(row, kHmrc, {action.left, format, true});
        SetCell(row, kReturn, {action.right, format, true});
        SetCell(row, kNote, {action.note, Format::Text, true});
    }
    SetRedraw(true);
}
