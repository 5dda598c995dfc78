#include "Afx/windows/Dialog.h"

#include <stdexcept>

#include "Afx/windows/DataExchange.h"
#include "Afx/windows/MessageBox.h"
#include "support/Test.h"

using ::Test::Windows;

namespace
{

constexpr unsigned kNameId = 101, kCodeId = 102;

/// A name and a code; a code must be four letters long.
class CCodeDialog : public CDialog
{
public:
    CCodeDialog()
    {
        nameEdit.Create(this, kNameId);
        codeEdit.Create(this, kCodeId);
        ok.Create(this, IDOK);
    }
    CEdit nameEdit, codeEdit;
    CWnd ok;
    CString code = "ABCD";
    bool refusesLoading = false;

protected:
    void DoDataExchange(CDataExchange* exchange) override
    {
        if (!exchange->m_bSaveAndValidate) {
            codeEdit.SetWindowText(code);
            if (refusesLoading)
                exchange->Fail();
            return;
        }
        const CString typed = ::Test::TextOf(codeEdit);
        if (typed.GetLength() != 4) {
            exchange->PrepareEditCtrl(static_cast<int>(kCodeId));
            AfxMessageBox("four letters");
            exchange->Fail();
        }
        code = typed;
    }
};

} // namespace

TEST(CDialog, TakesTheDataOverOnceItIsRight)
{
    CCodeDialog dialog;
    Windows().Script([&](CDialog& open) {
        EXPECT_EQ(CWnd::GetFocus(), &dialog.nameEdit) << "the first control";
        EXPECT_EQ(open.DoModal(), -1) << "open already";
        Windows().Type(dialog.codeEdit, "XY");
        Windows().Answer(IDOK);
        Windows().Click(open, IDOK);
        EXPECT_TRUE(open.IsOpen()) << "at the field that is refused";
        EXPECT_EQ(CWnd::GetFocus(), &dialog.codeEdit);
        Windows().Type(dialog.codeEdit, "PQRS"); // over the text, which is selected
        Windows().Click(open, IDOK);
    });
    EXPECT_EQ(dialog.DoModal(), IDOK);
    EXPECT_EQ(CWnd::GetFocus(), nullptr);
    EXPECT_EQ(Windows().Messages().size(), 1u);
    Windows().Script([&](CDialog& open) {
        Windows().Type(dialog.codeEdit, "WXYZ");
        Windows().Click(open, IDCANCEL); // no such button: Escape
    });
    EXPECT_EQ(dialog.DoModal(), IDCANCEL);
    EXPECT_EQ(dialog.code, "PQRS") << "left as it was taken over before";
}

TEST(CDialog, IsClosedWhenItCannotBeFilledOrWorked)
{
    CCodeDialog dialog;
    dialog.refusesLoading = true;
    EXPECT_EQ(dialog.DoModal(), -1);
    EXPECT_EQ(CWnd::GetFocus(), nullptr);
    dialog.refusesLoading = false;
    Windows().Script([](CDialog&) { throw std::runtime_error("lost connection"); });
    EXPECT_THROW(dialog.DoModal(), std::runtime_error);
    EXPECT_FALSE(dialog.IsOpen());
    Afx::WindowSystem::Install(std::make_unique<Afx::ConsoleWindowSystem>());
    EXPECT_EQ(dialog.DoModal(), IDCANCEL);
    Afx::WindowSystem::Install(nullptr);
    EXPECT_EQ(dialog.DoModal(), IDCANCEL);
}
