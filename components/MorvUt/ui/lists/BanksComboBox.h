#pragma once

// The combo box of banks and building societies.

#include "Kiln/controls/ExComboBox.h"
#include "MorvUt/Export.h"

/// Any text can be typed. Which list it has is set by SetType.
class MORVUT_API TXBanksComboBox : public Kiln::CExComboBox
{
    DECLARE_DYNCREATE(TXBanksComboBox)

    enum Type
    {
        kSocieties,        // banks and building societies, from a list file
        kForeignSocieties, // likewise
        kRecords           // the practice's own banks
    };

    TXBanksComboBox() { SetEditable(true); }
    /// Fills the list; what has been typed stays. Nothing happens when the type is the one it has. Throws
    /// Cellar::DatabaseError, and nothing has changed then.
    void SetType(int type);

private:
    int m_type = -1; // none yet
};
