#pragma once

// One retrieval's requests and answers as log lines.

#include <string>

#include "HmrcApi/answers/AnswerTable.h"
#include "HmrcApi/Host.h"

namespace HmrcApi
{

struct InterfaceFacts;

/// Without a logger nothing.
class RequestLog
{
public:
    RequestLog(IChainLogger* logger, const InterfaceFacts& facts, const std::string& year);

    IChainLogger* Logger() const noexcept { return m_logger; }
    void Answered(unsigned number, const HttpAnswer& answer, const ErrorBody& body, const std::string& token) const;
    /// An answer that came whole and is none: what was wrong with it, and where.
    void Refused(const HmrcApiErrorException& refusal) const;

private:
    IChainLogger* m_logger;
    std::string m_interface, m_request;
};

} // namespace HmrcApi
