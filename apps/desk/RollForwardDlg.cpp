#include "RollForwardDlg.h"

#include <map>

#include "Afx/windows/ComboBox.h"
#include "Afx/windows/ListCtrl.h"
#include "Afx/windows/MessageBox.h"
#include "Afx/windows/Static.h"
#include "Afx/windows/WindowSystem.h"
#include "common/RollWords.h"
#include "common/Words.h"
#include "Kiln/controls/HelpPages.h"
#include "layouts/Clients.h"
#include "MorvUt/context/ClientView.h"
#include "MorvUt/taxyear/CurrentTaxYear.h"
#include "MorvUt/ui/progress/LongProcess.h"
#include "Quarry/Session.h"
#include "QuietMessages.h"
#include "Remembered.h"
#include "Years.h"

namespace Desk
{

using Kiln::CExDialog;
using Tracker::RolledOwner;

namespace
{

constexpr char kNotCarriedList[] = "NotCarried";

/// The window system waits, with a text, while it lives.
class WaitWindow
{
public:
    explicit WaitWindow(const std::string& text) { Show(text); }
    WaitWindow(const WaitWindow&) = delete;
    WaitWindow& operator=(const WaitWindow&) = delete;
    ~WaitWindow() { Show({}); }
    static bool IsCancelled()
    {
        Afx::WindowSystem* const system = Afx::WindowSystem::Current();
        return system && system->WaitCancelled();
    }

private:
    static void Show(const std::string& text)
    {
        if (Afx::WindowSystem* const system = Afx::WindowSystem::Current())
            system->ShowWait(text);
    }
};

using Names = std::map<std::pair<long, bool>, CString>;

void AddLines(CListCtrl& list, const RolledOwner& one, const Names& names)
{
    const auto name = names.find({one.owner.id, one.owner.isPartnership});
    const auto add = [&](const CString& why) {
        const int row = list.InsertItem(list.GetItemCount(), name == names.end() ? CString() : name->second);
        list.SetItemText(row, 1, why);
    };
    for (const auto& each : one.carried.notCarried)
        add(each.Text());
    if (!one.problem.IsEmpty())
        add(one.problem);
}

std::string CutShortText(const Morv::CutShort& cut, std::size_t left)
{
    return std::string("Stopped, because ") + cut.why + "; " + Morv::LeftText(left) + " left. " +
           (*cut.wait ? std::string(cut.wait) + ", then begin" : std::string("Begin")) +
           " again: it makes what is missing.";
}

} // namespace

BEGIN_MESSAGE_MAP(CRollForwardDlg, CExDialog)
ON_BN_CLICKED(IDC_ROLL_PREVIEW, OnPreview)
ON_BN_CLICKED(IDC_ROLL_RUN, OnRun)
ON_BN_CLICKED(IDC_ROLL_HELP, OnHelpButton)
END_MESSAGE_MAP()

CRollForwardDlg::CRollForwardDlg() : CExDialog(kRollForwardLayout) {}

CString CRollForwardDlg::HelpFilePath() const { return Kiln::HelpPage("enquiries"); }
void CRollForwardDlg::OnHelpButton() { ShowHelp(IDC_ROLL_LIST); }

bool CRollForwardDlg::OnInitDialog()
{
    const bool setsFocus = CExDialog::OnInitDialog();
    FillYears(static_cast<CComboBox&>(*GetDlgItem(IDC_ROLL_YEAR)), static_cast<short>(GetCurrentRealTaxYear() + 1));
    auto& list = static_cast<CListCtrl&>(*GetDlgItem(IDC_ROLL_LIST));
    list.InsertColumn(0, "Client", 130);
    list.InsertColumn(1, "Why", 190);
    RestoreWidths(list, kNotCarriedList);
    return setsFocus;
}

void CRollForwardDlg::OnDestroy()
{
    KeepWidths(static_cast<CListCtrl&>(*GetDlgItem(IDC_ROLL_LIST)), kNotCarriedList);
    CExDialog::OnDestroy();
}

void CRollForwardDlg::OnRun()
{
    if (AfxMessageBox("Sources, tasks and enquiries of all clients are carried into the new tax year.\n\nDo you want "
                      "to continue?",
                      MB_YESNO | MB_DEFBUTTON2) == IDYES)
        Roll(false);
}

void CRollForwardDlg::Enable(bool enable)
{
    for (const unsigned id : {IDC_ROLL_YEAR, IDC_ROLL_PREVIEW, IDC_ROLL_RUN})
        GetDlgItem(static_cast<int>(id))->EnableWindow(enable);
}

void CRollForwardDlg::Roll(bool isPreview)
{
    const short year = ChosenYear(static_cast<CComboBox&>(*GetDlgItem(IDC_ROLL_YEAR)));
    auto& list = static_cast<CListCtrl&>(*GetDlgItem(IDC_ROLL_LIST));
    list.DeleteAllItems();
    Names names;
    std::vector<TrackerOwner> owners;
    ForEachClient([&](const ClientView& client) {
        owners.push_back({client.id, client.IsPartnership()});
        names[{client.id, client.IsPartnership()}] = client.code + " " + client.name;
    });
    CLongProcess process(static_cast<CStatic&>(*GetDlgItem(IDC_ROLL_REMAINING)),
                         static_cast<CStatic&>(*GetDlgItem(IDC_ROLL_COMPLETION)));
    process.SetStartTime(CTime::GetCurrentTime());
    Tracker::Rolled rolled;
    Enable(false);
    {
        const WaitWindow wait(isPreview ? "Looking what would be carried forward" : "Carrying forward");
        const QuietMessages quiet; // all is told once, at the end
        rolled =
            Tracker::RollForward(Quarry::GetConnection(), year, owners,
                                 {isPreview, [&](std::size_t done, std::size_t all, const RolledOwner& one) {
                                      process.UpdateTimes(static_cast<int>(done), static_cast<int>(all));
                                      SetText(IDC_ROLL_DONE, CString(Morv::Counted(static_cast<int>(done), "client") +
                                                                     " of " + std::to_string(all) + " done."));
                                      AddLines(list, one, names);
                                      return !WaitWindow::IsCancelled();
                                  }});
    }
    Enable(true);
    if (rolled.end == Tracker::RollEnd::Refused) {
        AfxMessageBox(rolled.message);
        return;
    }
    std::string text = Morv::RolledText(rolled, isPreview, TaxYear(year));
    if (isPreview)
        text += " Nothing was written.";
    SetText(IDC_ROLL_DONE, CString(text));
    if (const Morv::CutShort* const cut = Morv::FindCutShort(rolled.end))
        AfxMessageBox(CString(CutShortText(*cut, owners.size() - rolled.done)));
}

} // namespace Desk
