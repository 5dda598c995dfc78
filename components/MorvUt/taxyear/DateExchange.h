#pragma once

// Exchange of older modules' dates with the controls of a dialog.

#include "Afx/windows/DataExchange.h"
#include "Kiln/controls/DateEdit.h"
#include "MorvUt/Export.h"

/// Shows a long date in a date field, or takes it over; 0 is the empty field. `flags` as for Kiln::CDateEdit::DDX,
/// which also refuses a text that is no date. Unknown (99) is shown as "Unknown", and limits the field to 10 characters
/// from then on. It is taken over only if `allowUnknown` is not 0: any case will do, and white space behind it.
MORVUT_API void DDX_LongDate(CDataExchange* exchange, Kiln::CDateEdit& edit, long& value, unsigned flags,
                             int allowUnknown);

/// While saving, refuses a text that is neither a date, nor empty, nor the Unknown date (see ConvertStrToDate): shows
/// string resource `promptId` of the current module, and fails the exchange on field `controlId`.
MORVUT_API void DDV_ValidDate(CDataExchange* exchange, const CString& text, int controlId, unsigned promptId);
