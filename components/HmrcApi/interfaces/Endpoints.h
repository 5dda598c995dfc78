#pragma once

// The interfaces of HMRC that return a client's records, one class each.

#include <memory>
#include <optional>
#include <string>

#include "HmrcApi/Export.h"
#include "HmrcApi/Host.h"
#include "HmrcApi/interfaces/Examples.h"
#include "HmrcApi/oauth/Authorisation.h"
#include "HmrcApi/records/Responses.h"
#include "HmrcApi/records/Summaries.h"
#include "HmrcApi/transport/Transport.h"

namespace HmrcApi
{

struct InterfaceFacts;
template<class Response>
struct Interface;

/// What the interfaces share: one retrieval by a row of Interface.h, and the seam at which example answers come in.
///
/// Before      The authorisation's tokens are loaded (CAuthorisation::LoadTokens), else the request goes without one
///             and HMRC refuses it; the store can keep refreshed ones.
/// Identifier  Taken in upper case and without blanks: " aa 00 00 01 a " is asked for as AA000001A. One that is not
///             letters and digits then, or empty, is refused before anything is sent, with HMRC's code for it and no
///             status. Whether it is a good one is HMRC's to say.
/// Tax year    The real one, by the calendar year in which it ends: 2018 is asked for as 2017-18. Outside 1 to 9999 it
///             is refused likewise (TAX_YEAR_INVALID); for which years there is data is HMRC's to say.
/// Result      The records; a response whose IsNothingYet() is true when HMRC has nothing for the person and year.
/// Errors      HmrcApiErrorException. What is asked again, refreshed and reported is one table
///             (answers/AnswerTable.h); a token that has run out is refreshed once.
/// Written     One log line an answer, masked; refreshed tokens, to the store.
///
/// Used by one thread; waits for HMRC up to a minute a request and shows the wait window, whose Cancel ends it, unless
/// the channel is unattended.
class HMRCAPI_API CEndpoint
{
public:
    /// The authorisation must outlive the endpoint.
    explicit CEndpoint(CAuthorisation& authorisation) noexcept : m_authorisation(authorisation) {}
    virtual ~CEndpoint();

protected:
    /// The way out: the authorisation's channel for the live class, an example for an override.
    virtual std::shared_ptr<ITransport> RestFactory();
    /// Asks and reads.
    template<class Response>
    Response Fetch(const Interface<Response>& row, const std::string& identifier, short taxYear, IChainLogger* logger);

private:
    /// The JSON text; nothing when HMRC has nothing.
    std::optional<std::string> Ask(const InterfaceFacts& facts, const std::string& identifier, short taxYear,
                                   IChainLogger* logger);

    CAuthorisation& m_authorisation;
};

/// Individual PAYE. Scope read:individual-paye.
class HMRCAPI_API CPaye : public CEndpoint
{
public:
    using CEndpoint::CEndpoint;
    /// `identifier`: the National Insurance number, "AA000001A". `logger`: null for none.
    CPayeResponse GetPaye(const std::string& identifier, short taxYear, IChainLogger* logger);
    static const InterfaceFacts& Facts() noexcept;
};

/// National Insurance. Scope read:national-insurance.
class HMRCAPI_API CNationalInsurance : public CEndpoint
{
public:
    using CEndpoint::CEndpoint;
    /// `identifier`: the UTR, ten digits; not the National Insurance number. `logger`: null for none.
    CNationalInsuranceResponse GetNationalInsurance(const std::string& identifier, short taxYear, IChainLogger* logger);
    static const InterfaceFacts& Facts() noexcept;
};

// The PAYE records in parts. `identifier`: the UTR, ten digits. `logger`: null for none.

/// Individual Employment: who the employers were. Scope read:individual-employment.
class HMRCAPI_API CEmploymentHistory : public CEndpoint
{
public:
    using CEndpoint::CEndpoint;
    CEmploymentHistoryResponse GetEmploymentHistory(const std::string& identifier, short taxYear, IChainLogger* logger);
    static const InterfaceFacts& Facts() noexcept;
};

/// Individual Income: pay, pensions, benefits of the state. Scope read:individual-income.
class HMRCAPI_API CIncomeSummary : public CEndpoint
{
public:
    using CEndpoint::CEndpoint;
    CIncomeSummaryResponse GetAnnualIncome(const std::string& identifier, short taxYear, IChainLogger* logger);
    static const InterfaceFacts& Facts() noexcept;
};

/// Individual Benefits: what employers provided. Scope read:individual-benefits.
class HMRCAPI_API CBenefitsSummary : public CEndpoint
{
public:
    using CEndpoint::CEndpoint;
    CBenefitsSummaryResponse GetBenefitsSummary(const std::string& identifier, short taxYear, IChainLogger* logger);
    static const InterfaceFacts& Facts() noexcept;
};

/// Individual Tax: tax taken off and refunded. Scope read:individual-tax.
class HMRCAPI_API CTaxSummary : public CEndpoint
{
public:
    using CEndpoint::CEndpoint;
    CTaxSummaryResponse GetTaxSummary(const std::string& identifier, short taxYear, IChainLogger* logger);
    static const InterfaceFacts& Facts() noexcept;
};

/// Answers with an example of HMRC's (see Examples.h), whoever and whatever year is asked about: no network, no tokens.
/// An identifier or year that would be refused is refused here too. `Live`: HMRC has nothing.
template<class Endpoint>
class ExampleEndpoint : public Endpoint, public IEndpointOverride
{
public:
    ExampleEndpoint(CAuthorisation& authorisation, ResponseType type) noexcept : Endpoint(authorisation), m_type(type)
    {}

protected:
    std::shared_ptr<ITransport> RestFactory() override { return MakeExampleTransport(Endpoint::Facts(), m_type); }

private:
    ResponseType m_type;
};

class HMRCAPI_API CPayeOverride : public ExampleEndpoint<CPaye>
{
public:
    using ExampleEndpoint::ExampleEndpoint;
};
class HMRCAPI_API CNationalInsuranceOverride : public ExampleEndpoint<CNationalInsurance>
{
public:
    using ExampleEndpoint::ExampleEndpoint;
};
class HMRCAPI_API CEmploymentHistoryOverride : public ExampleEndpoint<CEmploymentHistory>
{
public:
    using ExampleEndpoint::ExampleEndpoint;
};
class HMRCAPI_API CIncomeSummaryOverride : public ExampleEndpoint<CIncomeSummary>
{
public:
    using ExampleEndpoint::ExampleEndpoint;
};
class HMRCAPI_API CBenefitsSummaryOverride : public ExampleEndpoint<CBenefitsSummary>
{
public:
    using ExampleEndpoint::ExampleEndpoint;
};
class HMRCAPI_API CTaxSummaryOverride : public ExampleEndpoint<CTaxSummary>
{
public:
    using ExampleEndpoint::ExampleEndpoint;
};

} // namespace HmrcApi
