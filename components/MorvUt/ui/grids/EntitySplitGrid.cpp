#include "MorvUt/ui/grids/EntitySplitGrid.h"

#include <algorithm>

#include "Afx/windows/DataExchange.h"
#include "MorvUt/res/Strings.h"
#include "MorvUt/ui/grids/Totals.h"

using Kiln::CAmt;
using Lattice::Format;

IMPLEMENT_DYNAMIC(CEntitySplitGrid, CTotallingGrid)

CEntitySplitGrid::CEntitySplitGrid(const ShareColumns& columns) : m_columns(columns)
{
    AddColumn(1, LibraryText(IDS_SPLIT_NAME), Format::Text);
    AddColumn(2, LibraryText(IDS_SPLIT_SHARE), Format::Amount);
}

void CEntitySplitGrid::DDXFunc(CDataExchange* exchange, const CAmt& amount, const CEntityArray& entities,
                               int usePercent, int readOnly, Quarry::CDataList& shares)
{
    DDXFunc(exchange, amount, entities, usePercent, readOnly, shares, shares);
}

void CEntitySplitGrid::DDXFunc(CDataExchange* exchange, const CAmt& amount, const CEntityArray& entities,
                               int usePercent, int readOnly, Quarry::CDataList& clientShares,
                               Quarry::CDataList& partnershipShares)
{
    CGrid::DDX(exchange);
    if (exchange->m_bSaveAndValidate) {
        if (!readOnly)
            SaveTheGrid(clientShares, partnershipShares);
        return;
    }
    m_entities = entities;
    m_usePercent = usePercent != 0;
    m_netAmount = amount;
    PopulateTheGrid(clientShares, partnershipShares);
    SetReadOnly(readOnly != 0);
}

void CEntitySplitGrid::PopulateTheGrid(Quarry::CDataList& clients, Quarry::CDataList& partnerships)
{
    m_amounts.assign(static_cast<std::size_t>(m_entities.GetSize()), CAmt());
    m_shown = m_amounts;
    for (int i = 0; i < m_entities.GetSize(); ++i) {
        Quarry::CDataList& list = m_entities[i].isPartnership ? partnerships : clients;
        if (MoveToShare(list, m_entities[i]))
            m_amounts[static_cast<std::size_t>(i)] = list.Current().GetAmount(m_columns.amount);
    }
    AddTheRowsToTheGrid();
}

bool CEntitySplitGrid::MoveToShare(Quarry::CDataList& list, const CEntity& entity) const
{
    for (bool isRow = list.MoveFirst(); isRow; isRow = list.MoveNext())
        if ((entity.isPartnership ? PPSGetPClientID(list) : CPSGetClientID(list)) == entity.id)
            return true;
    return false;
}

void CEntitySplitGrid::SaveTheGrid(Quarry::CDataList& clients, Quarry::CDataList& partnerships)
{
    for (int i = 0; i < m_entities.GetSize(); ++i) {
        const CEntity& entity = m_entities[i];
        Quarry::CDataList& list = entity.isPartnership ? partnerships : clients;
        const CAmt amount = GetShareAmount(i);
        const bool isThere = MoveToShare(list, entity);
        if (amount.IsNull()) {
            if (isThere)
                list.Delete();
            continue;
        }
        if (!isThere)
            entity.isPartnership ? ParentNewPPS(list, entity.id) : ParentNewCPS(list, entity.id);
        list.Set(m_columns.amount, amount);
        if (m_columns.percent != -1) {
            const PercentShare percent = PercentShareOf(amount, m_netAmount);
            list.Set(m_columns.percent, percent.IsPercent() ? Cellar::Value(percent.Percent()) : Cellar::Value());
        }
        list.Update();
    }
    ClearUndo();
}

void CEntitySplitGrid::AddTheRowsToTheGrid()
{
    SetRedraw(false);
    DeleteAllRows();
    const auto add = [this](const CString& name) {
        const int row = AppendRow();
        SetRowHeading(row, name);
        SetCell(row, kName, {name, Format::Text, true});
        return row;
    };
    SetCell(add(LibraryText(IDS_SPLIT_AMOUNT)), kShare, {m_netAmount, Format::Amount, true});
    for (const CEntity& entity : m_entities)
        add(entity.name);
    SetTotalRow(add(LibraryText(IDS_SPLIT_LEFT)));
    SetCellReadOnly(RemainderRow(), kShare);
    if (m_usePercent)
        SetEntitiesToPCentFormat();
    else
        SetEntitiesToAmtFormat();
    for (int i = 0; i < m_entities.GetSize(); ++i)
        ShowShare(i);
    ShowLeft();
    ClearUndo();
    SetRedraw(true);
}

void CEntitySplitGrid::OnUsePCentSplit(int usePercent)
{
    if ((usePercent != 0) == m_usePercent || (IsEditing() && !EndEdit()))
        return;
    m_usePercent = usePercent != 0;
    if (m_usePercent)
        ConvertEntityAmtsToPCent();
    else
        ConvertEntityPCentsToAmt();
    ClearUndo(); // what was typed was typed in the other unit
    UpdateTotals(true);
    ShowLeft();
}

void CEntitySplitGrid::ConvertEntityAmtsToPCent()
{
    SetEntitiesToPCentFormat();
    for (int i = 0; i < m_entities.GetSize(); ++i)
        ShowShare(i);
}

void CEntitySplitGrid::ConvertEntityPCentsToAmt()
{
    const std::vector<PercentShare> percents = PercentsShown();
    PercentsToAmounts(percents, m_netAmount, m_amounts);
    SetEntitiesToAmtFormat();
    for (int i = 0; i < m_entities.GetSize(); ++i)
        ShowShare(i);
}

void CEntitySplitGrid::SetEntitiesToAmtFormat()
{
    for (int row = 1; row < GetRowCount(); ++row)
        SetCellFormat(row, kShare, Format::Amount);
}

void CEntitySplitGrid::SetEntitiesToPCentFormat()
{
    for (int row = 1; row < GetRowCount(); ++row)
        SetCellFormat(row, kShare, Format::Percent);
}

/// The percentage in a cell, as the cell holds it.
PercentShare CEntitySplitGrid::PercentAt(int entity) const
{
    const Lattice::Cell cell = GetCell(RowOf(entity), kShare);
    if (cell.error)
        return {PercentShare::Kind::Error, 0};
    const auto* const percent = std::get_if<double>(&cell.value);
    const auto units = percent ? NearestPercentUnits(*percent) : std::nullopt;
    return units ? PercentShare{PercentShare::Kind::Percent, *units} : PercentShare();
}

std::vector<PercentShare> CEntitySplitGrid::PercentsShown() const
{
    std::vector<PercentShare> percents;
    percents.reserve(m_amounts.size());
    for (int i = 0; i < m_entities.GetSize(); ++i)
        percents.push_back(PercentAt(i));
    return percents;
}

/// The cell from the amount.
void CEntitySplitGrid::ShowShare(int entity)
{
    const CAmt& amount = m_amounts[static_cast<std::size_t>(entity)];
    m_shown[static_cast<std::size_t>(entity)] = amount;
    if (!m_usePercent) {
        SetCellAmount(RowOf(entity), kShare, amount);
        return;
    }
    const PercentShare percent = PercentShareOf(amount, m_netAmount);
    if (percent.kind == PercentShare::Kind::Error)
        SetCellError(RowOf(entity), kShare);
    else if (percent.IsPercent())
        SetCellNumber(RowOf(entity), kShare, percent.Percent());
    else
        EmptyCell(RowOf(entity), kShare);
}

/// The amount from the cell.
void CEntitySplitGrid::TakeShare(int entity)
{
    CAmt& amount = m_amounts[static_cast<std::size_t>(entity)];
    if (!m_usePercent) {
        amount = GetCellAmt(RowOf(entity), kShare);
        return;
    }
    const CAmt& shown = m_shown[static_cast<std::size_t>(entity)];
    const PercentShare percent = PercentAt(entity);
    const bool isError = percent.kind == PercentShare::Kind::Error;
    const bool isShown = isError || percent == PercentShareOf(shown, m_netAmount);
    amount = isShown ? shown : CAmt();
    if (isError)
        ShowShare(entity); // there may be an amount now of which it is a share
    else if (!isShown)
        PercentsToAmounts({&percent, 1}, m_netAmount, {&amount, 1});
}

/// What is left to allocate.
void CEntitySplitGrid::ShowLeft()
{
    const int row = RemainderRow();
    if (row <= kNetAmount)
        return;
    if (m_usePercent) {
        const std::vector<PercentShare> percents = PercentsShown();
        SetCellNumber(row, kShare, PercentShare{PercentShare::Kind::Percent, PercentRemainder(percents)}.Percent());
        return;
    }
    SetCellResult(row, kShare, ShownRemainder(m_netAmount, m_amounts));
}

void CEntitySplitGrid::UpdateNetAmount(const CAmt& amount)
{
    m_netAmount = amount;
    SetCellAmount(kNetAmount, kShare, amount);
    for (int i = 0; m_usePercent && i < m_entities.GetSize(); ++i)
        TakeShare(i);
    UpdateTotals(true);
    ShowLeft();
}

bool CEntitySplitGrid::SelectClient(unsigned long id, int isPartnership)
{
    const int entity = m_entities.Find(static_cast<long>(id), isPartnership);
    return entity >= 0 && GoTo(RowOf(entity), kShare);
}

void CEntitySplitGrid::SetReadOnly(bool readOnly)
{
    for (int i = 0; i < m_entities.GetSize(); ++i)
        SetCellReadOnly(RowOf(i), kShare, readOnly);
    ClearUndo(); // which would change them
}

void CEntitySplitGrid::SetHeaderStringResourceID(unsigned id)
{
    CString heading;
    if (heading.LoadString(id))
        SetColumnHeading(kShare, heading);
}

CAmt CEntitySplitGrid::GetShareAmount(int entity) const
{
    const auto index = static_cast<std::size_t>(entity);
    return entity >= 0 && index < m_amounts.size() ? m_amounts[index] : CAmt();
}

CString CEntitySplitGrid::GetRemainderHint() const
{
    const std::vector<PercentShare> percents = PercentsShown();
    const bool applies = m_usePercent && IsRoundingOnly(PercentRemainder(percents), percents.size(),
                                                        ShownRemainder(m_netAmount, m_amounts));
    return applies ? LibraryText(IDS_SPLIT_NOTHING_LEFT) : CString();
}

CString CEntitySplitGrid::WhyCell(int row, int column) const
{
    if (row != RemainderRow() || column != kShare)
        return CTotallingGrid::WhyCell(row, column);
    const CString hint = GetRemainderHint();
    return LibraryText(m_usePercent ? IDS_SPLIT_WHY_PERCENT : IDS_SPLIT_WHY_AMOUNT) +
           (hint.IsEmpty() ? hint : "\n\n" + hint);
}

void CEntitySplitGrid::OnGridCellEndEdit(int row, int column)
{
    CTotallingGrid::OnGridCellEndEdit(row, column);
    if (row > kNetAmount && row < RemainderRow())
        TakeShare(row - 1);
    ShowLeft();
}

void CEntitySplitGrid::OnUndone()
{
    CTotallingGrid::OnUndone();
    for (int i = 0; i < m_entities.GetSize(); ++i)
        TakeShare(i);
    ShowLeft();
}

long CEntitySplitGrid::CPSGetClientID(const Quarry::CDataList& shares) const
{
    return m_columns.client == -1 ? 0 : shares.Current().GetLong(m_columns.client);
}

long CEntitySplitGrid::PPSGetPClientID(const Quarry::CDataList& shares) const
{
    return m_columns.partnership == -1 ? 0 : shares.Current().GetLong(m_columns.partnership);
}

void CEntitySplitGrid::ParentNewCPS(Quarry::CDataList& shares, long clientId)
{
    shares.AddNew();
    shares.Set(m_columns.client, clientId);
}

void CEntitySplitGrid::ParentNewPPS(Quarry::CDataList& shares, long partnershipId)
{
    shares.AddNew();
    shares.Set(m_columns.partnership, partnershipId);
}
