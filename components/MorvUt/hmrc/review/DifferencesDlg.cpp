#include "MorvUt/hmrc/review/DifferencesDlg.h"

#include "Afx/windows/DataExchange.h"
#include "Afx/windows/MessageBox.h"
#include "Kiln/controls/HelpPages.h"
#include "MorvUt/context/BusyPractice.h"
#include "MorvUt/res/layouts/Differences.h"
#include "MorvUt/res/Strings.h"

/// What is asked before a decision that changes something.
struct CMTDDifferencesDlg::Question
{
    HmrcApi::Decision decision;
    CString text;
    unsigned style;
};

IMPLEMENT_DYNAMIC(CMTDDifferencesDlg, CBCGPDialog)

CMTDDifferencesDlg::CMTDDifferencesDlg(CMTDDifferencesGrid& grid, long clientId, const char* caption,
                                       const char* message, const char* item, const char* hmrc, const char* ofReturn,
                                       CWnd*)
    : CBCGPDialog(kDifferencesLayout), m_grid(grid), m_clientId(clientId), m_message(message), m_item(item),
      m_hmrc(hmrc), m_return(ofReturn), m_acceptText(LibraryText(IDS_DIFFERENCES_ACCEPT)),
      m_rejectText(LibraryText(IDS_DIFFERENCES_REJECT))
{
    SetWindowText(caption);
}

CString CMTDDifferencesDlg::HelpFilePath() const { return Kiln::HelpPage("review"); }

void CMTDDifferencesDlg::SetMessage(const CString& message)
{
    m_message = message;
    if (CWnd* const label = GetDlgItem(IDC_DIFFERENCES_MESSAGE))
        label->SetWindowText(message);
}

void CMTDDifferencesDlg::EnableAccept(bool enable)
{
    m_canAccept = enable;
    if (CWnd* const button = GetDlgItem(IDC_DIFFERENCES_ACCEPT))
        button->EnableWindow(enable);
}

bool CMTDDifferencesDlg::OnInitDialog()
{
    const bool setsFocus = CBCGPDialog::OnInitDialog();
    SetMessage(m_message);
    EnableAccept(m_canAccept);
    return setsFocus;
}

void CMTDDifferencesDlg::DoDataExchange(CDataExchange* exchange)
{
    DDX_Control(exchange, IDC_DIFFERENCES_GRID, m_grid);
    m_grid.SetAccessibleName(m_item);
    m_grid.DDX(exchange);
}

bool CMTDDifferencesDlg::OnCommand(WPARAM wParam, LPARAM lParam)
{
    switch (wParam) {
    case IDC_DIFFERENCES_ACCEPT:
        if (Ask({HmrcApi::Decision::Accept, m_acceptText + LibraryText(IDS_DIFFERENCES_ACCEPT_ASK),
                 MB_YESNO | MB_DEFBUTTON2}))
            EndDialog(kAccept);
        return true;
    case IDC_DIFFERENCES_REJECT:
        if (Ask({HmrcApi::Decision::Reject, m_rejectText + LibraryText(IDS_DIFFERENCES_REJECT_ASK),
                 MB_YESNO | MB_ICONWARNING | MB_DEFBUTTON2}))
            EndDialog(kReject);
        return true;
    case IDC_DIFFERENCES_SKIP:
        EndDialog(kSkip);
        return true;
    default:
        return CBCGPDialog::OnCommand(wParam, lParam);
    }
}

void CMTDDifferencesDlg::OnOK() {}

/// The rights, the person, the audit. Whether the decision is made.
bool CMTDDifferencesDlg::Ask(const Question& question)
{
    if (const CString why = HmrcApi::WhyMayNot(question.decision); !why.IsEmpty()) {
        AfxMessageBox(why);
        return false;
    }
    if (AfxMessageBox(question.text, question.style) != IDYES)
        return false;
    return Audit(question.decision);
}

/// The first write of the decision. A practice that another program is writing to is told, and the dialog stays.
bool CMTDDifferencesDlg::Audit(HmrcApi::Decision decision)
{
    try {
        HmrcApi::AuditDecision(ClientId(m_clientId), decision, m_item, m_hmrc, m_return);
        return true;
    } catch (const Cellar::DatabaseError& error) {
        TellBusyOrThrow(error);
        return false;
    }
}
