#include "MorvUt/ui/sheets/Furniture.h"

StatusRowParts StatusRowPartsOf(bool showsCompleted, unsigned notesKinds, const CString& specialText,
                                bool showsPartnershipName) noexcept
{
    return {showsCompleted, notesKinds != 0 || !specialText.IsEmpty(), showsPartnershipName};
}
