#pragma once

// The bases of the suite's dialogs, sheets and pages.

#include "Afx/windows/Bcgp.h"
#include "Kiln/Export.h"

namespace Kiln
{

/// What dialogs, sheets and pages share: how they refuse.
class KILN_API CDialogMixin
{
public:
    CDialogMixin() = default;
    CDialogMixin(const CDialogMixin&) = delete;
    CDialogMixin& operator=(const CDialogMixin&) = delete;
    virtual ~CDialogMixin();

    /// Tells the user why what `control` holds is refused, moves the focus there and selects its whole text. False, for
    /// the caller to return.
    bool Refuse(CWnd& control, const char* message, unsigned style = 0);
    /// Moves the focus to `control` and selects its whole text.
    static void FocusAndSelect(CWnd& control);

    /// The file of the help that F1 opens, with the control's id as topic; empty: no help.
    virtual CString HelpFilePath() const;

protected:
    /// Opens that help. False when there is none.
    bool ShowHelp(unsigned controlId) const;
};

class KILN_API CExDialog : public CBCGPDialog, public CDialogMixin
{
    DECLARE_DYNAMIC(CExDialog)
    using CBCGPDialog::CBCGPDialog;

protected:
    bool OnHelp(unsigned controlId) override { return ShowHelp(controlId); }
};

class KILN_API CExPropertyPage : public CBCGPPropertyPage, public CDialogMixin
{
    DECLARE_DYNAMIC(CExPropertyPage)
    using CBCGPPropertyPage::CBCGPPropertyPage;

protected:
    bool OnHelp(unsigned controlId) override { return ShowHelp(controlId); }
};

/// A sheet that can have controls of its own below the tabs.
class KILN_API CExPropertySheet : public CBCGPPropertySheet, public CDialogMixin
{
    DECLARE_DYNAMIC(CExPropertySheet)
    using CBCGPPropertySheet::CBCGPPropertySheet;

protected:
    bool OnInitDialog() override;
    /// Adds controls below the tabs when the sheet opens: they begin at `height`, which grows by what they need (dialog
    /// units), as may `width`.
    virtual void OnAddExtraControls(int& width, int& height);
    /// A page has become active; the first one when the extra controls are there.
    virtual void PageSetActive(int page);
    void PageActivated(int page) override;
    void OnDestroy() override;
    bool OnHelp(unsigned controlId) override { return ShowHelp(controlId); }

private:
    bool m_hasExtraControls = false;
};

} // namespace Kiln
