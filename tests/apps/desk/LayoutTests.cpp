// What all layouts of the program and of the library keep to.

#include <gtest/gtest.h>

#include <map>
#include <span>
#include <string>

#include "Afx/windows/Wnd.h"
#include "layouts/Clients.h"
#include "layouts/ClientYear.h"
#include "layouts/Sheets.h"
#include "layouts/SignIn.h"
#include "MorvUt/res/layouts/Differences.h"
#include "MorvUt/res/layouts/Enquiries.h"
#include "MorvUt/res/layouts/JointSpouse.h"
#include "MorvUt/res/layouts/Notes.h"

namespace
{

/// A layout with what is seen beside it in the same window.
struct Seen
{
    const Afx::DialogLayout& layout;
    std::string beside; // mnemonics
    bool isOurs = true;
};

constexpr char kApply[] = "A", kNotesAndApply[] = "ACN", kJointNotesAndApply[] = "ACNJSV";

const Seen kAll[] = {
    {kOpenPracticeLayout, ""},
    {kSignInLayout, ""},
    {kClientsLayout, ""},
    {kRollForwardLayout, ""},
    {kReturnLayout, ""},
    {kHmrcLayout, ""},
    {kYearEnquiriesLayout, ""},
    {kYearTrackerLayout, ""},
    {kEmploymentLayout, kNotesAndApply},
    {kPensionLayout, kApply},
    {kInterestLayout, kJointNotesAndApply},
    {kPaymentsLayout, kJointNotesAndApply},
    {kDividendLayout, kApply},
    {kBasisLayout, kApply},
    {kInvestmentLayout, kApply},
    {kDifferencesLayout, "", false},
    {kEnquiriesLayout, "", false},
    {kEnquiryLayout, "", false},
    {kAvoidancePageLayout, "", false},
    {kJointSpouseLayout, "", false},
    {kNotesStatusLayout, "", false},
};

bool NeedsLabel(Afx::ControlKind kind)
{
    using Kind = Afx::ControlKind;
    return kind == Kind::Field || kind == Kind::Notes || kind == Kind::Combo || kind == Kind::EditCombo ||
           kind == Kind::List || kind == Kind::Custom;
}

} // namespace

TEST(Layouts, HaveEachMnemonicOnceAndALabelWithOneBeforeEachField)
{
    for (const Seen& seen : kAll) {
        std::map<char, std::string> taken;
        for (const char letter : seen.beside)
            taken[letter] = "beside it";
        const std::span rows(seen.layout.rows, seen.layout.count);
        for (const Afx::LayoutRow& row : rows) {
            const char letter = Afx::MnemonicOf(CString(row.text));
            if (letter == 0)
                continue;
            EXPECT_TRUE(taken.emplace(letter, row.text).second)
                << seen.layout.title << ": " << row.text << " and " << taken[letter];
        }
        for (std::size_t i = 0; seen.isOurs && i < rows.size(); ++i) {
            if (!NeedsLabel(rows[i].kind))
                continue;
            ASSERT_GT(i, 0u);
            EXPECT_TRUE(rows[i - 1].kind == Afx::ControlKind::Label && Afx::MnemonicOf(CString(rows[i - 1].text)) != 0)
                << seen.layout.title << ": control " << rows[i].id;
        }
    }
}
