#include "MorvUt/taxyear/DateExchange.h"

#include "Afx/windows/MessageBox.h"
#include "MorvUt/taxyear/DateRules.h"
#include "MorvUt/taxyear/DateStrings.h"

namespace
{

constexpr char kUnknownText[] = "Unknown";
constexpr int kUnknownLimit = 10; // characters: room for the word, and for a date in numbers

bool ShowsUnknown(const Kiln::CDateEdit& edit)
{
    CString text;
    edit.GetWindowText(text);
    return text.TrimRight().CompareNoCase(kUnknownText) == 0;
}

void ShowUnknown(Kiln::CDateEdit& edit)
{
    edit.SetWindowText(kUnknownText);
    edit.LimitText(kUnknownLimit);
}

} // namespace

void DDX_LongDate(CDataExchange* exchange, Kiln::CDateEdit& edit, long& value, unsigned flags, int allowUnknown)
{
    if (exchange->m_bSaveAndValidate) {
        if (allowUnknown && ShowsUnknown(edit)) {
            value = kUnknownDay;
            return;
        }
        Kiln::CDate date;
        edit.DDX(exchange, date, flags);
        value = CDateToLong(date);
    } else if (value == kUnknownDay) {
        ShowUnknown(edit);
    } else {
        edit.LimitText(0); // the limit goes with the word, also where the user wrote over it
        Kiln::CDate date = LongToCDate(value);
        edit.DDX(exchange, date, flags);
    }
}

void DDV_ValidDate(CDataExchange* exchange, const CString& text, int controlId, unsigned promptId)
{
    if (!exchange->m_bSaveAndValidate)
        return;
    const X_DateStr_tag date = ConvertStrToDate(text);
    if (IsValidDate(&date))
        return;
    exchange->PrepareEditCtrl(controlId);
    AfxMessageBox(promptId, MB_OK);
    exchange->Fail();
}
