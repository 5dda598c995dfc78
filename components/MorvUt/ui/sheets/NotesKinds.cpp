#include "MorvUt/ui/sheets/NotesKinds.h"

#include <algorithm>
#include <iterator>

#include "MorvUt/res/Strings.h"

namespace
{

struct NotesKindRow
{
    NotesPageInfo page;
    int NotesRows::*column;
};

/// In the order of their tabs.
constexpr NotesKindRow kNotesKinds[] = {
    {{NotesAudit, IDS_NOTES_AUDIT, IDS_NOTES_AUDIT, IDS_NOTES_AUDIT_TEXT, 0}, &NotesRows::audit},
    {{NotesReturn, IDS_NOTES_RETURN, IDS_NOTES_RETURN_SHORT, IDS_NOTES_RETURN_TEXT, 0}, &NotesRows::taxReturn},
    {{NotesEstimate, IDS_NOTES_ESTIMATE, IDS_NOTES_ESTIMATE_SHORT, IDS_NOTES_ESTIMATE_TEXT, IDS_NOTES_ESTIMATE_UNUSED},
     &NotesRows::estimate},
    {{NotesAvoidance, IDS_NOTES_AVOIDANCE, IDS_NOTES_AVOIDANCE, 0, 0}, &NotesRows::avoidance},
};

} // namespace

int NotesRows::Of(NotesKind kind) const noexcept
{
    for (const NotesKindRow& row : kNotesKinds)
        if (row.page.kind == kind)
            return this->*row.column;
    return -1;
}

unsigned NotesKindsOf(bool hasList, const NotesRows& rows) noexcept
{
    unsigned kinds = NotesNone;
    if (hasList)
        for (const NotesKindRow& row : kNotesKinds)
            if (rows.*row.column != -1)
                kinds |= row.page.kind;
    return kinds;
}

std::vector<NotesPageInfo> NotesPagesOf(unsigned kinds)
{
    std::vector<NotesPageInfo> pages;
    for (const NotesKindRow& row : kNotesKinds)
        if (kinds & row.page.kind)
            pages.push_back(row.page);
    return pages;
}

std::size_t FirstNotesPage(const std::vector<NotesPageInfo>& pages, NotesKind asked) noexcept
{
    const auto isAsked = [=](const NotesPageInfo& page) { return page.kind == asked; };
    const auto found = std::find_if(pages.begin(), pages.end(), isAsked);
    return found == pages.end() ? 0 : static_cast<std::size_t>(std::distance(pages.begin(), found));
}

CString NotesDescription(const NotesPageInfo& page, bool applies)
{
    const unsigned text = IsNotesPageWritten(page, applies) ? page.description : page.descriptionUnusable;
    return text == 0 ? CString() : LibraryText(text);
}

bool IsNotesPageWritten(const NotesPageInfo& page, bool applies) noexcept
{
    return applies || page.descriptionUnusable == 0;
}

CString NotesPanelLabel(unsigned kindsWithText, const CString& special)
{
    CString label;
    const auto add = [&](const CString& name) { label += (label.IsEmpty() ? CString() : CString(", ")) + name; };
    for (const NotesPageInfo& page : NotesPagesOf(kindsWithText))
        add(LibraryText(page.shortName));
    if (!special.IsEmpty())
        add(special);
    return label;
}
