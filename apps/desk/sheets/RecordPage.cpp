#include "sheets/RecordPage.h"

#include "Afx/windows/DataExchange.h"
#include "Afx/windows/MessageBox.h"
#include "Kiln/controls/AmtEdit.h"
#include "layouts/Sheets.h"
#include "MorvUt/ui/edits/DateEdits.h"

namespace Desk
{
namespace
{

void ExchangeAmount(CDataExchange* exchange, CEdit& edit, Quarry::CDataList& record, int column)
{
    Kiln::CAmt amount = record.Current().GetAmount(column);
    static_cast<Kiln::CAmtEdit&>(edit).DDX(exchange, amount);
    if (exchange->m_bSaveAndValidate)
        record.Set(column, amount);
}

void ExchangeDate(CDataExchange* exchange, CEdit& edit, Quarry::CDataList& record, int column)
{
    Kiln::CDate date = record.Current().GetDate(column);
    static_cast<Kiln::CDateEdit&>(edit).DDX(exchange, date, 0);
    if (exchange->m_bSaveAndValidate)
        record.Set(column, date);
}

} // namespace

CRecordPage::CRecordPage(const Afx::DialogLayout& layout, Quarry::CDataList& record,
                         std::span<const RecordField> fields)
    : TXPropertyPage(layout), m_record(record), m_fields(fields)
{
    for (const RecordField& field : fields)
        if (field.kind == FieldKind::Amount)
            m_edits[field.control] = std::make_unique<Kiln::CAmtEdit>();
        else if (field.kind == FieldKind::Date)
            m_edits[field.control] = std::make_unique<CSystemDateEdit>();
}

CRecordPage::~CRecordPage() = default;

bool CRecordPage::OnInitDialog()
{
    m_isFilling = true;
    const bool setsFocus = TXPropertyPage::OnInitDialog();
    m_isFilling = false;
    OnEdited();
    return setsFocus;
}

void CRecordPage::DoDataExchange(CDataExchange* exchange)
{
    for (const RecordField& field : m_fields)
        ExchangeField(exchange, field);
}

void CRecordPage::ExchangeField(CDataExchange* exchange, const RecordField& field)
{
    const auto control = static_cast<int>(field.control);
    if (field.kind == FieldKind::Text) {
        CString text = m_record.Current().GetText(field.column);
        DDX_Text(exchange, control, text);
        if (exchange->m_bSaveAndValidate && !(text.IsEmpty() && m_record.IsNull(field.column)))
            m_record.Set(field.column, text);
    } else {
        CEdit& edit = *m_edits[field.control];
        DDX_Control(exchange, control, edit);
        if (field.kind == FieldKind::Amount)
            ExchangeAmount(exchange, edit, m_record, field.column);
        else
            ExchangeDate(exchange, edit, m_record, field.column);
    }
    if (exchange->m_bSaveAndValidate && field.isRequired && CString(GetDlgItem(control)->Text()).Trim().IsEmpty()) {
        exchange->PrepareEditCtrl(control);
        AfxMessageBox("Please fill in: " + GetDlgItem(control)->GetAccessibleName());
        exchange->Fail();
    }
}

bool CRecordPage::OnCommand(WPARAM wParam, LPARAM lParam)
{
    const bool isDone = TXPropertyPage::OnCommand(wParam, lParam);
    const auto notification = static_cast<unsigned>(wParam >> Afx::kCommandIdBits);
    if (m_isFilling || (notification != EN_CHANGE && notification != CBN_SELCHANGE && notification != EN_KILLFOCUS))
        return isDone;
    if (notification != EN_KILLFOCUS)
        SetModified();
    ShowSum(static_cast<unsigned>(wParam & Afx::kCommandIdMask));
    OnEdited();
    return isDone;
}

void CRecordPage::ShowSum(unsigned control)
{
    CWnd* const place = GetDlgItem(IDC_SHEET_SUM);
    const auto found = m_edits.find(control);
    if (!place)
        return;
    const auto* const amount = found == m_edits.end() ? nullptr : dynamic_cast<Kiln::CAmtEdit*>(found->second.get());
    place->SetWindowText(amount ? amount->GetPreview() : CString());
}

Kiln::CAmt CRecordPage::AmountIn(unsigned control) const
{
    return static_cast<const Kiln::CAmtEdit&>(*m_edits.at(control)).GetAmt();
}

Kiln::CDate CRecordPage::DateIn(unsigned control) const
{
    return static_cast<const Kiln::CDateEdit&>(*m_edits.at(control)).GetDate();
}

void CRecordPage::OnOK()
{
    BeforeSave();
    m_record.Update();
    TXPropertyPage::OnOK();
}

} // namespace Desk
