#pragma once

// The interfaces of HMRC that return a client's records, one class each.

#include <memory>
#include <string>

#include "HmrcApi/Authorisation.h"
#include "HmrcApi/Export.h"
#include "HmrcApi/Host.h"
#include "HmrcApi/records/Responses.h"
#include "HmrcApi/transport/Transport.h"

namespace HmrcApi
{

/// What the interfaces share: the request with its retries, and the seam at which canned answers come in.
/// A failed request throws HmrcApiErrorException; what is retried, refreshed and reported is one table (AnswerTable.h).
class HMRCAPI_API CEndpoint
{
public:
    explicit CEndpoint(CAuthorisation& authorisation) noexcept : m_authorisation(authorisation) {}
    virtual ~CEndpoint();

protected:
    /// The way out: the authorisation's channel for the live class, a canned answer for an override.
    virtual std::shared_ptr<ITransport> RestFactory();
    /// The body of the answer; empty when HMRC has nothing (404 NOT_FOUND).
    /// `identifier` is taken in upper case without blanks and percent-encoded.
    std::string Get(const struct InterfaceFacts& facts, const std::string& identifier, short taxYear,
                    IChainLogger* logger);

private:
    CAuthorisation& m_authorisation;
};

class HMRCAPI_API CPaye : public CEndpoint
{
public:
    using CEndpoint::CEndpoint;
    /// `identifier`: National Insurance number; `taxYear`: real tax year. HMRC has nothing: an empty response.
    CPayeResponse GetPaye(const std::string& identifier, short taxYear, IChainLogger* logger);
};

class HMRCAPI_API CNationalInsurance : public CEndpoint
{
public:
    using CEndpoint::CEndpoint;
    /// `identifier`: UTR; `taxYear`: real tax year. HMRC has nothing: an empty response.
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
