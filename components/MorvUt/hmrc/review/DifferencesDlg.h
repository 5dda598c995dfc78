#pragma once

// The dialog in which a person accepts, rejects or skips HMRC's figures of one item.

#include "Afx/windows/Bcgp.h"
#include "Kiln/controls/ExDialog.h"
#include "MorvUt/Export.h"
#include "MorvUt/hmrc/review/DifferencesGrid.h"
#include "MorvUt/hmrc/review/Review.h"

/// Shows HMRC's figures beside the return's and ends with the decision: kAccept, kReject, kSkip, or IDCANCEL when the
/// person does not go on. Accepting and rejecting ask the user's rights, then the person, and are written to the audit
/// (Trailmark), in the level that the caller has open; what follows from them is the caller's.
class MORVUT_API CMTDDifferencesDlg : public CBCGPDialog, public Kiln::CDialogMixin
{
    DECLARE_DYNAMIC(CMTDDifferencesDlg)

    static constexpr int kAccept = 65, kReject = 82, kSkip = 83;

    /// `grid`, which outlives the dialog, holds the rows. `item`, `hmrc` and `ofReturn` (whose figures, HMRC's and the
    /// return's in one line each) go to the audit.
    CMTDDifferencesDlg(CMTDDifferencesGrid& grid, long clientId, const char* caption, const char* message,
                       const char* item, const char* hmrc, const char* ofReturn, CWnd* parent = nullptr);

    CString HelpFilePath() const override;

    /// The message above the grid.
    void SetMessage(const CString& message);
    /// Whether Accept can be pressed.
    void EnableAccept(bool enable);

protected:
    bool OnInitDialog() override;
    void DoDataExchange(CDataExchange* exchange) override;
    bool OnCommand(WPARAM wParam, LPARAM lParam) override;
    void OnOK() override; // Enter decides nothing
    bool OnHelp(unsigned controlId) override { return ShowHelp(controlId); }

private:
    struct Question;

    bool Ask(const Question& question);
    bool Audit(HmrcApi::Decision decision);

    CMTDDifferencesGrid& m_grid;
    long m_clientId;
    CString m_message, m_item, m_hmrc, m_return;
    CString m_acceptText, m_rejectText; // what follows from it, for the person to confirm
    bool m_canAccept = true;
};
