#include "Kiln/controls/ExDialog.h"

#include "Afx/windows/MessageBox.h"
#include "Afx/windows/WindowSystem.h"

namespace Kiln
{
namespace
{

constexpr int kButtonRow = 14 + 7; // dialog units: OK, Cancel and Apply with the gap below

} // namespace

CDialogMixin::~CDialogMixin() = default;

bool CDialogMixin::Refuse(CWnd& control, const char* message, unsigned style)
{
    const WindowRef here(&control);
    AfxMessageBox(message, style);
    if (here)
        FocusAndSelect(control);
    return false;
}

void CDialogMixin::FocusAndSelect(CWnd& control) { CDialog::GotoDlgCtrl(&control); }

CString CDialogMixin::HelpFilePath() const { return {}; }

bool CDialogMixin::ShowHelp(unsigned controlId) const
{
    const CString file = HelpFilePath();
    Afx::WindowSystem* const system = Afx::WindowSystem::Current();
    return !file.IsEmpty() && system && system->ShowHelp(file.Str(), controlId);
}

IMPLEMENT_DYNAMIC(CExDialog, CBCGPDialog)
IMPLEMENT_DYNAMIC(CExPropertyPage, CBCGPPropertyPage)
IMPLEMENT_DYNAMIC(CExPropertySheet, CBCGPPropertySheet)

bool CExPropertySheet::OnInitDialog()
{
    const bool setsFocus = CBCGPPropertySheet::OnInitDialog();
    int width = GetRect().Width(), height = GetRect().Height() - kButtonRow;
    OnAddExtraControls(width, height);
    PlaceButtons(width, height + kButtonRow);
    m_hasExtraControls = true;
    PageSetActive(GetActiveIndex());
    return setsFocus;
}

void CExPropertySheet::OnAddExtraControls(int&, int&) {}
void CExPropertySheet::PageSetActive(int) {}

void CExPropertySheet::PageActivated(int page)
{
    CBCGPPropertySheet::PageActivated(page);
    if (m_hasExtraControls)
        PageSetActive(page);
}

void CExPropertySheet::OnDestroy()
{
    m_hasExtraControls = false;
    CBCGPPropertySheet::OnDestroy();
}

} // namespace Kiln
