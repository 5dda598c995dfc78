// Differences put before a person, one after another.

#include "MorvUt/hmrc/HmrcTest.h"
#include "MorvUt/hmrc/review/ReviewScreen.h"
#include "MorvUt/res/layouts/Differences.h"
#include "support/Hands.h"

class ReviewOnScreen : public HmrcTest
{
protected:
    ReviewOnScreen() { Allow({87, 34, 88, 89}); }
};
ON_BOTH_DATABASES(ReviewOnScreen);

namespace
{

constexpr char kAcceptQuestion[] =
    "Clicking Accept will result in any corresponding schedule data being replaced with HMRC data.\n\nDo you want to "
    "continue?";
constexpr char kRejectQuestion[] =
    "Rejecting differences will prevent retrieval of HMRC Data unless it changes.\n\nClick No and then Skip to defer "
    "this decision.\n\nDo you want to reject?";

std::string Shown(const CMTDDifferencesGrid& grid)
{
    std::string text;
    for (int row = 0; row < grid.GetRowCount(); ++row) {
        EXPECT_FALSE(grid.IsCellEditable(row, CMTDDifferencesGrid::kHmrc));
        for (int column = 0; column < grid.GetColumnCount(); ++column)
            text += (column ? "|" : "") + grid.GetCellText(row, column).Str();
        text += '\n';
    }
    return text;
}

constexpr char kAudited[] = "SELECT strAction, strUserID, strItem, strHMRC, strReturn FROM MTDAudit ORDER BY lID";

} // namespace

TEST_P(ReviewOnScreen, AsksRightsAndThePersonAndWritesOneAuditLine)
{
    Fetch("employment 1/A - 100; employment 2/B - 200");
    Create();
    Fetch("employment 1/A - 150; employment 2/B - 250");
    const std::string before = Schedules();
    const auto review = [this](const std::vector<::Test::Acts>& dialogs) {
        std::for_each(dialogs.begin(), dialogs.end(), ::Test::InNext);
        return HmrcApi::ReviewDifferences(m_client, TaxYear(kYear));
    };
    // A user without rights, then one who thinks again and skips, then stops.
    const auto refused = [](::Test::Hands& hands) {
        const auto& grid = dynamic_cast<CMTDDifferencesGrid&>(hands.Control(IDC_DIFFERENCES_GRID));
        EXPECT_NE(Shown(grid).find("Pay|150.00|100.00|"), std::string::npos) << Shown(grid);
        hands.Press(VK_RETURN); // in the grid it decides nothing
        CUserData::ClearPermissions();
        hands.Click(IDC_DIFFERENCES_ACCEPT);
        hands.ExpectMessage("You do not have permission to save the tax return.\n\nPlease contact your Administrator "
                            "for more details.");
        CUserData::SetUser("ANNA");
        hands.Answer(IDNO);
        hands.Click(IDC_DIFFERENCES_REJECT);
        hands.ExpectMessage(kRejectQuestion);
        hands.Click(IDC_DIFFERENCES_SKIP);
    };
    const auto stops = [](::Test::Hands& hands) { hands.Click(IDCANCEL); };
    HmrcApi::ReviewCount count = review({refused, stops});
    EXPECT_EQ(count.skipped, 1);
    EXPECT_TRUE(count.stopped);
    EXPECT_EQ(Query(kAudited), "");
    EXPECT_EQ(Schedules(), before);
    // One accepted, one rejected.
    count = review({[](::Test::Hands& hands) {
                        hands.Answer(IDYES);
                        hands.Press('A', Afx::kAlt);
                        hands.ExpectMessage(kAcceptQuestion);
                        EXPECT_EQ(::Test::Windows().Messages().back().style, MB_YESNO | MB_DEFBUTTON2);
                    },
                    [](::Test::Hands& hands) {
                        hands.Answer(IDYES);
                        hands.Press('R', Afx::kAlt);
                        hands.ExpectMessage(kRejectQuestion);
                        EXPECT_EQ(::Test::Windows().Messages().back().style, MB_YESNO | MB_ICONWARNING | MB_DEFBUTTON2);
                    }});
    EXPECT_EQ(count.accepted + 10 * count.rejected, 11);
    EXPECT_EQ(Schedules(), Replaced(before, "100.00", "150.00"));
    EXPECT_EQ(Query(kAudited),
              "accept|ANNA|Firm (1/A)|Pay 150.00|Pay 100.00, reject|ANNA|Firm (2/B)|Pay 250.00|Pay 200.00");
    EXPECT_EQ(review({}).stopped, false) << "a rejected figure is not offered again";
    Fetch("employment 1/A - 150; employment 2/B - 250.01");
    EXPECT_TRUE(review({stops}).stopped) << "until it changes by a penny";
}

TEST_P(ReviewOnScreen, TellsTheSecondOfTwoReviewers)
{
    Fetch("employment 1/A - 100");
    Create();
    Fetch("employment 1/A - 150");
    ::Test::InNext([](::Test::Hands& hands) {
        Sql("UPDATE BRIXNewEmploy SET amtPay = %m", Kiln::CAmt::FromPence(12000)); // by somebody else meanwhile
        hands.Answer(IDYES);
        hands.Click(IDC_DIFFERENCES_ACCEPT);
        hands.ExpectMessage(kAcceptQuestion);
    });
    EXPECT_EQ(HmrcApi::ReviewDifferences(m_client, TaxYear(kYear)).accepted, 0);
    EXPECT_EQ(::Test::Windows().Messages().back().text, "The figures have changed since they were listed.");
    EXPECT_EQ(Query(kAudited), "");
}
