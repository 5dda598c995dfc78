#include "support/Stage.h"

#include <gtest/gtest.h>

#include "Afx/text/Utf8.h"
#include "Afx/windows/ComboBox.h"
#include "support/TestSupport.h"

namespace Test
{
namespace
{

constinit Stage* g_stage = nullptr;
constinit Touch* g_touch = nullptr;

} // namespace

Touch& TheTouch() noexcept
{
    static Touch s_headless;
    return g_touch ? *g_touch : s_headless;
}

Stage* TheStage() noexcept { return g_stage; }

void Touch::Type(CWnd& control, std::string_view text)
{
    Windows().Leave();
    Windows().Type(control, text);
    if (text.empty())
        Windows().Key(VK_DELETE);
}

void Touch::Click(CWnd& control) { EXPECT_TRUE(Afx::UserActs::Click(control)) << control.GetDlgCtrlID(); }
void Touch::Press(unsigned key, unsigned modifiers) { Windows().Key(key, modifiers); }

void Touch::Write(std::string_view text)
{
    while (!text.empty() && CWnd::GetFocus())
        Afx::UserActs::Char(*CWnd::GetFocus(), Afx::TakeCharacter(text));
}

void Touch::Choose(CWnd& list, int item) { EXPECT_TRUE(Afx::UserActs::Choose(list, item)) << item; }

void Touch::TabTo(const CWnd& control)
{
    constexpr int kMostControls = 60;
    for (int tabs = 0; CWnd::GetFocus() != &control; ++tabs) {
        ASSERT_LT(tabs, kMostControls) << "no Tab comes to " << control.GetDlgCtrlID();
        Press(VK_TAB);
    }
}

void Touch::ChooseByKeys(CWnd& list, int item)
{
    TabTo(list);
    if (const auto* const combo = dynamic_cast<const CComboBox*>(&list); combo && combo->IsEditable()) {
        CString text;
        combo->GetLBText(item, text);
        Press('A', Afx::kControl);
        Write(text.View());
        return;
    }
    Press(VK_HOME);
    for (; item > 0; --item)
        Press(VK_DOWN);
}

KeyboardAlone::KeyboardAlone() : m_outer(TheTouch()) { g_touch = this; }
KeyboardAlone::~KeyboardAlone() { g_touch = &m_outer; }

void KeyboardAlone::Type(CWnd& control, std::string_view text)
{
    TabTo(control);
    Write(text);
}

void KeyboardAlone::Click(CWnd& control)
{
    TabTo(control);
    Write(" ");
}

Stage::Stage() { g_touch = g_stage = this; }

} // namespace Test
