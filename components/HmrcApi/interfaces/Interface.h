#pragma once

// HMRC's interfaces, one row each: where it is found, whom it is asked about, how its answer is read.

#include <array>
#include <string_view>

#include "HmrcApi/Export.h"

namespace HmrcApi
{

class CPayeResponse;
struct CNationalInsuranceResponse;

/// A row without what is read. Request: GET BASE/`before`IDENTIFIER/annual-summary/YEAR.
struct InterfaceFacts
{
    const char* name;                    // for log lines and the wait window
    const char* before;                  // the path before the identifier
    const char* identifier;              // what names the person, for messages
    const char* invalid;                 // HMRC's code for one that it refuses
    const char* version;                 // of the Accept header
    const char* scope;                   // that the token must have
    std::array<const char*, 7> examples; // file of interfaces/examples, by IEndpointOverride::ResponseType
};

/// A row: the facts and the reader of a 200 answer's body, which throws HmrcApiErrorException for what it refuses.
template<class Response>
struct Interface : InterfaceFacts
{
    Response (*read)(std::string_view json);
};

/// HMRC has published no path of this one: it follows the pattern of its sisters.
extern HMRCAPI_API const Interface<CPayeResponse> kPaye;
extern HMRCAPI_API const Interface<CNationalInsuranceResponse> kNationalInsurance;

} // namespace HmrcApi
