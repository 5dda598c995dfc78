#include "Afx/windows/Button.h"

#include <algorithm>

IMPLEMENT_DYNCREATE(CButton, CWnd)

void CButton::SetCheck(int check)
{
    m_checked = check != 0;
    Changed(Afx::Part::Check);
}

void CButton::OnDraw(CDC*, const CRect&, unsigned) {}
bool CButton::OnClicked() { return false; }

void CButton::TakeStyle(const CWnd& control)
{
    if (const auto* const button = dynamic_cast<const CButton*>(&control)) {
        m_checked = button->m_checked;
        if (m_kind == Kind::Push)
            m_kind = button->m_kind;
    }
}

void CButton::OnChar(unsigned character, unsigned, unsigned)
{
    if (character == ' ')
        Click();
}

void CButton::Click()
{
    const Afx::RunningEvent event;
    if (m_kind == Kind::CheckBox)
        SetCheck(!m_checked);
    else if (m_kind == Kind::Radio)
        ChooseAmongSiblings();
    const WindowRef here(this);
    if (!OnClicked() && here)
        NotifyParent(BN_CLICKED);
}

/// The radio buttons that stand beside each other in the tab order are one choice.
void CButton::ChooseAmongSiblings()
{
    SetCheck(1);
    if (!GetParent())
        return;
    const auto& siblings = GetParent()->Children();
    const auto radio = [](CWnd* window) {
        auto* const button = dynamic_cast<CButton*>(window);
        return button && button->m_kind == Kind::Radio ? button : nullptr;
    };
    const auto here = std::find(siblings.begin(), siblings.end(), this);
    for (auto i = here; i != siblings.begin() && radio(*(i - 1)); --i)
        radio(*(i - 1))->SetCheck(0);
    for (auto i = here + 1; i != siblings.end() && radio(*i); ++i)
        radio(*i)->SetCheck(0);
}
