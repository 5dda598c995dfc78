#include "MorvUt/ui/lists/ListCombos.h"

#include "MorvUt/ui/lists/ListFile.h"

using Kiln::CExComboBox;

int LoadComboWithListFile(CComboBox& combo, const char* fileName)
{
    const auto entries = ReadListFile(fileName);
    if (!entries)
        return 0;
    combo.SetRedraw(false);
    for (const CString& entry : *entries)
        combo.AddString(entry);
    combo.SetRedraw(true);
    return 1;
}

IMPLEMENT_DYNCREATE(TXCharityComboBox, CExComboBox)

void TXCharityComboBox::PreSubclassWindow()
{
    CExComboBox::PreSubclassWindow();
    LoadComboWithListFile(*this, "CharList.txt");
}

IMPLEMENT_DYNCREATE(TXInsuranceComboBox, CExComboBox)

void TXInsuranceComboBox::PreSubclassWindow()
{
    CExComboBox::PreSubclassWindow();
    LoadComboWithListFile(*this, "InsList.txt");
}
