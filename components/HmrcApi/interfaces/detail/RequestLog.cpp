#include "HmrcApi/interfaces/detail/RequestLog.h"

#include "Afx/text/Utf8.h"
#include "HmrcApi/answers/Mask.h"
#include "HmrcApi/interfaces/Interface.h"

namespace HmrcApi
{
namespace
{

/// The beginning of a body: masked before it is cut, so that no half of a token stays, and whole characters only.
std::string Shown(const std::string& body, const std::string& token)
{
    constexpr std::size_t kShown = 4000;
    return std::string(Afx::CutUtf8(Afx::ToUtf8(Mask(body, {token})), kShown));
}

} // namespace

RequestLog::RequestLog(IChainLogger* logger, const InterfaceFacts& facts, const std::string& year)
    : m_logger(logger), m_interface(facts.name),
      m_request(std::string("GET /") + facts.before + "*/annual-summary/" + year)
{}

void RequestLog::Answered(unsigned number, const HttpAnswer& answer, const ErrorBody& body,
                          const std::string& token) const
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

void RequestLog::Refused(const HmrcApiErrorException& refusal) const
{
    if (m_logger)
        m_logger->Log("Refused", m_interface, m_request, refusal.GetCode(), Mask(refusal.GetText()));
}

} // namespace HmrcApi
