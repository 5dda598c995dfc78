#pragma once

// The modal dialog of the suite.

#include <memory>

#include "Kiln/controls/ExDialog.h"
#include "MorvUt/Export.h"

namespace Quarry
{
class CTransaction;
}

/// A dialog that can have a level of the data services' transaction, as a sheet has.
class MORVUT_API TXDialog : public Kiln::CExDialog
{
    DECLARE_DYNAMIC(TXDialog)
    explicit TXDialog(const Afx::DialogLayout& layout);
    TXDialog();
    ~TXDialog() override;

    /// From the next DoModal on: a level begins when it opens, OK commits it, Cancel rolls it back.
    void EnableQuarryTransactions(bool enable = true) noexcept { m_hasLevel = enable; }
    /// Ends the dialog with this result; IDOK commits.
    void CloseDialog(int result);
    int DoModal() override;

protected:
    void OnOK() override;
    void OnCancel() override;

private:
    std::unique_ptr<Quarry::CTransaction> m_level;
    bool m_hasLevel = false;
};
