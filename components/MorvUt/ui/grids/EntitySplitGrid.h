#pragma once

// The grid that splits an amount among clients and partnerships.

#include "MorvUt/Export.h"
#include "MorvUt/ui/grids/Entity.h"
#include "MorvUt/ui/grids/Percentages.h"
#include "MorvUt/ui/grids/TotallingGrid.h"
#include "Quarry/DataList.h"

/// Row 0 holds the amount that is split, a row each the shares of the entities, the last row what is left to allocate.
/// Column 0 names them, column 1 holds the amounts, or percentages of the amount that is split.
class MORVUT_API CEntitySplitGrid : public CTotallingGrid
{
    DECLARE_DYNAMIC(CEntitySplitGrid)

    static constexpr int kName = 0, kShare = 1; // columns
    static constexpr int kNetAmount = 0;        // row

    /// The ordinals of the columns in which a record of the shares keeps them; -1: it has no such column. A share in
    /// per cent is kept beside the amount, which counts.
    struct ShareColumns
    {
        int client = -1;
        int partnership = -1;
        int amount = -1;
        int percent = -1;
    };
    explicit CEntitySplitGrid(const ShareColumns& columns);

    /// Fills the grid with `amount` and the shares of the entities from `shares`, whose rows are theirs; while saving,
    /// writes the shares into it: an entity without a share has no row.
    void DDXFunc(CDataExchange* exchange, const Kiln::CAmt& amount, const CEntityArray& entities, int usePercent,
                 int readOnly, Quarry::CDataList& shares);
    /// The same with the shares of clients and those of partnerships in lists of their own.
    void DDXFunc(CDataExchange* exchange, const Kiln::CAmt& amount, const CEntityArray& entities, int usePercent,
                 int readOnly, Quarry::CDataList& clientShares, Quarry::CDataList& partnershipShares);
    /// Shows percentages (not 0) or amounts; the amounts stay what they are to the penny.
    void OnUsePCentSplit(int usePercent);
    bool IsPCentSplit() const noexcept { return m_usePercent; }
    /// The amount that is split. Percentages stay, and so do amounts.
    void UpdateNetAmount(const Kiln::CAmt& amount);
    /// Goes to the share of a client, or of a partnership (not 0). False when there is none.
    bool SelectClient(unsigned long id, int isPartnership);
    void SetReadOnly(bool readOnly);
    /// The heading of the shares, a string of the current module's.
    void SetHeaderStringResourceID(unsigned id);
    const Kiln::CAmt& GetNetAmount() const noexcept { return m_netAmount; }
    /// The amount of an entity (from 0); null without a share.
    Kiln::CAmt GetShareAmount(int entity) const;
    /// A hint for the user: nothing is left to allocate though percentages do not show it. Empty when it does not
    /// apply.
    CString GetRemainderHint() const;

    CString WhyCell(int row, int column) const override;

    // What a derived grid may override; the order of these is fixed.

    /// Whose share the current row of a list is.
    virtual long CPSGetClientID(const Quarry::CDataList& shares) const;
    virtual long PPSGetPClientID(const Quarry::CDataList& shares) const;
    /// Adds a row for the share of this client or partnership.
    virtual void ParentNewCPS(Quarry::CDataList& shares, long clientId);
    virtual void ParentNewPPS(Quarry::CDataList& shares, long partnershipId);

protected:
    void OnGridCellEndEdit(int row, int column) override;
    void OnUndone() override;
    const ShareColumns& GetShareColumns() const noexcept { return m_columns; }

private:
    void PopulateTheGrid(Quarry::CDataList& clients, Quarry::CDataList& partnerships);
    void SaveTheGrid(Quarry::CDataList& clients, Quarry::CDataList& partnerships);
    void AddTheRowsToTheGrid();
    void ConvertEntityAmtsToPCent();
    void ConvertEntityPCentsToAmt();
    void SetEntitiesToAmtFormat();
    void SetEntitiesToPCentFormat();
    bool MoveToShare(Quarry::CDataList& list, const CEntity& entity) const;
    int RowOf(int entity) const noexcept { return entity + 1; }
    int RemainderRow() const noexcept { return GetRowCount() - 1; }
    PercentShare PercentAt(int entity) const;
    std::vector<PercentShare> PercentsShown() const;
    void ShowShare(int entity);
    void TakeShare(int entity);
    void ShowLeft();

    ShareColumns m_columns;
    CEntityArray m_entities;
    std::vector<Kiln::CAmt> m_amounts; // the shares, whatever is shown
    std::vector<Kiln::CAmt> m_shown;   // those that the cells were filled from last: exact while a cell says the same
    Kiln::CAmt m_netAmount;
    bool m_usePercent = false;
};
