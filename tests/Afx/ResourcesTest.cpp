#include "Afx/system/Resources.h"

#include <gtest/gtest.h>

#include "Afx/windows/MessageBox.h"
#include "Afx/windows/WindowSystem.h"

namespace
{

constexpr Afx::StringResource kLibrary[] = {{7, "%1 is using %2."}, {3, "100% of %1, %9 and %"}, {1, "first"}};
constexpr Afx::StringResource kModule[] = {{1, "other"}};
const Afx::ResourceContext library(kLibrary, std::size(kLibrary)), module_(kModule, std::size(kModule));

} // namespace

TEST(ResourceContext, SwitchesAndComesBack)
{
    CString text("unchanged");
    EXPECT_FALSE(text.LoadString(1)) << "no module yet";
    const Afx::ResourceContextGuard outer(library);
    {
        const Afx::ResourceContextGuard inner(module_);
        EXPECT_TRUE(text.LoadString(1));
        EXPECT_EQ(text, "other");
        EXPECT_FALSE(text.LoadString(7)) << "the inner module has no such text";
        EXPECT_EQ(text, "other");
    }
    EXPECT_TRUE(text.LoadString(1));
    EXPECT_EQ(text, "first");
}

TEST(FillPlaces, FillsInOrderAndOnlyOnce)
{
    const Afx::ResourceContextGuard guard(library);
    CString text;
    AfxFormatString2(text, 7, "%2", "returns");
    EXPECT_EQ(text, "%2 is using returns.") << "a text's own %2 stays";
    AfxFormatString1(text, 3, "it");
    EXPECT_EQ(text, "100% of it, %9 and %") << "places without a text stay";
    text.FormatMessage(7, {"Anna", "it"});
    EXPECT_EQ(text, "Anna is using it.");
    text.FormatMessage(99, {"Anna", "it"});
    EXPECT_EQ(text, "Message 99 Anna it") << "without the string nothing of the message is lost";
    AfxFormatString1(text, 7, nullptr);
    EXPECT_EQ(text, " is using %2.");
}

TEST(AfxMessageBox, AnswersSafelyWhereNobodyCan)
{
    for (const bool hasConsole : {true, false}) {
        Afx::WindowSystem::Install(hasConsole ? std::make_unique<Afx::ConsoleWindowSystem>() : nullptr);
        const CWaitCursor nobodyWaits;
        for (const auto& [style, answer] :
             {std::pair(MB_OK, IDOK), {MB_OKCANCEL | MB_ICONWARNING, IDCANCEL}, {MB_YESNO | MB_DEFBUTTON2, IDNO}}) {
            testing::internal::CaptureStderr();
            EXPECT_EQ(AfxMessageBox("Sure?", style), answer);
            EXPECT_EQ(testing::internal::GetCapturedStderr(), "Sure?\n");
        }
    }
}
