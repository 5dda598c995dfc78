#include "MorvUt/ui/sheets/TXDialog.h"

#include "Afx/windows/MessageBox.h"
#include "MorvUt/context/BusyPractice.h"
#include "Quarry/Session.h"

using Kiln::CExDialog;

IMPLEMENT_DYNAMIC(TXDialog, CExDialog)

TXDialog::TXDialog(const Afx::DialogLayout& layout) : CExDialog(layout) {}
TXDialog::TXDialog() = default;
TXDialog::~TXDialog() = default;

int TXDialog::DoModal()
{
    if (!m_hasLevel || !Quarry::HasConnection() || IsOpen())
        return CExDialog::DoModal();
    struct Uncommitted
    {
        std::unique_ptr<Quarry::CTransaction>& level;
        ~Uncommitted() { level.reset(); }
    };
    m_level = std::make_unique<Quarry::CTransaction>();
    const Uncommitted uncommitted{m_level}; // rolled back, whatever ends the dialog
    return CExDialog::DoModal();
}

void TXDialog::OnOK()
{
    if (UpdateData(true))
        CloseDialog(IDOK);
}

void TXDialog::OnCancel() { CloseDialog(IDCANCEL); }

void TXDialog::CloseDialog(int result)
{
    if (result == IDOK && m_level) {
        try {
            m_level->Commit();
            m_level.reset();
        } catch (const Cellar::DatabaseError& error) {
            TellBusyOrThrow(error); // it stays open
            return;
        }
    }
    EndDialog(result);
}
