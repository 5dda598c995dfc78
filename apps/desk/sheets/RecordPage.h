#pragma once

// A page whose fields show columns of a record, by a table.

#include <map>
#include <memory>
#include <span>

#include "Afx/windows/Edit.h"
#include "MorvUt/ui/sheets/TXPropertyPage.h"
#include "Quarry/DataList.h"

namespace Desk
{

enum class FieldKind : unsigned char
{
    Text,
    Amount,
    Date
};

struct RecordField
{
    unsigned control;
    int column; // its ordinal
    FieldKind kind;
    bool isRequired = false;
};

/// The current row of a list. While a sum stands in an amount's field, what it makes is shown in the control
/// IDC_SHEET_SUM. OK and Apply write the row; a field that must be filled, and a text that is no date or amount, are
/// refused.
class CRecordPage : public TXPropertyPage
{
public:
    CRecordPage(const Afx::DialogLayout& layout, Quarry::CDataList& record, std::span<const RecordField> fields);
    ~CRecordPage() override;
    void OnOK() override;

protected:
    bool OnInitDialog() override;
    void DoDataExchange(CDataExchange* exchange) override;
    bool OnCommand(WPARAM wParam, LPARAM lParam) override;
    /// Something was typed or chosen: what else the page shows that follows from it.
    virtual void OnEdited() {}
    /// The row is about to be written: what no field shows.
    virtual void BeforeSave() {}

    /// The field's amount, and date, as they stand there.
    Kiln::CAmt AmountIn(unsigned control) const;
    Kiln::CDate DateIn(unsigned control) const;

private:
    void ExchangeField(CDataExchange* exchange, const RecordField& field);
    void ShowSum(unsigned control);

    Quarry::CDataList& m_record;
    std::span<const RecordField> m_fields;
    std::map<unsigned, std::unique_ptr<CEdit>> m_edits; // of amounts and dates, by control
    bool m_isFilling = false;
};

} // namespace Desk
