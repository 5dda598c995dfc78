#include "Afx/windows/Dialog.h"

#include <stdexcept>

#include "Afx/windows/DataExchange.h"
#include "Afx/windows/MessageBox.h"
#include "support/Test.h"

using ::Test::Windows;

namespace
{

class CUnfilledDialog : public CDialog
{
public:
    bool refusesLoading = true;

protected:
    void DoDataExchange(CDataExchange* exchange) override
    {
        if (refusesLoading)
            exchange->Fail();
    }
};

} // namespace

TEST(CDialog, IsClosedWhenItCannotBeFilledOrWorked)
{
    CUnfilledDialog dialog;
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
