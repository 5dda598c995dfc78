#pragma once

// The kinds of notes that a schedule may have, and the pages on which they are written.

#include <cstddef>
#include <vector>

#include "Afx/text/CString.h"
#include "MorvUt/Export.h"

/// Bits of a set.
enum NotesKind : unsigned
{
    NotesNone = 0,
    NotesAudit = 1,
    NotesReturn = 2,
    NotesEstimate = 4,
    NotesAvoidance = 8
};

/// The columns, by their ordinals, in which a schedule keeps each kind; -1: it has no such notes.
struct NotesRows
{
    int audit = -1;
    int taxReturn = -1;
    int estimate = -1;
    int avoidance = -1;

    /// Of one kind; -1 for none.
    MORVUT_API int Of(NotesKind kind) const noexcept;
};

/// The kinds that a schedule has; none without a list of records to keep them in.
MORVUT_API unsigned NotesKindsOf(bool hasList, const NotesRows& rows) noexcept;

/// One page of the notes sheet; texts are ids of the library's strings.
struct NotesPageInfo
{
    NotesKind kind;
    unsigned caption;
    unsigned shortName;           // in the label of the notes button
    unsigned description;         // above the text; 0: the page has fields of its own
    unsigned descriptionUnusable; // the same where such notes do not apply to the form; 0: they always do
};

/// The pages of these kinds, in the order of their tabs.
MORVUT_API std::vector<NotesPageInfo> NotesPagesOf(unsigned kinds);
/// The place among `pages` of the one that is shown first, that of the kind which the user asked for; 0 when it is not
/// there.
MORVUT_API std::size_t FirstNotesPage(const std::vector<NotesPageInfo>& pages, NotesKind asked) noexcept;
/// What stands above the text. `applies`: whether such notes apply to the form.
MORVUT_API CString NotesDescription(const NotesPageInfo& page, bool applies);
/// Whether OK writes the page back: not where its notes do not apply, as its description said.
MORVUT_API bool IsNotesPageWritten(const NotesPageInfo& page, bool applies) noexcept;

/// The label of the notes button: the short names of the kinds that hold text, and `special`, the text of a further
/// page, with ", " between them: "Audit, Est.".
MORVUT_API CString NotesPanelLabel(unsigned kindsWithText, const CString& special);
