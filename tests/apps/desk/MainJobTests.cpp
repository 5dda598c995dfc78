// The main job by a user's hands: fetch, create, review; and while HMRC's service is down half-way.

#include <chrono>
#include <cstdlib>
#include <thread>

#include "Afx/time/Clock.h"
#include "apps/desk/DeskTest.h"
#include "Brix/Records.h"
#include "layouts/Sheets.h"
#include "MorvUt/res/layouts/Differences.h"

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
    }

    static std::string ResultOf(const Hands& hands) { return Text(hands, IDC_HMRC_RESULT); }
    static bool Holds(const std::string& text, const char* part) { return text.find(part) != std::string::npos; }

    /// From the sign-in on: one difference is made and rejected.
    void WorkToARejectedDifference();

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
    }
    WaitingWindows* windows;
};

class MainJobOnDatabase : public MainJob, public testing::WithParamInterface<::Test::Database>
{
protected:
    MainJobOnDatabase() : MainJob(GetParam()) {}
};
ON_BOTH_DATABASES(MainJobOnDatabase);

void MainJob::WorkToARejectedDifference()
{
    RunIn("C0001", [](Hands& hands) {
        EXPECT_TRUE(Rows(hands, IDC_RETURN_SCHEDULES).empty());
        NextPage(hands);
        hands.ExpectText(IDC_HMRC_GATEWAY, "gateway-1");
        hands.Click(IDC_HMRC_FETCH);
        EXPECT_TRUE(Holds(ResultOf(hands), "19 items from HMRC (19 new, 0 changed, 0 no longer sent). 9 are not in the "
                                           "return yet."))
            << ResultOf(hands);
        hands.Click(IDC_HMRC_CREATE);
        EXPECT_TRUE(Holds(ResultOf(hands), "Created 2 employment schedules and 7 pension or benefit schedules.\n"))
            << ResultOf(hands);
        EXPECT_TRUE(Rows(hands, IDC_HMRC_DIFFERENCES).empty());

        hands.Press(VK_TAB, Afx::kControl | Afx::kShift);
        ASSERT_EQ(Rows(hands, IDC_RETURN_SCHEDULES).size(), 9u);
        InNext([](Hands& employment) {
            employment.Type(IDC_EMPLOYMENT_PAY, "1");
            employment.Click(IDOK);
        });
        hands.Choose(IDC_RETURN_SCHEDULES, 0);
        hands.Press(VK_RETURN);

        NextPage(hands);
        ASSERT_EQ(Rows(hands, IDC_HMRC_DIFFERENCES).size(), 1u);
        InNext([](Hands& difference) {
            difference.Press(VK_F1);
            EXPECT_EQ(::Test::Windows().Helped(),
                      std::vector<std::string>{"/help/review.md#" + std::to_string(IDC_DIFFERENCES_GRID)});
            difference.Answer(IDNO);
            difference.Click(IDC_DIFFERENCES_REJECT);
            difference.ExpectMessage("Rejecting differences will prevent retrieval of HMRC Data unless it changes.\n\n"
                                     "Click No and then Skip to defer this decision.\n\nDo you want to reject?");
            difference.Answer(IDYES);
            difference.Click(IDC_DIFFERENCES_REJECT);
            difference.ExpectMessage("Rejecting differences will prevent retrieval of HMRC Data unless it changes.\n\n"
                                     "Click No and then Skip to defer this decision.\n\nDo you want to reject?");
        });
        hands.Click(IDC_HMRC_REVIEW);
        hands.ExpectText(IDC_HMRC_RESULT, "0 accepted, 1 rejected, 0 skipped.");
        const auto left = Rows(hands, IDC_HMRC_DIFFERENCES);
        ASSERT_EQ(left.size(), 1u);
        EXPECT_TRUE(Holds(left[0], " | rejected | ")) << left[0];
        EXPECT_FALSE(hands.Control(IDC_HMRC_REVIEW).IsWindowEnabled());
    });
    EXPECT_EQ(Query("SELECT COUNT(*) FROM MTDAudit WHERE strUserID = 'alice'"), "1");
    Brix::CNewEmploy saved;
    saved.Open({{saved.kClientID, 1}}, {{saved.kOrdering}});
    EXPECT_EQ(saved.GetPay(), Kiln::CAmt::FromPence(100));
}

} // namespace

TEST_P(MainJobOnDatabase, RunsFromTheFetchToARejectedDifference) { WorkToARejectedDifference(); }

TEST_F(MainJob, RunsByKeyboardAlone)
{
    const Hands::KeyboardAlone keyboard;
    WorkToARejectedDifference();
}

TEST_F(MainJob, TellsOnceWhatHmrcCouldNotServeAndGoesOnFromThere)
{
    const Hands::KeyboardAlone keyboard;
    m_sandbox.Send("POST", "/sandbox/fault", R"({"path":"/individual-paye","fault":"SERVER_ERROR","times":0})");
    RunIn("C0001", [this](Hands& hands) {
        NextPage(hands);
        hands.Click(IDC_HMRC_FETCH);
        hands.ExpectMessage("PAYE: A temporary problem occurred (SERVER_ERROR). Try again in a few minutes.");
        EXPECT_TRUE(Holds(ResultOf(hands), "1 item from HMRC (1 new, 0 changed, 0 no longer sent). PAYE: not fetched."))
            << ResultOf(hands);
        m_sandbox.Send("DELETE", "/sandbox/fault");
        hands.Click(IDC_HMRC_FETCH);
        hands.Click(IDC_HMRC_CREATE);
        EXPECT_TRUE(Holds(ResultOf(hands), "Created 2 employment schedules")) << ResultOf(hands);
    });
}

TEST_F(WaitingMainJob, IsCancelledAndWritesNothing)
{
    RunIn("C0001", [this](Hands& hands) {
        NextPage(hands);
        windows->isCancelling = true;
        hands.Click(IDC_HMRC_FETCH);
        windows->isCancelling = false;
        EXPECT_GT(windows->waits, 0);
        EXPECT_EQ(windows->Messages().size(), 1u) << "told once";
        hands.ExpectMessage(windows->Messages().empty() ? "" : windows->Messages()[0].text);
    });
    EXPECT_EQ(Query("SELECT COUNT(*) FROM BRIXMTD_Employments"), "0");
}

TEST_F(WaitingMainJob, IsGivenAuthorityInTheBrowser)
{
    RunIn("C0001", [this](Hands& hands) {
        NextPage(hands);
        hands.Type(IDC_HMRC_GATEWAY, "gateway-2");
        for (int tries = 0; ResultOf(hands).empty() && tries < 20; ++tries) {
            const std::size_t told = windows->Messages().size();
            hands.Click(IDC_HMRC_AUTHORISE);
            if (windows->Messages().size() > told) { // other tests may hold all the ports for a moment
                hands.ExpectMessage(
                    "No port is free on which HMRC's answer could arrive\n\nClose the other program that "
                    "waits for HMRC's answer, then authorise again.");
                std::this_thread::sleep_for(std::chrono::milliseconds(250));
            }
        }
        EXPECT_EQ(ResultOf(hands), "HMRC gave authority for PAYE, National Insurance and Marriage Allowance records.");
        hands.Click(IDC_HMRC_FETCH);
        EXPECT_TRUE(Holds(ResultOf(hands), "19 items from HMRC")) << ResultOf(hands);
    });
    EXPECT_GT(windows->waits, 0);
}

TEST_F(MainJob, RefusesWhoHasNoRight)
{
    RunIn(
        "C0001",
        [](Hands& hands) {
            NextPage(hands);
            hands.Click(IDC_HMRC_FETCH);
            hands.ExpectMessage(
                "You do not have permission to do this.\n\nPlease contact your administrator for more details.");
        },
        "ben");
}
