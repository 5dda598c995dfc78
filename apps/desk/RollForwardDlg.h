#pragma once

// Rolling the practice into a new tax year, with a look beforehand.

#include "Afx/windows/MessageMap.h"
#include "Kiln/controls/ExDialog.h"

namespace Desk
{

/// Says how far it is and how long it still takes; the wait window's Cancel ends it between two clients.
class CRollForwardDlg : public Kiln::CExDialog
{
public:
    CRollForwardDlg();
    CString HelpFilePath() const override;

protected:
    bool OnInitDialog() override;
    void OnDestroy() override;
    void OnOK() override {} // Enter decides nothing
    DECLARE_MESSAGE_MAP()
    afx_msg void OnPreview() { Roll(true); }
    afx_msg void OnRun();
    afx_msg void OnHelpButton();

private:
    void Roll(bool isPreview);
    void Enable(bool enable);
    void SetText(unsigned id, const CString& text) { GetDlgItem(static_cast<int>(id))->SetWindowText(text); }
};

} // namespace Desk
