#pragma once

// Those among whom an amount is split.

#include "Afx/text/Collections.h"
#include "Afx/text/CString.h"

/// One client, or one partnership.
struct CEntity
{
    long id = 0;           // of its own table
    int isPartnership = 0; // not 0: of partnerships
    CString name;
};

/// In the order of their rows.
class CEntityArray : public CArray<CEntity>
{
public:
    /// The place of that client (partnership); -1 when it is not there.
    int Find(long id, int isPartnership) const noexcept
    {
        for (int i = 0; i < GetSize(); ++i)
            if (GetAt(i).id == id && (GetAt(i).isPartnership != 0) == (isPartnership != 0))
                return i;
        return -1;
    }
};
