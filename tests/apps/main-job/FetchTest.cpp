#include "apps/main-job/FetchTest.h"

#include <cstdlib>
#include <fstream>
#include <sstream>

#include "Afx/time/Clock.h"
#include "MorvUt/hmrc/access/ClientData.h"
#include "Shellkit/Envelope.h"
#include "Shellkit/KeyFile.h"
#include "Shellkit/PracticeKey.h"
#include "support/Table.h"

namespace
{

using ::Test::Json;

/// The number that Serve was given; -1 when there is no such row.
int Number(const std::string& pounds) { return pounds.empty() ? -1 : std::stoi(pounds); }

} // namespace

FetchTest::FetchTest(const std::string& scenario) : m_sandbox(scenario)
{
    const std::string key = ::Test::TempDir() + "/practice.db.key";
    EXPECT_TRUE(Shellkit::MakeKeyFile(key) && Shellkit::SetPracticeKey(*Shellkit::ReadKeyFile(key)));
    HmrcApi::CClientData::SetLoopbackOverride(m_sandbox.Base());
    ::Test::Windows().OnUnexpected([](const auto& shown) { return Afx::SafeAnswer(shown.style); });
    Afx::Clock::SetSleep([this](unsigned milliseconds) { m_waited += milliseconds; });
    Authorise();
}

FetchTest::~FetchTest()
{
    Afx::Clock::SetSleep({});
    HmrcApi::SetTimeouts({});
    HmrcApi::CClientData::SetLoopbackOverride({});
    Shellkit::SetPracticeKey({});
}

void FetchTest::Authorise()
{
    const ::Test::Ended ended = ::Test::Authorise(::Test::TempDir() + "/practice.db", m_sandbox, kGateway);
    ASSERT_EQ(ended.exit, 0) << ended.out << ended.err;
}

void FetchTest::Serve(int number)
{
    std::istringstream answers(
        ::Test::ReplacedAll(::Test::FileText("apps/main-job/answers.txt"), "NUMBER", std::to_string(number)));
    for (std::string path, body; answers >> path && std::getline(answers, body);)
        m_sandbox.Send("PUT", "/sandbox/answer/" + path + "/annual-summary/2017-18", body);
}

Fetched FetchTest::Fetch()
{
    m_sandbox.Send("DELETE", "/sandbox/requests");
    m_waited = 0;
    Fetched fetched;
    fetched.result = HmrcApi::FetchFromHmrc(m_client, kGateway);
    fetched.waited = m_waited;
    for (const Json& request : Json::parse(m_sandbox.Send("GET", "/sandbox/requests", ""))) {
        const std::string path = request["path"];
        ++fetched.asked[path.substr(1, path.find('/', 1) - 1)];
    }
    EXPECT_EQ(Query("SELECT COUNT(*) FROM MTDAuthorisationLock"), "0") << "a lock was left behind";
    return fetched;
}

int FetchTest::StagedPaye() const { return Number(Query("SELECT amtPay FROM BRIXMTD_Employments")); }
int FetchTest::StagedNationalInsurance() const { return Number(Query("SELECT amtClass2Due FROM BRIXMTD_NIC")); }

FetchTest::Tables FetchTest::Read() const
{
    const std::string dump = ::Test::TempDir() + "/dump";
    EXPECT_EQ(std::system(("sqlite3 -readonly '" + ::Test::TempDir() + "/practice.db' .dump >" + dump).c_str()), 0);
    Tables tables;
    std::ifstream lines(dump);
    const std::string insert = "INSERT INTO ";
    for (std::string line; std::getline(lines, line);)
        if (line.starts_with(insert))
            tables[line.substr(insert.size(), line.find(" VALUES") - insert.size())] += line;
    EXPECT_GT(tables.size(), 5u);
    return tables;
}

std::set<std::string> FetchTest::Changed(Tables before, Tables after, const std::set<std::string>& without)
{
    Tables all = before;
    all.merge(Tables(after));
    std::set<std::string> names;
    for (const auto& [name, rows] : all)
        if (!without.contains(name) && before[name] != after[name])
            names.insert(name);
    return names;
}
