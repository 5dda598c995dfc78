#pragma once

// The interfaces of HMRC that return a client's records, one class each.

#include <memory>
#include <optional>
#include <string>

#include "HmrcApi/Export.h"
#include "HmrcApi/Host.h"
#include "HmrcApi/oauth/Authorisation.h"
#include "HmrcApi/records/Responses.h"
#include "HmrcApi/transport/Transport.h"

namespace HmrcApi
{

struct InterfaceFacts;
template<class Response>
struct Interface;

/// What the interfaces share: one retrieval by a row of Interface.h, and the seam at which example answers come in.
///
/// An identifier is taken in upper case and without blanks: " aa 00 00 01 a " is asked for as AA000001A. One that is
/// not letters and digits then, or empty, is refused before anything is sent, with HMRC's code for it and no status.
/// The tax year is the real one, by the calendar year in which it ends: 2018 is asked for as 2017-18; outside 1 to 9999
/// it is refused likewise (TAX_YEAR_INVALID). Every failure throws HmrcApiErrorException; what is asked again,
/// refreshed and reported is one table (answers/AnswerTable.h). HMRC has nothing for the person and year: a response
/// whose IsNothingYet() is true. Used by one thread; waits for HMRC up to a minute a request and shows the wait window.
class HMRCAPI_API CEndpoint
{
public:
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

class HMRCAPI_API CPaye : public CEndpoint
{
public:
    using CEndpoint::CEndpoint;
    /// `identifier`: National Insurance number.
    CPayeResponse GetPaye(const std::string& identifier, short taxYear, IChainLogger* logger);
};

class HMRCAPI_API CNationalInsurance : public CEndpoint
{
public:
    using CEndpoint::CEndpoint;
    /// `identifier`: UTR.
    CNationalInsuranceResponse GetNationalInsurance(const std::string& identifier, short taxYear, IChainLogger* logger);
};

class HMRCAPI_API CPayeOverride : public CPaye, public IEndpointOverride
{
public:
    CPayeOverride(CAuthorisation& authorisation, ResponseType type) noexcept : CPaye(authorisation), m_type(type) {}

protected:
    std::shared_ptr<ITransport> RestFactory() override;

private:
    ResponseType m_type;
};

class HMRCAPI_API CNationalInsuranceOverride : public CNationalInsurance, public IEndpointOverride
{
public:
    CNationalInsuranceOverride(CAuthorisation& authorisation, ResponseType type) noexcept
        : CNationalInsurance(authorisation), m_type(type)
    {}

protected:
    std::shared_ptr<ITransport> RestFactory() override;

private:
    ResponseType m_type;
};

} // namespace HmrcApi
