#pragma once

// What was asked, for tests.

#include <deque>
#include <nlohmann/json.hpp>
#include <string>

#include "Http.h"

namespace Sandbox
{

/// The requests that came, oldest first, for tests that count and order them. Holds no token, secret, code or query.
class RequestLog
{
public:
    /// `authorised`: the request brought a token that held, or for a token request credentials that were taken.
    void Add(const Call& call, const Answer& answer, bool authorised);
    void Clear() { m_lines.clear(); }
    nlohmann::ordered_json ToJson() const;

private:
    struct Line
    {
        std::string method, path, accept, grantType, code;
        int status;
        bool authorised;
    };

    std::deque<Line> m_lines;
};

} // namespace Sandbox
