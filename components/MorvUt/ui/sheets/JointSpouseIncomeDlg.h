#pragma once

// The panel of a sheet for income that is shared with a spouse.

#include "Afx/windows/MessageMap.h"
#include "Kiln/controls/DoubleEdit.h"
#include "Kiln/controls/ExDialog.h"
#include "MorvUt/Export.h"
#include "MorvUt/ui/sheets/Furniture.h"

class TXPropertySheet;

/// A box, the client's share in per cent, and which part of the figures is shown. Share and view can be changed while
/// the box is ticked; nothing can while the sheet does not let the split be edited, and then the panel says why.
class MORVUT_API CJointSpouseIncomeDlg : public Kiln::CExDialog
{
    DECLARE_DYNAMIC(CJointSpouseIncomeDlg)

    explicit CJointSpouseIncomeDlg(TXPropertySheet& sheet);

    /// Takes the values from the sheet's GetJointSpouseIncome.
    void Load();
    /// What it holds; a share that is no number is NaN.
    JointIncome Get() const;
    void SetJoint(int isJoint);
    Kiln::CDoubleEdit& ShareEdit() noexcept { return m_share; }

protected:
    bool OnInitDialog() override;
    void DoDataExchange(CDataExchange* exchange) override;
    DECLARE_MESSAGE_MAP()
    afx_msg void OnBox();
    afx_msg void OnShareLeft();
    afx_msg void OnView();

private:
    void EnableParts();

    TXPropertySheet& m_sheet;
    Kiln::CDoubleEdit m_share;
};
