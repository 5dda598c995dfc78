#include "Afx/windows/Wnd.h"

#include <memory>
#include <tuple>

#include "Afx/windows/Edit.h"
#include "support/Test.h"

TEST(CWnd, KnowsItsControlsAndForgetsThoseThatEnd)
{
    CWnd other, second;
    {
        CWnd window;
        auto first = std::make_unique<CWnd>();
        EXPECT_TRUE(first->Create(&window, 7));
        EXPECT_TRUE(second.Create(&window, 7));
        EXPECT_FALSE(second.Create(&other, 8)) << "has a parent";
        EXPECT_FALSE(other.Create(nullptr, 8));
        EXPECT_EQ(window.GetDlgItem(7), first.get());
        EXPECT_EQ(window.GetDlgItem(8), nullptr);
        first->SetFocus();
        first.reset();
        EXPECT_EQ(window.GetDlgItem(7), &second);
        EXPECT_EQ(CWnd::GetFocus(), nullptr);
        window.EnableWindow(false);
        EXPECT_FALSE(second.TakesInput());
    }
    EXPECT_EQ(second.GetParent(), nullptr) << "outlives its parent";
    EXPECT_TRUE(second.TakesInput());
}

TEST(CWnd, TakesInputOnlyWhenAllAroundItDoes)
{
    CWnd around;
    CEdit control;
    control.Create(&around, 7);
    for (const auto& [window, hides, why] : {
             std::tuple<CWnd*, bool, const char*>(&control, false, "disabled"),
             {&control, true, "hidden"},
             {&around, false, "in a disabled window"},
             {&around, true, "in a hidden window"},
         }) {
        SCOPED_TRACE(why);
        EXPECT_TRUE(hides ? window->ShowWindow(false) : window->EnableWindow(false));
        control.SetFocus();
        EXPECT_EQ(CWnd::GetFocus(), nullptr);
        EXPECT_EQ(control.IsWindowVisible(), !hides);
        control.DeliverChar('a');
        EXPECT_FALSE(hides ? window->ShowWindow(true) : window->EnableWindow(true));
    }
    EXPECT_EQ(control.Text(), "");
    control.DeliverChar('a');
    EXPECT_EQ(control.Text(), "a");
}
