#pragma once

// The field for a building society's roll reference.

#include "Afx/windows/Edit.h"
#include "Afx/windows/MessageMap.h"
#include "MorvUt/Export.h"

/// Takes digits, the letters A to Z in either case, '/' and '-', and control characters (below 32), so that editing
/// keys work; any other typed character is swallowed. A text that is set is not looked at.
class MORVUT_API CBuildingSocietyReferenceEdit : public CEdit
{
    DECLARE_DYNCREATE(CBuildingSocietyReferenceEdit)

protected:
    afx_msg void OnChar(unsigned character, unsigned repeat, unsigned flags) override;
    DECLARE_MESSAGE_MAP()
};
