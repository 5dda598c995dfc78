#pragma once

// A user's hands, in scripts that can be read aloud: Type(kShare, "100.01"); Click(IDOK); ExpectMessage("Please ...");
// ExpectFocus(kShare).

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>

#include "Afx/text/Utf8.h"
#include "Afx/windows/ComboBox.h"
#include "Afx/windows/Dialog.h"
#include "Afx/windows/Edit.h"
#include "Afx/windows/MessageBox.h"
#include "support/TestSupport.h"

namespace Test
{

/// Works in one window while it is open. A box with nothing but OK is answered and kept for ExpectMessage; any other
/// one needs Answer before it comes. A message that no ExpectMessage asked for fails the test.
class Hands
{
public:
    explicit Hands(CWnd& window) : m_window(window)
    {
        if (m_open++ == 0)
            m_seen = Windows().Messages().size();
        Windows().OnUnexpected([](const Afx::HeadlessWindowSystem::Shown& shown) {
            EXPECT_EQ(shown.style & 0xF, MB_OK) << "nobody answers: " << shown.text;
            return Afx::SafeAnswer(shown.style);
        });
    }
    Hands(const Hands&) = delete;
    Hands& operator=(const Hands&) = delete;
    ~Hands()
    {
        --m_open;
        for (; m_seen < Windows().Messages().size(); ++m_seen)
            ADD_FAILURE() << "a message that nobody asked for: " << Windows().Messages()[m_seen].text;
    }

    CWnd& Window() const noexcept { return m_window; }
    /// The control `id`, in panels and pages that are shown too.
    CWnd& Control(unsigned id) const
    {
        if (CWnd* const found = Find(m_window, id))
            return *found;
        throw std::logic_error("no control " + std::to_string(id));
    }
    /// No mouse from here on, for as long as it lives: what Type, Click and Choose work at is reached by Tab.
    class KeyboardAlone
    {
    public:
        KeyboardAlone() { m_isKeyboardAlone = true; }
        KeyboardAlone(const KeyboardAlone&) = delete;
        KeyboardAlone& operator=(const KeyboardAlone&) = delete;
        ~KeyboardAlone() { m_isKeyboardAlone = false; }
    };
    /// Over what the field holds.
    void Type(unsigned id, std::string_view text)
    {
        if (m_isKeyboardAlone) {
            TabTo(id);
            Write(text);
            return;
        }
        if (Stage* const stage = TheStage()) {
            stage->Type(Control(id), text);
            return;
        }
        Windows().Leave();
        Windows().Type(Control(id), text);
    }
    void Click(unsigned id)
    {
        if (m_isKeyboardAlone) {
            TabTo(id);
            Write(" ");
            return;
        }
        CWnd* const control = Find(m_window, id);
        if (Stage* const stage = control ? TheStage() : nullptr) {
            stage->Click(*control);
            return;
        }
        EXPECT_TRUE(control ? Afx::UserActs::Click(*control) : m_window.DeliverCommand(id)) << "clicking " << id;
    }
    /// Whether something has used the key, as far as can be told.
    bool Press(unsigned key, unsigned modifiers = 0)
    {
        if (Stage* const stage = TheStage())
            stage->Press(key, modifiers);
        return TheStage() || Windows().Key(key, modifiers);
    }
    void Write(std::string_view text)
    {
        if (Stage* const stage = TheStage()) {
            stage->Write(text);
            return;
        }
        while (!text.empty() && CWnd::GetFocus())
            Afx::UserActs::Char(*CWnd::GetFocus(), Afx::TakeCharacter(text));
    }
    bool Choose(unsigned id, int item)
    {
        if (m_isKeyboardAlone) {
            TabTo(id);
            Press(VK_HOME);
            for (; item > 0; --item)
                Press(VK_DOWN);
            return true;
        }
        if (Stage* const stage = TheStage())
            stage->Choose(Control(id), item);
        return TheStage() || Afx::UserActs::Choose(Control(id), item);
    }
    void Pick(unsigned id, const char* text)
    {
        auto& combo = dynamic_cast<CComboBox&>(Control(id));
        EXPECT_TRUE(Choose(id, combo.FindStringExact(CComboBox::kNone, text))) << text;
    }
    void Answer(int button) { Windows().Answer(button); }

    /// The next message, which is asked for by this.
    static std::string TakeMessage()
    {
        if (m_seen < Windows().Messages().size())
            return Windows().Messages()[m_seen++].text;
        ADD_FAILURE() << "no message came";
        return {};
    }
    static void ExpectMessage(std::string_view text) { EXPECT_EQ(TakeMessage(), text); }
    void ExpectFocus(unsigned id) const
    {
        const CWnd* const focus = CWnd::GetFocus();
        EXPECT_EQ(focus ? static_cast<unsigned>(focus->GetDlgCtrlID()) : 0u, id) << "the focus";
    }
    /// The whole text of the field with the focus is selected.
    void ExpectAllSelected() const
    {
        const auto* const edit = dynamic_cast<const CEdit*>(CWnd::GetFocus());
        ASSERT_NE(edit, nullptr);
        EXPECT_EQ(edit->GetSelectedText(), edit->Text());
    }
    void ExpectText(unsigned id, std::string_view text) const { EXPECT_EQ(Control(id).Text().View(), text) << id; }

private:
    void TabTo(unsigned id)
    {
        const CWnd& control = Control(id);
        constexpr int kMostControls = 60;
        for (int tabs = 0; CWnd::GetFocus() != &control; ++tabs) {
            ASSERT_LT(tabs, kMostControls) << "no Tab comes to " << id;
            Press(VK_TAB);
        }
    }
    static CWnd* Find(CWnd& window, unsigned id)
    {
        if (CWnd* const here = window.GetDlgItem(static_cast<int>(id)); here && here->IsShown())
            return here;
        for (CWnd* const child : window.Children())
            if (CWnd* const found = child->IsShown() ? Find(*child, id) : nullptr)
                return found;
        return nullptr;
    }

    CWnd& m_window;
    // Of all hands, since one dialog opens another.
    static inline std::size_t m_seen = 0;
    static inline int m_open = 0;
    static inline bool m_isKeyboardAlone = false;
};

using Acts = std::function<void(Hands&)>;

/// What is done in the dialog that opens next.
inline void InNext(Acts acts)
{
    Windows().Script([acts = std::move(acts)](CDialog& open) {
        Hands hands(open);
        acts(hands);
    });
}

/// Opens a dialog and works in it; its result.
template<class Dialog>
int Work(Dialog& dialog, Acts acts)
{
    InNext(std::move(acts));
    return static_cast<int>(dialog.DoModal());
}

} // namespace Test
