#include "MorvUt/ui/lists/BanksComboBox.h"

#include "MorvUt/ui/lists/BankNames.h"
#include "MorvUt/ui/lists/ListCombos.h"

using Kiln::CExComboBox;

IMPLEMENT_DYNCREATE(TXBanksComboBox, CExComboBox)

void TXBanksComboBox::SetType(int type)
{
    if (type == m_type)
        return;
    const std::vector<CString> records =
        type == kRecords ? BankNames() : std::vector<CString>(); // all stays if it throws
    m_type = type;
    const CString typed = Text();
    SetRedraw(false);
    ResetContent();
    SetWindowText(typed);
    if (type == kSocieties)
        LoadComboWithListFile(*this, "BBSList.txt");
    else if (type == kForeignSocieties)
        LoadComboWithListFile(*this, "FBBSList.txt");
    for (const CString& name : records)
        AddString(name);
    SetWindowText(typed); // chooses the entry of that name, if there is one
    SetRedraw(true);
}
