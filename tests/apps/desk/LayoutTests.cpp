// What all layouts of the program and of the library keep to.

#include <gtest/gtest.h>

#include <span>
#include <string>
#include <vector>

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

/// Layouts with the mnemonics that are seen beside them in the same window.
struct Seen
{
    std::string beside;
    std::vector<const Afx::DialogLayout*> layouts;
    bool isOurs = true;
};

const Seen kAll[] = {
    {"", {&kOpenPracticeLayout, &kSignInLayout, &kClientsLayout, &kRollForwardLayout, &kReturnLayout, &kHmrcLayout}},
    {"", {&kYearEnquiriesLayout, &kYearTrackerLayout}},
    {"A", {&kPensionLayout, &kDividendLayout, &kBasisLayout, &kInvestmentLayout}},
    {"ACN", {&kEmploymentLayout}},
    {"ACNJSV", {&kInterestLayout, &kPaymentsLayout}},
    {"", {&kDifferencesLayout, &kEnquiriesLayout, &kEnquiryLayout, &kAvoidancePageLayout}, false},
    {"", {&kJointSpouseLayout, &kNotesStatusLayout}, false},
};

bool NeedsLabel(Afx::ControlKind kind)
{
    using Kind = Afx::ControlKind;
    return kind == Kind::Field || kind == Kind::Notes || kind == Kind::Combo || kind == Kind::EditCombo ||
           kind == Kind::List || kind == Kind::Custom;
}

/// Each mnemonic once; ours have a label with one before each field.
void Check(const Afx::DialogLayout& layout, std::string taken, bool isOurs)
{
    const Afx::LayoutRow* before = nullptr;
    for (const Afx::LayoutRow& row : std::span(layout.rows, layout.count)) {
        SCOPED_TRACE(std::string(layout.title) + ": " + row.text + ' ' + std::to_string(row.id));
        const char letter = Afx::MnemonicOf(CString(row.text));
        EXPECT_TRUE(letter == 0 || taken.find(letter) == taken.npos) << letter;
        taken += letter;
        if (isOurs && NeedsLabel(row.kind)) {
            EXPECT_TRUE(before && before->kind == Afx::ControlKind::Label &&
                        Afx::MnemonicOf(CString(before->text)) != 0);
        }
        before = &row;
    }
}

} // namespace

TEST(Layouts, HaveEachMnemonicOnceAndALabelWithOneBeforeEachField)
{
    for (const Seen& seen : kAll)
        for (const Afx::DialogLayout* const layout : seen.layouts)
            Check(*layout, seen.beside, seen.isOurs);
}
