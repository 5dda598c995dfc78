#include "Afx/windows/DataExchange.h"

#include "Afx/Exceptions.h"
#include "Afx/windows/Dialog.h"

void CDataExchange::PrepareEditCtrl(int id)
{
    m_edit = m_pDlgWnd ? dynamic_cast<CEdit*>(m_pDlgWnd->GetDlgItem(id)) : nullptr;
    if (m_edit)
        return;
    CString message;
    message.Format("The dialog has no field %d", id);
    throw new CInvalidArgException(message);
}

void CDataExchange::Fail()
{
    if (m_bSaveAndValidate && m_edit)
        CDialog::GotoDlgCtrl(m_edit);
    throw new CUserException;
}
