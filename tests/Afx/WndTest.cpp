#include "Afx/Wnd.h"

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>

#include "support/TestSupport.h"

namespace
{

/// Keeps what it was told.
class CListening : public CWnd
{
public:
    std::string heard;
    const CWnd* focusWentTo = nullptr;

protected:
    void OnChar(unsigned character, unsigned repeat, unsigned) override
    {
        heard += std::to_string(character) + "x" + std::to_string(repeat) + " ";
    }
    void OnKillFocus(CWnd* newFocus) override
    {
        heard += "left ";
        focusWentTo = newFocus;
    }
};

} // namespace

TEST(CWnd, FindsItsControlsAndForgetsThoseThatEnd)
{
    CWnd window, other;
    auto first = std::make_unique<CWnd>();
    CWnd second;
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
}

TEST(CWnd, OutlivesItsParent)
{
    CWnd control;
    {
        CWnd window;
        control.Create(&window, 7);
        window.EnableWindow(false);
        EXPECT_FALSE(control.TakesInput());
    }
    EXPECT_EQ(control.GetParent(), nullptr);
    EXPECT_TRUE(control.TakesInput());
}

TEST(CWnd, TakesInputOnlyWhenAllAroundItDoes)
{
    CWnd window;
    CListening control;
    control.Create(&window, 7);
    const struct
    {
        CWnd& spoilt;
        bool hides;
        const char* why;
    } rows[] = {
        {control, false, "disabled"},
        {control, true, "hidden"},
        {window, false, "in a disabled window"},
        {window, true, "in a hidden window"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.why);
        EXPECT_TRUE(row.hides ? row.spoilt.ShowWindow(false) : row.spoilt.EnableWindow(false));
        control.SetFocus();
        EXPECT_EQ(CWnd::GetFocus(), nullptr);
        EXPECT_EQ(control.IsWindowVisible(), !row.hides);
        control.DeliverChar('a');
        EXPECT_THROW(Afx::HeadlessWindowSystem::Type(control, "a"), std::logic_error);
        EXPECT_THROW(Afx::HeadlessWindowSystem::Click(window, 7), std::logic_error);
        EXPECT_FALSE(row.hides ? row.spoilt.ShowWindow(true) : row.spoilt.EnableWindow(true));
    }
    EXPECT_EQ(control.heard, "");
    control.DeliverChar('a', 3);
    EXPECT_EQ(control.heard, "97x3 ");
}

TEST(CWnd, TellsWhoLosesTheFocus)
{
    CListening first, second;
    EXPECT_EQ(first.SetFocus(), nullptr);
    EXPECT_EQ(first.SetFocus(), &first) << "has it already";
    EXPECT_EQ(second.SetFocus(), &first);
    EXPECT_EQ(first.heard, "left ");
    EXPECT_EQ(first.focusWentTo, &second);
    Afx::HeadlessWindowSystem::Leave();
    EXPECT_EQ(CWnd::GetFocus(), nullptr);
    EXPECT_EQ(second.heard, "left ");
    EXPECT_EQ(second.focusWentTo, nullptr);
}

TEST(Type, SendsOneMessageForEachCharacter)
{
    CListening control;
    Afx::HeadlessWindowSystem::Type(control, "A\b\xC2\xA3\xE2\x82\xAC\xF0\x9F\x98\x80\xA3");
    EXPECT_EQ(control.heard, "65x1 8x1 163x1 8364x1 128512x1 163x1 ") << "pound, euro, a smile, a pound of one byte";
}
