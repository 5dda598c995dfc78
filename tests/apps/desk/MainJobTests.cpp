// The main job by a user's hands, in each way of working and on both databases.

#include <chrono>
#include <cstdlib>
#include <thread>

#include "Afx/time/Clock.h"
#include "apps/desk/DeskTest.h"

namespace
{

class MainJob : public DeskTest
{
protected:
    explicit MainJob(::Test::Database kind = ::Test::Database::Embedded) : DeskTest(kind)
    {
        Afx::Clock::SetSleep([](unsigned) {});
        m_base = m_sandbox.Base();
        EXPECT_EQ(::Test::Authorise(m_practice, m_sandbox).exit, 0);
        On("No mouse", [this] { m_noMouse.emplace(); });
        On("HMRC fails", [this](const std::string& how) { m_sandbox.Send("POST", "/sandbox/fault", how); });
        On("HMRC works again", [this] { m_sandbox.Send("DELETE", "/sandbox/fault"); });
    }
    void RunAll() { Play("apps/desk/MainJob.story", "Runs_from_the_fetch_to_a_rejected_difference"); }

    ::Test::HmrcSandbox m_sandbox{"EVERYTHING"};
    std::optional<::Test::KeyboardAlone> m_noMouse;
};

STORIES(MainJob, "apps/desk/Faults.story");

class WaitingWindows : public Afx::HeadlessWindowSystem
{
public:
    /// A browser whose user consents.
    bool OpenBrowser(const std::string& address) override
    {
        return std::system(("curl -sL -m 20 -o /dev/null '" + address + "' &").c_str()) == 0;
    }
    void ShowWait(const std::string& text) override { waits += text.empty() ? 0 : 1; }
    bool WaitCancelled() override { return isCancelling; }
    bool isCancelling = false;
    int waits = 0;
};

/// With a window system of its own.
class WaitingMainJob : public MainJob
{
protected:
    WaitingMainJob()
    {
        auto system = std::make_unique<WaitingWindows>();
        windows = system.get();
        Afx::WindowSystem::Install(std::move(system));
        On("The user cancels whatever takes long", [this] { windows->isCancelling = true; });
        On("Give authority...", [this] { return GiveAuthority(); });
    }
    ~WaitingMainJob() override { EXPECT_GT(windows->waits, 0); }
    /// Again and again, since other tests may hold all the ports for a moment.
    std::string GiveAuthority()
    {
        std::string result;
        for (int tries = 0; result.empty() && tries < 20; ++tries) {
            const std::size_t told = windows->Messages().size();
            Here().Click(IDC_HMRC_AUTHORISE);
            if (windows->Messages().size() > told) {
                Hands::ExpectMessage(
                    "No port is free on which HMRC's answer could arrive\n\nClose the other program that "
                    "waits for HMRC's answer, then authorise again.");
                std::this_thread::sleep_for(std::chrono::milliseconds(250));
            }
            result = Here().Control(IDC_HMRC_RESULT).Text().Str();
        }
        return result;
    }
    WaitingWindows* windows;
};

STORIES(WaitingMainJob, "apps/desk/Waiting.story");

class MainJobOnDatabase : public MainJob, public testing::WithParamInterface<::Test::Database>
{
protected:
    MainJobOnDatabase() : MainJob(GetParam()) {}
};
ON_BOTH_DATABASES(MainJobOnDatabase);

} // namespace

TEST_P(MainJobOnDatabase, RunsFromTheFetchToARejectedDifference) { RunAll(); }

TEST_F(MainJob, RunsByKeyboardAlone)
{
    m_noMouse.emplace();
    RunAll();
}
