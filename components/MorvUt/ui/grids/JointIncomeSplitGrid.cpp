#include "MorvUt/ui/grids/JointIncomeSplitGrid.h"

IMPLEMENT_DYNAMIC(CJointIncomeSplitGrid, CEntitySplitGrid)

long CJointIncomeSplitGrid::CPSGetClientID(const Quarry::CDataList& shares) const
{
    const long client = CEntitySplitGrid::CPSGetClientID(shares);
    return client == 0 ? m_ownClientId : client;
}

void CJointIncomeSplitGrid::ParentNewCPS(Quarry::CDataList& shares, long clientId)
{
    shares.AddNew();
    if (clientId != m_ownClientId && GetShareColumns().client != -1)
        shares.Set(GetShareColumns().client, clientId);
}
