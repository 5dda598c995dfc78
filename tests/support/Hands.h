#pragma once

// A user's hands, in scripts that can be read aloud: Type(kShare, "100.01"); Click(IDOK); ExpectMessage("Please ...").

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>

#include "Afx/windows/ComboBox.h"
#include "Afx/windows/Dialog.h"
#include "Afx/windows/MessageBox.h"
#include "support/Stage.h"
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
    /// The first control that is shown, in panels and pages too, and that `take` takes; null without one.
    template<class Take>
    CWnd* Find(Take take) const
    {
        return FindIn(m_window, take);
    }
    CWnd& Control(unsigned id) const
    {
        if (CWnd* const found = FindById(id))
            return *found;
        throw std::logic_error("no control " + std::to_string(id));
    }
    /// Over what the field holds.
    void Type(unsigned id, std::string_view text) { TheTouch().Type(Control(id), text); }
    void Click(unsigned id)
    {
        if (CWnd* const control = FindById(id))
            TheTouch().Click(*control);
        else
            EXPECT_TRUE(m_window.DeliverCommand(id)) << "clicking " << id;
    }
    void Press(unsigned key, unsigned modifiers = 0) { TheTouch().Press(key, modifiers); }
    void Write(std::string_view text) { TheTouch().Write(text); }
    void Choose(unsigned id, int item) { TheTouch().Choose(Control(id), item); }
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

private:
    CWnd* FindById(unsigned id) const
    {
        return Find([id](const CWnd& control) { return control.GetDlgCtrlID() == static_cast<int>(id); });
    }
    template<class Take>
    static CWnd* FindIn(const CWnd& window, Take& take)
    {
        for (CWnd* const child : window.Children())
            if (child->IsShown())
                if (CWnd* const found = take(*child) ? child : FindIn(*child, take))
                    return found;
        return nullptr;
    }

    CWnd& m_window;
    // Of all hands, since one dialog opens another.
    static inline std::size_t m_seen = 0;
    static inline int m_open = 0;
};

/// Makes a control of a window's, and calls it.
inline void Put(CWnd& control, CWnd& around, unsigned id, const char* name)
{
    control.Create(&around, id);
    control.SetAccessibleName(name);
}

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
