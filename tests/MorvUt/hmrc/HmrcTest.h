#pragma once

// A practice with one client who may be fetched for, and what it holds of HMRC's as text.

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "Brix/Records.h"
#include "Cellar/BufferedRowList.h"
#include "HmrcApi/Errors.h"
#include "MorvUt/hmrc/PayePrepop.h"
#include "MorvUt/Practice.h"
#include "MorvUt/users/UserData.h"

inline constexpr char kGateway[] = "GATEWAY1";
inline constexpr short kYear = 2018; // of HMRC's published examples

/// Answers each request with the next of its bodies, the last one again and again; an empty one is "nothing yet".
class ScriptedTransport : public HmrcApi::ITransport
{
public:
    explicit ScriptedTransport(std::string body) : m_body(std::move(body)) {}
    HmrcApi::HttpAnswer Send(const HmrcApi::HttpRequest&) override
    {
        HmrcApi::HttpAnswer answer;
        answer.outcome = HmrcApi::HttpAnswer::Outcome::Answered;
        answer.status = m_body.empty() ? 404 : 200;
        answer.contentType = "application/json";
        answer.body = m_body.empty() ? R"({"code":"NOT_FOUND"})" : m_body;
        return answer;
    }

private:
    std::string m_body;
};

/// The PAYE fetch with an answer of the test's own.
class PayeOf : public HmrcApi::CPAYEPrepop
{
public:
    PayeOf(ClientId client, std::string json)
        : CPAYEPrepop(client, TaxYear(kYear), "AA000001A", HmrcApi::IEndpointOverride::Everything),
          m_json(std::move(json))
    {}

private:
    class Endpoint : public HmrcApi::CPaye
    {
    public:
        Endpoint(HmrcApi::CAuthorisation& authorisation, std::string json)
            : CPaye(authorisation), m_json(std::move(json))
        {}

    private:
        std::unique_ptr<HmrcApi::ITransport> RestFactory() override
        {
            return std::make_unique<ScriptedTransport>(m_json);
        }
        std::string m_json;
    };

    std::shared_ptr<HmrcApi::CPaye> GetPayeEndpoint(HmrcApi::CAuthorisation& authorisation) override
    {
        return std::make_shared<Endpoint>(authorisation, m_json);
    }
    std::string m_json;
};

class HmrcTest : public testing::Test
{
protected:
    HmrcTest();
    ~HmrcTest() override;

    /// Fetches and stages; the group's errors stay in Errors().
    HmrcApi::StagedCounts Fetch(HmrcApi::CPAYEPrepop& prepop);
    HmrcApi::StagedCounts Fetch(HmrcApi::IEndpointOverride::ResponseType type);
    HmrcApi::StagedCounts Fetch(const std::string& json)
    {
        PayeOf prepop(m_client, json);
        return Fetch(prepop);
    }
    /// "code" of each error of the last fetch, separated by blanks.
    std::string Errors() const;
    HmrcApi::CreatedSchedules Create();

    /// The staging rows of the client's year, one a line, in the order of their keys and dates:
    /// "key|employer|reference|works|start|end|pay|tax|loan", then "+ number name amount [forecast]" for its benefits;
    /// "type reference|payer|date|amount|tax"; "allowance number name amount". "-" is null, "!" marks withdrawn rows.
    std::string Staged() const;
    /// The schedules in their order: "ordering employer|reference|works|start|end|pay|tax|loan", then
    /// "+ code amount [estimate]"; "ordering section/type description|payer|reference|date|amount|tax".
    std::string Schedules() const;

    std::string Query(const Cellar::SqlText& statement) const; // the first column's texts, separated by ", "
    static void Sql(const Cellar::SqlText& statement) { Quarry::GetConnection().ExecuteDirect(statement); }

    ::Test::Practice m_practice;
    ClientId m_client;
    std::shared_ptr<HmrcApi::CAPIErrorHandler> m_errors = std::make_shared<HmrcApi::CAPIErrorHandler>();
};

// Parts of HMRC's answer.

std::string Answer(const std::string& employments, const std::string& pensions = {}, const std::string& benefits = {},
                   const std::string& more = {});
/// An employment with or without works number, pay in pounds ("" for none), and company benefits.
std::string Employment(const std::string& reference, const std::string& works, const std::string& pay,
                       const std::string& benefits = {});
std::string Benefit(const std::string& type, const std::string& amount, bool isForecast = false);
std::string Pension(const std::string& reference, const std::string& works, const std::string& pay);
std::string StateBenefit(const std::string& type, const std::string& start, const std::string& pay);
