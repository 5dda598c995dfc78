#pragma once

// What a user wants to see in the list of enquiries.

#include "Afx/text/CString.h"
#include "Cellar/Connection.h"
#include "MorvUt/Export.h"

struct EnquirySettings
{
    bool hideCompleted = false;
    bool allYears = false;
};

/// As the user left the list; both off at first. Throws Cellar::DatabaseError, as the next.
MORVUT_API EnquirySettings ReadEnquirySettings(Cellar::CConnection& connection, const CString& userId);
MORVUT_API void KeepEnquirySettings(Cellar::CConnection& connection, const CString& userId,
                                    const EnquirySettings& settings);
