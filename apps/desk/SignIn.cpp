#include "SignIn.h"

#include "Afx/text/Utf8.h"
#include "Afx/windows/ComboBox.h"
#include "Afx/windows/MessageBox.h"
#include "Afx/windows/WindowSystem.h"
#include "common/OpenPractice.h"
#include "Kiln/controls/HelpPages.h"
#include "layouts/SignIn.h"
#include "MorvUt/context/BusyPractice.h"
#include "MorvUt/users/UserData.h"
#include "Password.h"
#include "Quarry/Session.h"

namespace Desk
{

using Kiln::CExDialog;

bool OpenOrTell(const std::string& practice)
{
    try {
        const CWaitCursor wait;
        if (const auto keyProblem = Morv::OpenPractice(practice))
            throw Morv::CommandError(*keyProblem);
        return true;
    } catch (const Morv::CommandError& error) {
        Quarry::SetConnection(nullptr);
        AfxMessageBox(CString(error.what()) + ".\n\n" + error.action.c_str());
        return false;
    }
}

// Opening.

BEGIN_MESSAGE_MAP(COpenPracticeDlg, CExDialog)
ON_BN_CLICKED(IDC_OPEN_HELP, OnHelpButton)
END_MESSAGE_MAP()

COpenPracticeDlg::COpenPracticeDlg(const std::string& practice) : CExDialog(kOpenPracticeLayout), m_practice(practice)
{}

CString COpenPracticeDlg::HelpFilePath() const { return Kiln::HelpPage("settings"); }

bool COpenPracticeDlg::OnInitDialog()
{
    const bool setsFocus = CExDialog::OnInitDialog();
    GetDlgItem(IDC_OPEN_PRACTICE)->SetWindowText(m_practice);
    return setsFocus;
}

void COpenPracticeDlg::OnHelpButton() { ShowHelp(IDC_OPEN_PRACTICE); }

void COpenPracticeDlg::OnOK()
{
    CWnd& field = *GetDlgItem(IDC_OPEN_PRACTICE);
    const CString practice = CString(field.Text()).Trim();
    if (practice.IsEmpty())
        Refuse(field, "Please name the practice.");
    else if (OpenOrTell(practice.Str()))
        EndDialog(IDOK);
    else
        FocusAndSelect(field);
}

// Signing in.

BEGIN_MESSAGE_MAP(CSignInDlg, CExDialog)
ON_CBN_SELCHANGE(IDC_SIGN_IN_USER, OnUserChosen)
END_MESSAGE_MAP()

CSignInDlg::CSignInDlg() : CExDialog(kSignInLayout) {}

CString CSignInDlg::HelpFilePath() const { return Kiln::HelpPage("users"); }

bool CSignInDlg::OnInitDialog()
{
    const bool setsFocus = CExDialog::OnInitDialog();
    auto& combo = static_cast<CComboBox&>(Field(IDC_SIGN_IN_USER));
    for (m_users.Open({}, {{Brix::CUser::kUserID}}); !m_users.IsEOL(); m_users.MoveNext())
        if (m_users.GetListed() && m_users.GetUserID().CompareNoCase(kBuiltInAdministrator) != 0)
            combo.AddString(m_users.GetUserID() + " - " + m_users.GetFullName(),
                            static_cast<std::uintptr_t>(m_users.GetPosition()));
    if (combo.GetCount() == 0) {
        AfxMessageBox("The practice has no listed user to sign in.\n\nAdd a user first: morv user add.");
        EndDialog(IDCANCEL);
        return false;
    }
    combo.SetCurSel(0);
    OnUserChosen();
    return setsFocus;
}

bool CSignInDlg::MoveToChosen()
{
    const auto& combo = static_cast<const CComboBox&>(Field(IDC_SIGN_IN_USER));
    return m_users.MoveTo(static_cast<int>(combo.GetItemData(combo.GetCurSel())));
}

void CSignInDlg::OnUserChosen()
{
    MoveToChosen();
    CString note;
    if (IsFirst())
        note.Format("The first sign-in of this user: choose a password of at least %d characters.", kShortestPassword);
    Field(IDC_SIGN_IN_NOTE).SetWindowText(note);
    for (const unsigned id : {IDC_SIGN_IN_PASSWORD, IDC_SIGN_IN_AGAIN})
        Field(id).SetWindowText("");
    CWnd& again = Field(IDC_SIGN_IN_AGAIN);
    again.GetLabel()->ShowWindow(IsFirst());
    again.ShowWindow(IsFirst());
}

bool CSignInDlg::CheckPassword()
{
    const CWaitCursor wait;
    return IsPassword(Field(IDC_SIGN_IN_PASSWORD).Text().View(), m_users.GetPasswordHash()) ||
           Refuse(Field(IDC_SIGN_IN_PASSWORD), "The password is not right.");
}

bool CSignInDlg::SetPassword()
{
    const CString password = Field(IDC_SIGN_IN_PASSWORD).Text();
    if (Afx::CountCharacters(password.View()) < kShortestPassword) {
        CString text;
        text.Format("Please choose a password of at least %d characters.", kShortestPassword);
        return Refuse(Field(IDC_SIGN_IN_PASSWORD), text);
    }
    if (password != Field(IDC_SIGN_IN_AGAIN).Text())
        return Refuse(Field(IDC_SIGN_IN_AGAIN), "The two passwords are not the same.");
    const CWaitCursor wait;
    m_users.SetPasswordHash(HashPassword(password.View()));
    try {
        m_users.Update();
        return true;
    } catch (const Quarry::ChangedByAnotherUser&) {
        AfxMessageBox("Somebody else has changed this user meanwhile. Please sign in again.");
        EndDialog(IDCANCEL);
    } catch (const Cellar::DatabaseError& error) {
        m_users.SetPasswordHash({});
        TellBusyOrThrow(error);
    }
    return false;
}

void CSignInDlg::OnOK()
{
    MoveToChosen();
    if (!(IsFirst() ? SetPassword() : CheckPassword()))
        return;
    CUserData::ClearPermissions();
    CUserData::SetUser(m_users.GetUserID());
    TheUser().SetUserLoggedIn();
    EndDialog(IDOK);
}

} // namespace Desk
