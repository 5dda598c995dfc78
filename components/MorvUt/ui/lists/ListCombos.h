#pragma once

// Combo boxes filled from list files: charities, insurers, banks and building societies.

#include "Kiln/controls/ExComboBox.h"
#include "MorvUt/Export.h"

/// Adds the entries of a list file (ReadListFile) to a combo box. 1; 0, and nothing added, when it cannot be read.
MORVUT_API int LoadComboWithListFile(CComboBox& combo, const char* fileName);

/// Any text can be typed; the list is that of charities.
class MORVUT_API TXCharityComboBox : public Kiln::CExComboBox
{
    DECLARE_DYNCREATE(TXCharityComboBox)
    TXCharityComboBox() { SetEditable(true); }

protected:
    void PreSubclassWindow() override;
};

class MORVUT_API TXInsuranceComboBox : public Kiln::CExComboBox
{
    DECLARE_DYNCREATE(TXInsuranceComboBox)
    TXInsuranceComboBox() { SetEditable(true); }

protected:
    void PreSubclassWindow() override;
};
