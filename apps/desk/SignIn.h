#pragma once

// Opening a practice, and signing a user in.

#include <string>

#include "Afx/windows/MessageMap.h"
#include "Brix/Records.h"
#include "Kiln/controls/ExDialog.h"

namespace Desk
{

/// Asks for a practice and opens it; one that cannot be opened is told, and asked for again.
class COpenPracticeDlg : public Kiln::CExDialog
{
public:
    explicit COpenPracticeDlg(const std::string& practice);
    CString HelpFilePath() const override;

protected:
    bool OnInitDialog() override;
    void OnOK() override;
    DECLARE_MESSAGE_MAP()
    afx_msg void OnHelpButton();

private:
    CString m_practice;
};

/// Opens the practice as the current connection. False, and the user is told why, when it cannot be opened.
bool OpenOrTell(const std::string& practice);

/// One of the practice's listed users signs in with a password, which the first sign-in sets. IDOK: CUserData holds the
/// user.
class CSignInDlg : public Kiln::CExDialog
{
public:
    CSignInDlg();
    CString HelpFilePath() const override;

protected:
    bool OnInitDialog() override;
    void OnOK() override;
    DECLARE_MESSAGE_MAP()
    afx_msg void OnUserChosen();

private:
    bool MoveToChosen();
    bool IsFirst() const { return m_users.GetPasswordHash().IsEmpty(); }
    bool CheckPassword();
    bool SetPassword();
    CWnd& Field(unsigned id) const { return *GetDlgItem(static_cast<int>(id)); }

    Brix::CUser m_users;
};

} // namespace Desk
