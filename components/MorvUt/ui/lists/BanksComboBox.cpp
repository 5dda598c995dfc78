#include "MorvUt/ui/lists/BanksComboBox.h"

#include "MorvUt/ui/lists/BankNames.h"
#include "MorvUt/ui/lists/ListCombos.h"

using Kiln::CExComboBox;

IMPLEMENT_DYNCREATE(TXBanksComboBox, CExComboBox)

void TXBanksComboBox::SetType(int type)
{
    if (type == m_type)
        return;
    m_type = type;
    const CString typed = Text();
    SetRedraw(false);
    ResetContent();
    SetWindowText(typed);
    if (type == kSocieties)
        LoadComboWithListFile(*this, "BBSList.txt");
    else if (type == kForeignSocieties)
        LoadComboWithListFile(*this, "FBBSList.txt");
    else if (type == kRecords)
        for (const CString& name : BankNames())
            AddString(name);
    SetWindowText(typed); // chooses the entry of that name, if there is one
    SetRedraw(true);
}
