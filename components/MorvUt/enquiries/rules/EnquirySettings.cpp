#include "MorvUt/enquiries/rules/EnquirySettings.h"

#include "Brix/Records.h"

using Brix::CClientEnquirySettings;

EnquirySettings ReadEnquirySettings(Cellar::CConnection& connection, const CString& userId)
{
    CClientEnquirySettings row;
    if (!row.Open(connection, {{CClientEnquirySettings::kUserID, userId}}))
        return {};
    return {row.GetHideCompleted(), row.GetAllYears()};
}

void KeepEnquirySettings(Cellar::CConnection& connection, const CString& userId, const EnquirySettings& settings)
{
    CClientEnquirySettings row;
    if (!row.Open(connection, {{CClientEnquirySettings::kUserID, userId}}))
        row.AddNew();
    row.SetHideCompleted(settings.hideCompleted);
    row.SetAllYears(settings.allYears);
    row.Update();
}
