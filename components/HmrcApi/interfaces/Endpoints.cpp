#include "HmrcApi/interfaces/Endpoints.h"

#include "Afx/Text.h"
#include "HmrcApi/answers/AnswerTable.h"
#include "HmrcApi/answers/Mask.h"
#include "HmrcApi/interfaces/Examples.h"
#include "HmrcApi/interfaces/Interface.h"
#include "HmrcApi/transport/Uri.h"
#include "HmrcApi/transport/Waiting.h"

namespace HmrcApi
{
namespace
{

/// Answers every request with one text.
class CannedTransport : public ITransport
{
public:
    explicit CannedTransport(std::string_view body) noexcept : m_body(body) {}

    HttpAnswer Send(const HttpRequest&) override
    {
        HttpAnswer answer;
        answer.outcome = HttpAnswer::Outcome::Answered;
        answer.status = m_body.empty() ? 404 : 200;
        answer.contentType = "application/json";
        answer.body = m_body.empty() ? R"({"code":"NOT_FOUND","message":"Resource was not found"})" : m_body;
        return answer;
    }

private:
    std::string_view m_body;
};

/// One request and its answer as log lines; without a logger nothing.
class RequestLog
{
public:
    RequestLog(IChainLogger* logger, const InterfaceFacts& facts, const std::string& year)
        : m_logger(logger), m_interface(facts.name),
          m_request(std::string("GET /") + facts.before + "*/annual-summary/" + year)
    {}

    void Answered(unsigned number, const HttpAnswer& answer, const ErrorBody& body, const std::string& token) const
    {
        if (!m_logger)
            return;
        std::string detail = "request " + std::to_string(number);
        if (!answer.problem.empty())
            detail += ": " + answer.problem;
        if (m_logger->IsDebugLogging() && !answer.body.empty())
            detail += "; " + Shown(answer.body, token);
        m_logger->Log("Request", m_interface, m_request, Mask(DescribeAnswer(answer, body), {token}),
                      Mask(detail, {token}));
    }

private:
    /// The beginning of a body: masked before it is cut, so that no half of a token stays, and whole characters only.
    static std::string Shown(const std::string& body, const std::string& token)
    {
        constexpr std::size_t kShown = 4000;
        return std::string(Afx::CutUtf8(Afx::ToUtf8(Mask(body, {token})), kShown));
    }

    IChainLogger* m_logger;
    std::string m_interface, m_request;
};

void SetAuthorization(HttpRequest& request, const std::string& accessToken)
{
    std::erase_if(request.headers, [](const auto& header) { return header.first == "Authorization"; });
    if (!accessToken.empty())
        request.headers.emplace_back("Authorization", "Bearer " + accessToken);
}

/// The tokens in hand; empty ones when there are none.
COAuth2Tokens TokensOf(const CAuthorisation& authorisation)
{
    COAuth2Tokens tokens;
    authorisation.get_authtokens(tokens);
    return tokens;
}

/// Refreshes and puts the new token into the request, or throws the refresh's error.
void Refresh(CAuthorisation& authorisation, HttpRequest& request, COAuth2Tokens& tokens, IChainLogger* logger)
{
    if (!authorisation.RefreshTokens(logger)) {
        const CAuthorisation::Error& error = authorisation.GetLastError();
        throw HmrcApiErrorException(error.code, error.text, {}, error.status);
    }
    tokens = TokensOf(authorisation);
    SetAuthorization(request, tokens.accessToken);
}

std::string BodyOf(HttpAnswer& answer)
{
    if (answer.body.empty()) // not to be taken for "nothing yet"
        throw HmrcApiErrorException("ANSWER_MALFORMED", "HMRC's answer is empty", {}, "200");
    return std::move(answer.body);
}

/// Reads a body; what it refuses was an answer all the same, so the error gets its status.
template<class Response>
Response ReadAnswer(Response (*read)(std::string_view), const std::string& body)
{
    try {
        return read(body);
    } catch (const HmrcApiErrorException& error) {
        throw HmrcApiErrorException(error.GetCode(), error.GetText(), error.GetThird(), "200");
    }
}

/// Sends until the answer table is content. Empty: HMRC has nothing.
std::string Send(ITransport& transport, HttpRequest& request, CAuthorisation& authorisation, IChainLogger* logger,
                 const RequestLog& log)
{
    COAuth2Tokens tokens = TokensOf(authorisation);
    SetAuthorization(request, tokens.accessToken);
    bool mayRefresh = !tokens.accessToken.empty();
    bool isCancelled = false;
    unsigned failures = 0;
    for (unsigned number = 1;; ++number) {
        HttpAnswer answer;
        answer.outcome = HttpAnswer::Outcome::Cancelled;
        if (!isCancelled && !WaitWindow::IsCancelled())
            answer = transport.Send(request);
        const bool isError = answer.outcome == HttpAnswer::Outcome::Answered && answer.status != 200;
        ErrorBody body = isError ? ReadErrorBody(answer) : ErrorBody();
        for (std::string* text : {&body.code, &body.message, &body.path})
            *text = Mask(*text, {tokens.accessToken}); // an answer may repeat what it was sent
        log.Answered(number, answer, body, tokens.accessToken);
        const AnswerRule& rule = RuleFor(answer, body.code);
        if (rule.verdict == Verdict::Success)
            return BodyOf(answer);
        if (rule.verdict == Verdict::NothingYet)
            return {};
        if (rule.verdict == Verdict::Refresh && mayRefresh) {
            mayRefresh = false; // once: a second refusal has another reason
            Refresh(authorisation, request, tokens, logger);
            continue;
        }
        if (failures >= rule.retries)
            throw ErrorOf(answer, rule, body);
        ++failures;
        isCancelled = !WaitUnless(request.cancelled, RetryWait(failures, answer.retryAfter));
    }
}

} // namespace

CEndpoint::~CEndpoint() = default;

std::shared_ptr<ITransport> CEndpoint::RestFactory() { return m_authorisation.GetChannel().GetTransport(); }

std::string CEndpoint::Get(const InterfaceFacts& facts, const std::string& identifier, short taxYear,
                           IChainLogger* logger)
{
    const std::string year = TaxYearText(taxYear);
    if (year.empty())
        throw HmrcApiErrorException("TAX_YEAR_INVALID", "The tax year is outside the years 1 to 9999", {});
    HttpRequest request;
    request.address = JoinAddress(m_authorisation.GetClientData().GetAPIEndpoint(),
                                  facts.before + IdentifierSegment(identifier) + "/annual-summary/" + year);
    request.headers = {{"Accept", std::string("application/vnd.hmrc.") + facts.version + "+json"}};
    request.cancelled = &WaitWindow::IsCancelled;
    if (!dynamic_cast<const IEndpointOverride*>(this)) // a canned answer needs to know nothing about this computer
        for (const auto& header : m_authorisation.GetChannel().GetFraudHeaders())
            request.headers.push_back(header);

    const std::shared_ptr<ITransport> transport = RestFactory();
    const WaitWindow window(std::string("Waiting for HMRC: ") + facts.name);
    return Send(*transport, request, m_authorisation, logger, RequestLog(logger, facts, year));
}

CPayeResponse CPaye::GetPaye(const std::string& identifier, short taxYear, IChainLogger* logger)
{
    const std::string body = Get(kPayeFacts, identifier, taxYear, logger);
    if (!body.empty())
        return ReadAnswer(&ReadPayeResponse, body);
    CPayeResponse response;
    response.SetNothingYet();
    return response;
}

CNationalInsuranceResponse CNationalInsurance::GetNationalInsurance(const std::string& identifier, short taxYear,
                                                                    IChainLogger* logger)
{
    const std::string body = Get(kNationalInsuranceFacts, identifier, taxYear, logger);
    return body.empty() ? CNationalInsuranceResponse() : ReadAnswer(&ReadNationalInsuranceResponse, body);
}

std::shared_ptr<ITransport> CPayeOverride::RestFactory()
{
    return std::make_shared<CannedTransport>(CannedPayeAnswer(m_type));
}

std::shared_ptr<ITransport> CNationalInsuranceOverride::RestFactory()
{
    return std::make_shared<CannedTransport>(CannedNationalInsuranceAnswer(m_type));
}

} // namespace HmrcApi
