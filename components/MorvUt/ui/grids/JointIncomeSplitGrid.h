#pragma once

// The grid that splits income among a client and those it is shared with.

#include "MorvUt/ui/grids/EntitySplitGrid.h"

/// A row of the shares without a client is the client's own: the record stands below that client's return.
class MORVUT_API CJointIncomeSplitGrid : public CEntitySplitGrid
{
    DECLARE_DYNAMIC(CJointIncomeSplitGrid)

    CJointIncomeSplitGrid(const ShareColumns& columns, long ownClientId)
        : CEntitySplitGrid(columns), m_ownClientId(ownClientId)
    {}

    long CPSGetClientID(const Quarry::CDataList& shares) const override;
    void ParentNewCPS(Quarry::CDataList& shares, long clientId) override;

private:
    long m_ownClientId;
};
