#include "Desk.h"

#include "Afx/windows/MessageBox.h"
#include "Cellar/DatabaseError.h"
#include "ClientsDlg.h"
#include "Kiln/controls/HelpPages.h"
#include "MorvUt/hmrc/access/ClientData.h"
#include "Quarry/Session.h"
#include "SignIn.h"

namespace Desk
{
namespace
{

/// The practice that was named, or one that the user names.
bool OpenPractice(const std::string& named)
{
    if (!named.empty() && OpenOrTell(named))
        return true;
    COpenPracticeDlg dialog(named);
    return dialog.DoModal() == IDOK;
}

} // namespace

void Run(const DeskOptions& options)
try {
    Kiln::SetHelpFolder(options.helpFolder);
    if (!options.base.empty() && !HmrcApi::CClientData::SetLoopbackOverride(options.base)) {
        AfxMessageBox("The address of the server on this machine should look like http://127.0.0.1:8080/.");
        return;
    }
    if (!OpenPractice(options.practice))
        return;
    CSignInDlg signIn;
    if (signIn.DoModal() != IDOK)
        return;
    CClientsDlg clients;
    clients.DoModal();
} catch (const Cellar::DatabaseError& error) {
    AfxMessageBox(CString("The practice cannot be read or written any more.\n\n" + error.GetReason()));
}

} // namespace Desk
