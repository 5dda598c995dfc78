#pragma once

// How the windows of tests are worked: by their models, or by keyboard and mouse.

#include <functional>
#include <memory>
#include <string_view>

#include "Afx/windows/WindowSystem.h"

class CWnd;

namespace Test
{

/// A user's acts. By themselves they work windows that are never shown.
class Touch
{
public:
    virtual ~Touch() = default;
    /// Over what the field holds.
    virtual void Type(CWnd& control, std::string_view text);
    virtual void Click(CWnd& control);
    virtual void Press(unsigned key, unsigned modifiers = 0);
    /// At the caret.
    virtual void Write(std::string_view text);
    virtual void Choose(CWnd& list, int item);

protected:
    void TabTo(const CWnd& control);
    void ChooseByKeys(CWnd& list, int item);
};

/// The one that is in use.
Touch& TheTouch() noexcept;

/// No mouse for as long as it lives: whatever is worked is reached by Tab.
class KeyboardAlone : public Touch
{
public:
    KeyboardAlone();
    KeyboardAlone(const KeyboardAlone&) = delete;
    KeyboardAlone& operator=(const KeyboardAlone&) = delete;
    ~KeyboardAlone() override;
    void Type(CWnd& control, std::string_view text) override;
    void Click(CWnd& control) override;
    void Press(unsigned key, unsigned modifiers) override { m_outer.Press(key, modifiers); }
    void Write(std::string_view text) override { m_outer.Write(text); }
    void Choose(CWnd& list, int item) override { ChooseByKeys(list, item); }

private:
    Touch& m_outer;
};

/// Real windows, and the hands that work them, each act of which returns when all that follows has been done. A test
/// program that has them makes one object of this kind before main.
class Stage : public Touch
{
public:
    Stage();
    /// Runs all tests, with the windows' toolkit around them.
    virtual int Run(const std::function<int()>& tests) = 0;
    /// A window system whose dialogs and boxes are worked by `script`.
    virtual std::unique_ptr<Afx::WindowSystem> MakeSystem(Afx::HeadlessWindowSystem& script) = 0;
};

/// Null in programs whose windows are never shown.
Stage* TheStage() noexcept;

} // namespace Test
