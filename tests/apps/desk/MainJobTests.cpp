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
        On("HMRC fails", [this](const std::string& how) { m_sandbox.Send("POST", "/sandbox/fault", how); });
        On("HMRC works again", [this] { m_sandbox.Send("DELETE", "/sandbox/fault"); });
    }
    void Tell(const char* story) { Play("apps/desk/MainJob.story", story); }

    ::Test::HmrcSandbox m_sandbox{"EVERYTHING"};
};

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
            result = Text(Here(), IDC_HMRC_RESULT);
        }
        return result;
    }
    WaitingWindows* windows;
};

class MainJobOnDatabase : public MainJob, public testing::WithParamInterface<::Test::Database>
{
protected:
    MainJobOnDatabase() : MainJob(GetParam()) {}
};
ON_BOTH_DATABASES(MainJobOnDatabase);

constexpr char kFromFetchToRejection[] = "Runs_from_the_fetch_to_a_rejected_difference";

} // namespace

TEST_P(MainJobOnDatabase, RunsFromTheFetchToARejectedDifference) { Tell(kFromFetchToRejection); }

TEST_F(MainJob, RunsByKeyboardAlone)
{
    const ::Test::KeyboardAlone keyboard;
    Tell(kFromFetchToRejection);
}

TEST_F(MainJob, TellsOnceWhatHmrcCouldNotServeAndGoesOnFromThere)
{
    const ::Test::KeyboardAlone keyboard;
    Tell("Tells_once_what_HMRC_could_not_serve_and_goes_on_from_there");
}

TEST_F(MainJob, RefusesWhoHasNoRight) { Tell("Refuses_who_has_no_right"); }
TEST_F(WaitingMainJob, IsCancelledAndWritesNothing) { Tell("Is_cancelled_and_writes_nothing"); }
TEST_F(WaitingMainJob, IsGivenAuthorityInTheBrowser) { Tell("Is_given_authority_in_the_browser"); }
