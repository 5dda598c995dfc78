#include "Afx/windows/DataExchange.h"

#include "Afx/Exceptions.h"
#include "Afx/text/Numbers.h"
#include "Afx/windows/Button.h"
#include "Afx/windows/ComboBox.h"
#include "Afx/windows/Dialog.h"
#include "Afx/windows/MessageBox.h"

namespace
{

[[noreturn]] void RefuseCaller(int id, const char* what)
{
    CString message;
    message.Format("The dialog has no %s %d", what, id);
    throw new CInvalidArgException(message);
}

template<class Control>
Control& Prepared(CDataExchange* exchange, int id, const char* what)
{
    auto* const control = dynamic_cast<Control*>(&exchange->PrepareCtrl(id));
    if (!control)
        RefuseCaller(id, what);
    return *control;
}

} // namespace

void CDataExchange::PrepareEditCtrl(int id)
{
    m_control = m_pDlgWnd ? dynamic_cast<CEdit*>(m_pDlgWnd->GetDlgItem(id)) : nullptr;
    if (!m_control)
        RefuseCaller(id, "field");
}

CWnd& CDataExchange::PrepareCtrl(int id)
{
    m_control = m_pDlgWnd ? m_pDlgWnd->GetDlgItem(id) : nullptr;
    if (!m_control)
        RefuseCaller(id, "control");
    return *m_control;
}

void CDataExchange::Fail()
{
    if (m_bSaveAndValidate && m_control)
        CDialog::GotoDlgCtrl(m_control);
    throw new CUserException;
}

void DDX_Text(CDataExchange* exchange, int id, CString& value)
{
    CWnd& control = exchange->PrepareCtrl(id);
    if (exchange->m_bSaveAndValidate)
        control.GetWindowText(value);
    else
        control.SetWindowText(value);
}

void DDX_Text(CDataExchange* exchange, int id, int& value)
{
    CWnd& control = exchange->PrepareCtrl(id);
    CString text;
    if (!exchange->m_bSaveAndValidate) {
        text.Format("%d", value);
        control.SetWindowText(text);
        return;
    }
    control.GetWindowText(text);
    text.Trim();
    const std::optional<int> number = Afx::ParseWhole<int>(text.View());
    if (!number) {
        AfxMessageBox("Please enter a whole number.");
        exchange->Fail();
    }
    value = *number;
}

void DDX_Check(CDataExchange* exchange, int id, int& value)
{
    auto& button = Prepared<CButton>(exchange, id, "button");
    if (exchange->m_bSaveAndValidate)
        value = button.GetCheck();
    else
        button.SetCheck(value);
}

void DDX_CBIndex(CDataExchange* exchange, int id, int& value)
{
    auto& combo = Prepared<CComboBox>(exchange, id, "combo box");
    if (exchange->m_bSaveAndValidate)
        value = combo.GetCurSel();
    else
        combo.SetCurSel(value);
}

void DDX_Control(CDataExchange* exchange, int id, CWnd& control)
{
    if (!control.GetParent() && !control.SubclassDlgItem(static_cast<unsigned>(id), exchange->m_pDlgWnd))
        RefuseCaller(id, "control");
}
