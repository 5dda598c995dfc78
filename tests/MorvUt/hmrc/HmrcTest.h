#pragma once

// A practice with one client who may be fetched for, and what it holds of HMRC's as text.

#include <concepts>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "Brix/Records.h"
#include "HmrcApi/answers/Errors.h"
#include "HmrcApi/Fakes.h"
#include "MorvUt/hmrc/fetch/EmploymentsPrepop.h"
#include "MorvUt/hmrc/fetch/NicPrepop.h"
#include "MorvUt/hmrc/fetch/PayePrepop.h"
#include "MorvUt/taxyear/CurrentTaxYear.h"
#include "MorvUt/users/UserData.h"
#include "support/Practice.h"

inline constexpr char kGateway[] = "GATEWAY1";
inline constexpr short kYear = 2018; // of HMRC's published examples

/// What a fetch overrides so that an endpoint has the answer of that name.
#define ANSWERED(Interface, name)                                                                                      \
    std::shared_ptr<HmrcApi::C##Interface> Get##Interface##Endpoint(HmrcApi::CAuthorisation& of) override              \
    {                                                                                                                  \
        return EndpointOf<HmrcApi::C##Interface>(of, name);                                                            \
    }                                                                                                                  \
    static_assert(true)

/// A fetch with answers of the test's own, by their names; none is "nothing yet".
template<class Prepop>
class Answered : public Prepop
{
public:
    Answered(ClientId client, const char* number, std::map<std::string, std::string> answers)
        : Prepop(client, TaxYear(kYear), number, HmrcApi::IEndpointOverride::Everything), m_answers(std::move(answers))
    {}

protected:
    template<class Endpoint>
    std::shared_ptr<Endpoint> EndpointOf(HmrcApi::CAuthorisation& of, const char* name)
    {
        const std::string& json = m_answers[name];
        auto transport = std::make_shared<HmrcApi::Fakes::FakeTransport>();
        transport->Script({{json.empty() ? 404 : 200, json.empty() ? R"({"code":"NOT_FOUND"})" : json}});
        return std::make_shared<HmrcApi::Fakes::Through<Endpoint>>(of, transport);
    }

private:
    std::map<std::string, std::string> m_answers;
};

/// By PAYE.
class PayeOf : public Answered<HmrcApi::CPAYEPrepop>
{
public:
    PayeOf(ClientId client, const std::string& json) : Answered(client, "AA000001A", {{"paye", json}}) {}

private:
    ANSWERED(Paye, "paye");
};

/// By the individual interfaces, with answers by their names (history, income, benefits, tax).
class EmploymentsOf : public Answered<HmrcApi::CEmploymentsPrepop>
{
public:
    EmploymentsOf(ClientId client, const std::map<std::string, std::string>& parts)
        : Answered(client, "2234567890", parts)
    {}

private:
    ANSWERED(EmploymentHistory, "history");
    ANSWERED(IncomeSummary, "income");
    ANSWERED(BenefitsSummary, "benefits");
    ANSWERED(TaxSummary, "tax");
};

/// National Insurance likewise.
class NicOf : public Answered<HmrcApi::CNICPrepop>
{
public:
    NicOf(ClientId client, const std::string& json) : Answered(client, "2234567890", {{"insurance", json}}) {}

private:
    ANSWERED(NationalInsurance, "insurance");
};

#undef ANSWERED

class HmrcPractice : protected ::Test::Practice
{
protected:
    HmrcPractice();
    ~HmrcPractice();

    /// From now on ANNA has these permissions and no others.
    static void Allow(const std::vector<int>& permissions);
    /// Fetches and stages; the group's errors stay in Errors().
    template<std::derived_from<HmrcApi::CSchedulePrepop> Prepop>
    HmrcApi::StagedCounts Fetch(Prepop& prepop)
    {
        m_errors = std::make_shared<HmrcApi::CAPIErrorHandler>();
        HmrcApi::Logger logger;
        if constexpr (std::derived_from<Prepop, HmrcApi::CPAYEPrepop>)
            prepop.GetPAYEData("AA000001A", m_errors, &logger);
        else if constexpr (std::derived_from<Prepop, HmrcApi::CNICPrepop>)
            prepop.GetNICData("2234567890", m_errors, &logger);
        else
            prepop.GetEmploymentData("2234567890", m_errors, &logger);
        return prepop.GetStagedCounts();
    }
    HmrcApi::StagedCounts Fetch(HmrcApi::IEndpointOverride::ResponseType type);
    HmrcApi::StagedCounts Fetch(const std::string& answer); // as Answer takes it
    /// By the command, as ANNA: what it answers, of "ok, new data, clear", and shows, a message a line.
    std::string Retrieve(HmrcApi::IEndpointOverride::ResponseType type = HmrcApi::IEndpointOverride::Everything) const;
    /// "code" of each error of the last fetch, separated by blanks.
    std::string Errors() const;
    HmrcApi::CreatedSchedules Create();
    /// No staging rows and no schedules, as before the first fetch.
    void Forget();

    /// The staging rows, one a line: "key|employer|reference|works|start|end|pay|tax|loan" in the order of their keys;
    /// "key|number|name|amount|forecast" for their benefits; "type|reference|payer|date|amount|tax";
    /// "number|name|amount" for allowances. "! " before withdrawn ones.
    std::string Staged() const;
    /// The client's rows that HMRC still sends, as PlainMapping.h has them.
    static std::vector<std::string> LiveRows(ClientId client);
    /// The schedules in their order: "ordering|employer|reference|works|start|end|pay|tax|loan";
    /// "ordering|code|amount|estimate" for their benefits;
    /// "ordering|section|type|description|payer|reference|date|amount|tax".
    std::string Schedules() const;
    /// What the return and HMRC differ in: "place item (rejected): caption return/hmrc ...", one a line.
    std::string Differences() const;

    const ClientId m_client{1};
    std::shared_ptr<HmrcApi::CAPIErrorHandler> m_errors = std::make_shared<HmrcApi::CAPIErrorHandler>();
};

/// It in either database.
class HmrcTest : public ::Test::OnDatabase, protected HmrcPractice
{};

/// `text` with its first `from` replaced; there must be one.
std::string Replaced(std::string text, const std::string& from, const std::string& to);

/// HMRC's answer by PAYE with "employment REFERENCE WORKS PAY [BENEFIT=AMOUNT ...]; pension REFERENCE WORKS PAY;
/// benefit TYPE DATE PAY; more MEMBERS": "-" for none, "?" behind a forecast. An answer as JSON, or none, stays as it
/// is.
std::string Answer(const std::string& items);
