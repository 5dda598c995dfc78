// What only real windows do.

#include "AfxWx/RealHands.h"

#include <wx/dialog.h>
#include <wx/textctrl.h>

#include "AfxWx/detail/Peer.h"

#include <gtk/gtk.h>

namespace
{

using Afx::ControlKind;

constexpr unsigned kAmount = 101;
constexpr Afx::LayoutRow kShortRows[] = {{ControlKind::Label, 0, "&Amount:", 0, 0},
                                         {ControlKind::Field, kAmount, "", 0, 1},
                                         {ControlKind::Default, IDOK, "OK", 1, 0}};
constexpr Afx::DialogLayout kShort = Afx::LayoutOf("Short", kShortRows);

wxWindow& NativeOf(const CWnd& window) { return *AfxWx::PeerOf(&window)->Native(); }

} // namespace

TEST(RealWindows, TellTheModelWhatComesPastTheKeyboard)
{
    CDialog dialog(kShort);
    ::Test::Work(dialog, [](::Test::Hands& hands) {
        auto& field = dynamic_cast<wxTextCtrl&>(NativeOf(hands.Control(kAmount)));
        field.WriteText(wxString::FromUTF8("12£"));
        ::Test::Settle();
        EXPECT_EQ(hands.Control(kAmount).Text(), "12£");
        field.WriteText(wxString(1 << 15, 'x'));
        ::Test::Settle();
        hands.ExpectMessage("The text is too long: this field takes 32767 characters. Nothing was pasted.");
        EXPECT_EQ(AfxWx::FromWx(field.GetValue()), "12£");
        hands.Control(kAmount).SetAccessibleName("Amount in pounds"); // each act looks at what is spoken
        hands.Press(VK_END);
        hands.Press(VK_ESCAPE);
    });
}

TEST(RealWindows, CloseByTheirFrameAsByEscape)
{
    CDialog dialog(kShort);
    EXPECT_EQ(::Test::Work(dialog,
                           [&dialog](::Test::Hands&) {
                               NativeOf(dialog).Close();
                               ::Test::Settle();
                           }),
              IDCANCEL);
}

TEST(RealWindows, StopALongOperation)
{
    CDialog dialog(kShort);
    ::Test::Work(dialog, [](::Test::Hands& hands) {
        Afx::WindowSystem& system = *Afx::WindowSystem::Current();
        system.ShowWait("Fetching");
        EXPECT_FALSE(system.WaitCancelled());
        const gint64 end = g_get_monotonic_time() + 10 * G_USEC_PER_SEC;
        bool isSent = false;
        while (!system.WaitCancelled() && g_get_monotonic_time() < end)
            if (const void* const active = ::Test::ActiveHandle();
                active && active != NativeOf(hands.Window()).GetHandle() && !std::exchange(isSent, true))
                ::Test::SendKey(VK_ESCAPE);
        EXPECT_TRUE(system.WaitCancelled());
        system.ShowWait({});
        EXPECT_FALSE(system.WaitCancelled());
        hands.Press(VK_ESCAPE);
    });
}
