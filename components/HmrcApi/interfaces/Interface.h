#pragma once

// HMRC's interfaces, one row each: where it is found, whom it is asked about, how its answer is read.

#include <array>
#include <string_view>

#include "HmrcApi/Export.h"

namespace HmrcApi
{

class CBenefitsSummaryResponse;
class CEmploymentHistoryResponse;
class CIncomeSummaryResponse;
class CPayeResponse;
class CTaxSummaryResponse;
struct CNationalInsuranceResponse;

/// A row without what is read. The request is GET BASE/`before`IDENTIFIER/annual-summary/YEAR, as in
/// https://api.service.hmrc.gov.uk/national-insurance/sa/2234567890/annual-summary/2017-18, with the headers
/// "Accept: application/vnd.hmrc.VERSION+json" and "Authorization: Bearer TOKEN". Texts live as long as the program.
struct InterfaceFacts
{
    const char* name;       // for log lines and the wait window
    const char* before;     // the path before the identifier, from the base address on: ends in '/', begins with none
    const char* identifier; // what the identifier is, for messages: "UTR"
    const char* invalid;    // HMRC's code for an identifier that it refuses; ours for one that is never sent
    const char* version;    // of the answer's format: "1.1"
    const char* scope;      // that the token must have been given for
    /// Names of files of interfaces/examples, without ".json", by IEndpointOverride::ResponseType; null for Live.
    std::array<const char*, 7> examples;
};

/// A row: the facts and the reader. A further interface is a further row with a class in Endpoints.h.
template<class Response>
struct Interface : InterfaceFacts
{
    /// Reads the body of a 200 answer; throws HmrcApiErrorException without a status for what it refuses.
    Response (*read)(std::string_view json);
};

/// Income, tax, pensions, benefits and allowances, by National Insurance number. HMRC has published no path of this
/// one: it follows the pattern of its sisters.
extern HMRCAPI_API const Interface<CPayeResponse> kPaye;
/// Contributions, by UTR. Source: HMRC's National Insurance interface, version 1.1.
extern HMRCAPI_API const Interface<CNationalInsuranceResponse> kNationalInsurance;

// The four that give the PAYE records in parts, by UTR. Source: HMRC's interfaces of these names.
extern HMRCAPI_API const Interface<CEmploymentHistoryResponse> kEmploymentHistory; // version 1.2
extern HMRCAPI_API const Interface<CIncomeSummaryResponse> kIncomeSummary;         // 1.2
extern HMRCAPI_API const Interface<CBenefitsSummaryResponse> kBenefitsSummary;     // 1.1
extern HMRCAPI_API const Interface<CTaxSummaryResponse> kTaxSummary;               // 1.1

} // namespace HmrcApi
