#include "HmrcApi/interfaces/Endpoints.h"

#include "HmrcApi/answers/Errors.h"
#include "HmrcApi/interfaces/detail/Retrieval.h"
#include "HmrcApi/interfaces/Interface.h"
#include "HmrcApi/transport/Uri.h"
#include "HmrcApi/transport/Waiting.h"

namespace HmrcApi
{
namespace
{

/// The path below the base address; throws for what HMRC would refuse anyway, or worse, take for another path.
std::string PathOf(const InterfaceFacts& facts, const std::string& identifier, const std::string& year)
{
    const std::string segment = IdentifierSegment(identifier);
    if (segment.empty())
        throw HmrcApiErrorException(
            facts.invalid,
            std::string("The ") + facts.identifier +
                " is empty or holds more than letters and digits: correct it in the client's details",
            {});
    if (year.empty())
        throw HmrcApiErrorException("TAX_YEAR_INVALID", "The tax year is outside the years 1 to 9999", {});
    return facts.before + segment + "/annual-summary/" + year;
}

} // namespace

CEndpoint::~CEndpoint() = default;

std::shared_ptr<ITransport> CEndpoint::RestFactory() { return m_authorisation.GetChannel().GetTransport(); }

std::optional<std::string> CEndpoint::Ask(const InterfaceFacts& facts, const std::string& identifier, short taxYear,
                                          IChainLogger* logger)
{
    const std::string year = TaxYearText(taxYear);
    const Service service = m_authorisation.GetService();
    HttpRequest request;
    request.address = JoinAddress(service.apiBase, PathOf(facts, identifier, year));
    request.headers = {{"Accept", std::string("application/vnd.hmrc.") + facts.version + "+json"}};
    Channel& channel = m_authorisation.GetChannel();
    request.cancelled = channel.GetCancelled();
    if (!dynamic_cast<const IEndpointOverride*>(this)) // an example needs to know nothing about this computer
        for (const auto& header : channel.GetFraudHeaders())
            request.headers.push_back(header);

    const std::shared_ptr<ITransport> transport = RestFactory();
    std::optional<WaitWindow> window;
    if (!channel.IsUnattended())
        window.emplace(std::string("Waiting for HMRC: ") + facts.name);
    return Retrieve(*transport, std::move(request), m_authorisation, service, RequestLog(logger, facts, year));
}

template<class Response>
Response CEndpoint::Fetch(const Interface<Response>& row, const std::string& identifier, short taxYear,
                          IChainLogger* logger)
{
    const std::optional<std::string> json = Ask(row, identifier, taxYear, logger);
    if (!json) {
        Response nothing;
        nothing.SetNothingYet();
        return nothing;
    }
    try {
        return row.read(*json);
    } catch (const HmrcApiErrorException& error) { // an answer all the same, so the error gets its status
        RequestLog(logger, row, TaxYearText(taxYear)).Refused(error);
        throw HmrcApiErrorException(error.GetCode(), error.GetText(), error.GetThird(), "200");
    }
}

#define FETCHES(Response, Endpoint, Operation, row)                                                                    \
    Response Endpoint::Operation(const std::string& identifier, short taxYear, IChainLogger* logger)                   \
    {                                                                                                                  \
        return Fetch(row, identifier, taxYear, logger);                                                                \
    }                                                                                                                  \
    const InterfaceFacts& Endpoint::Facts() noexcept { return row; }
FETCHES(CPayeResponse, CPaye, GetPaye, kPaye)
FETCHES(CNationalInsuranceResponse, CNationalInsurance, GetNationalInsurance, kNationalInsurance)
FETCHES(CEmploymentHistoryResponse, CEmploymentHistory, GetEmploymentHistory, kEmploymentHistory)
FETCHES(CIncomeSummaryResponse, CIncomeSummary, GetAnnualIncome, kIncomeSummary)
FETCHES(CBenefitsSummaryResponse, CBenefitsSummary, GetBenefitsSummary, kBenefitsSummary)
FETCHES(CTaxSummaryResponse, CTaxSummary, GetTaxSummary, kTaxSummary)
#undef FETCHES

} // namespace HmrcApi
