#include "Afx/windows/Dialog.h"

#include <algorithm>

#include "Afx/windows/Edit.h"
#include "Afx/windows/MessageBox.h"
#include "Afx/windows/WindowSystem.h"

namespace
{

constexpr int kFailed = -1;
constexpr WPARAM kIdMask = 0xFFFF;

/// Leaves the dialog closed, however it ends.
class Closing
{
public:
    explicit Closing(CDialog& dialog) noexcept : m_dialog(dialog) {}
    Closing(const Closing&) = delete;
    Closing& operator=(const Closing&) = delete;
    ~Closing()
    {
        if (m_dialog.IsOpen())
            m_dialog.EndDialog(IDCANCEL);
    }

private:
    CDialog& m_dialog;
};

} // namespace

IMPLEMENT_DYNAMIC(CDialog, CWnd)

int CDialog::DoModal()
{
    if (m_open)
        return kFailed;
    m_open = true;
    m_result = IDCANCEL;
    {
        const Closing closing(*this);
        if (OnInitDialog() && m_open) {
            const auto first = std::find_if(Children().begin(), Children().end(),
                                            [](const CWnd* child) { return child->TakesInput(); });
            if (first != Children().end())
                GotoDlgCtrl(*first);
        }
        Afx::WindowSystem* const system = Afx::WindowSystem::Current();
        if (m_open && system)
            system->RunDialog(*this);
    }
    if (HasFocusWithin())
        KillFocus();
    return m_result;
}

void CDialog::EndDialog(int result) noexcept
{
    m_result = result;
    m_open = false;
}

void CDialog::GotoDlgCtrl(CWnd* control)
{
    control->SetFocus();
    if (auto* const edit = dynamic_cast<CEdit*>(control))
        edit->SetSel(0, -1);
}

bool CDialog::OnInitDialog()
{
    const bool filled = UpdateData(false);
    if (!filled)
        EndDialog(kFailed);
    return filled;
}

void CDialog::OnOK()
{
    if (UpdateData(true))
        EndDialog(IDOK);
}

void CDialog::OnCancel() { EndDialog(IDCANCEL); }

bool CDialog::OnCommand(WPARAM wParam, LPARAM lParam)
{
    switch (wParam & kIdMask) {
    case IDOK:
        OnOK();
        return true;
    case IDCANCEL:
        OnCancel();
        return true;
    default:
        return CWnd::OnCommand(wParam, lParam);
    }
}
