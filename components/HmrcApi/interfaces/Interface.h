#pragma once

// Where each interface of HMRC is found.

#include "HmrcApi/Export.h"

namespace HmrcApi
{

/// One interface. The path is `before`, the identifier, "/annual-summary/", the tax year.
struct InterfaceFacts
{
    const char* name; // for log lines and the wait window
    const char* before;
    const char* version; // of the Accept header
    const char* scope;
};

/// Identified by National Insurance number. HMRC has published no path: this one follows the pattern of its sisters.
extern HMRCAPI_API const InterfaceFacts kPayeFacts;
/// Identified by UTR.
extern HMRCAPI_API const InterfaceFacts kNationalInsuranceFacts;

} // namespace HmrcApi
