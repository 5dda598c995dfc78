#pragma once

// The row of a sheet with the completed box, the notes button, and the name of a partnership.

#include "Afx/windows/MessageMap.h"
#include "Kiln/controls/ExDialog.h"
#include "MorvUt/Export.h"
#include "MorvUt/ui/sheets/Furniture.h"

class TXPropertySheet;

/// Tells its sheet what was clicked.
class MORVUT_API CNotesStatusDlg : public Kiln::CExDialog
{
    DECLARE_DYNAMIC(CNotesStatusDlg)

    CNotesStatusDlg(TXPropertySheet& sheet, const StatusRowParts& parts);

    void SetCompleted(int completed);
    void EnableNotes(bool enable);
    /// Which notes hold text, beside the button.
    void SetLabel(const CString& label);
    void SetPartnershipName(const CString& name);

protected:
    bool OnInitDialog() override;
    DECLARE_MESSAGE_MAP()
    afx_msg void OnCompleted();
    afx_msg void OnNotes();

private:
    TXPropertySheet& m_sheet;
    StatusRowParts m_parts;
};
