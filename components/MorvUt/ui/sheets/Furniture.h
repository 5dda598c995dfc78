#pragma once

// What stands under the tabs of a sheet: information lines, the split between spouses, the completed box and the notes.

#include "Afx/text/CString.h"
#include "MorvUt/Export.h"

// Control ids.
inline constexpr unsigned kInfoLine1Id = 30001, kInfoLine2Id = 30002, kNotesStatusId = 12200, kJointSpouseId = 12547;

/// Dialog units.
inline constexpr int kFurnitureGap = 7, kFurnitureRow = 14;

/// Adds a row of furniture to a sheet whose rows end at `height` dialog units: the top of the new row, behind a gap.
constexpr int AddFurnitureRow(int& height) noexcept
{
    const int top = height + kFurnitureGap;
    height = top + kFurnitureRow;
    return top;
}

/// Which parts the row of completed box and notes has. Without any it takes no room.
struct StatusRowParts
{
    bool completedBox = false;
    bool notes = false; // the button with its label
    bool partnershipName = false;
    bool IsEmpty() const noexcept { return !completedBox && !notes && !partnershipName; }
    friend bool operator==(const StatusRowParts&, const StatusRowParts&) = default;
};

/// The notes are there for any kind (NotesKind) of them, and for a special page that has a text for the label.
MORVUT_API StatusRowParts StatusRowPartsOf(bool showsCompleted, unsigned notesKinds, const CString& specialText,
                                           bool showsPartnershipName) noexcept;

/// 0 to 100 per cent, both included. No number is no share.
constexpr bool IsValidClientShare(double percent) noexcept { return percent >= 0.0 && percent <= 100.0; }

/// What the panel for income shared with a spouse holds.
struct JointIncome
{
    int isJoint = 0;
    double clientShare = 50.0; // per cent
    int view = 0;              // 0 the whole, 1 the client's share, 2 the spouse's
};

/// Whether a sheet may close over it: always when the panel is not shown (null), and when its box is not checked.
constexpr bool IsJointIncomeValid(const JointIncome* panel) noexcept
{
    return !panel || panel->isJoint == 0 || IsValidClientShare(panel->clientShare);
}
