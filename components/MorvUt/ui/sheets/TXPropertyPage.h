#pragma once

// The page of the suite's data-entry sheets.

#include "Kiln/controls/ExDialog.h"
#include "MorvUt/Export.h"

class TXPropertySheet;

class MORVUT_API TXPropertyPage : public Kiln::CExPropertyPage
{
    DECLARE_DYNAMIC(TXPropertyPage)
    using CExPropertyPage::CExPropertyPage;

    /// Its sheet; null before it was added to one.
    TXPropertySheet* GetTXSheet() const noexcept;
    /// Those of its sheet; without one: not joint, and nothing.
    int JointSpouseIncomeDDX() const;
    void JointSpouseIncomeDDX(int isJoint);
    void RefreshJointSpouseIncome();
    /// Shows or hides the field `id` with the label before it.
    void ShowEdit(unsigned id, bool show);

    /// Takes the data over; then the split with the spouse must be in order.
    bool OnKillActive() override;
    CString HelpFilePath() const override;

protected:
    /// What the page's own map does not take goes to the sheet.
    bool OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result) override;
};
