#pragma once

// How many statements the steps of the main job send to the engine.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "MorvUt/MorvUt.h"

/// What the current connection sends while this lives.
class SentStatements
{
public:
    SentStatements()
    {
        Quarry::GetConnection().OnSent([this](std::string_view statement) { Add(std::string(statement)); });
    }
    SentStatements(const SentStatements&) = delete;
    SentStatements& operator=(const SentStatements&) = delete;
    ~SentStatements() { Stop(); }

    void Stop() { Quarry::GetConnection().OnSent(nullptr); }
    int GetCount() const { return m_count; }
    /// How often something became durable: transactions, and writes outside of them.
    int GetDurable() const { return m_durable; }
    const std::string& GetText() const { return m_text; }

private:
    void Add(const std::string& statement)
    {
        m_text += std::to_string(++m_count) + ": " + statement + '\n';
        const std::string verb = statement.substr(0, statement.find(' '));
        const bool isWrite = verb == "INSERT" || verb == "UPDATE" || verb == "DELETE" || verb == "REPLACE";
        m_durable += verb == "COMMIT" || (isWrite && !m_isOpen);
        m_isOpen = verb == "BEGIN" || (m_isOpen && verb != "COMMIT" && verb != "ROLLBACK");
    }

    int m_count = 0;
    int m_durable = 0;
    bool m_isOpen = false;
    std::string m_text;
};

/// One step of the main job with one client, and the most that it may send.
struct Step
{
    const char* name;
    void (*run)(ClientId client, const std::string& gateway, HmrcApi::IEndpointOverride::ResponseType type);
    int most;
};

inline void FetchStep(ClientId client, const std::string& gateway, HmrcApi::IEndpointOverride::ResponseType type)
{
    EXPECT_TRUE(HmrcApi::FetchFromHmrc(client, gateway, type).ok);
}

/// The schedules, and what a program reads to print them.
inline void CreateStep(ClientId client, const std::string&, HmrcApi::IEndpointOverride::ResponseType)
{
    const HmrcApi::CreateResult result = HmrcApi::CreateFromHmrc(client, TaxYear(2018));
    EXPECT_EQ(result.created.employments, 2) << result.message;
    EXPECT_EQ(result.created.pensionsAndBenefits, 7);
    EXPECT_EQ(HmrcApi::LoadReturnYear(client, 2018).pensions.size(), 7u);
}

inline void DifferencesStep(ClientId client, const std::string&, HmrcApi::IEndpointOverride::ResponseType)
{
    HmrcApi::FindDifferences(client, TaxYear(2018));
}

inline constexpr Step kSteps[] = {
    {"first fetch", &FetchStep, 60},
    {"fetch without change", &FetchStep, 24},
    {"create", &CreateStep, 45},
    {"differences", &DifferencesStep, 8},
};

/// Takes the answer with everything through all steps. The number of statements of each.
inline std::vector<int> CountStatements(ClientId client, const std::string& gateway,
                                        HmrcApi::IEndpointOverride::ResponseType type)
{
    Cellar::CConnection& connection = Quarry::GetConnection();
    connection.GetSessionId();
    const auto logLines = [&] { return connection.Queryf("SELECT COUNT(*) FROM MTDLog").rows[0][0].integer; };
    std::vector<int> counts;
    for (const Step& step : kSteps) {
        SCOPED_TRACE(step.name);
        const auto linesBefore = logLines();
        SentStatements sent;
        step.run(client, gateway, type);
        sent.Stop();
        EXPECT_LE(sent.GetCount(), step.most) << sent.GetText();
        EXPECT_LE(sent.GetDurable(), logLines() - linesBefore + 1) << sent.GetText();
        counts.push_back(sent.GetCount());
    }
    return counts;
}
