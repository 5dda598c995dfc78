// The hands that work real windows: keys and mouse go through the display server, and after each act the hands wait
// until the program has nothing left to do and what it shows no longer changes.

#include <gtest/gtest.h>

#include <chrono>
#include <iterator>
#include <stdexcept>
#include <thread>

#include <wx/textctrl.h>
#include <wx/uiaction.h>

#include "Afx/text/Utf8.h"
#include "Afx/windows/ComboBox.h"
#include "Afx/windows/Edit.h"
#include "Afx/windows/MessageBox.h"
#include "Afx/windows/PropertySheet.h"
#include "AfxWx/detail/Peer.h"
#include "support/TestSupport.h"

#include <gtk/gtk.h>

#include <gdk/gdkx.h> // last: it names macros as others name types

namespace
{

using AfxWx::NativePeer;
using AfxWx::PeerOf;

constexpr std::chrono::seconds kPatience{10};
constexpr std::chrono::milliseconds kBreath{1};
constexpr int kQuietRounds = 3;

/// What can be seen: the focus, and each window's text and state, of the dialog before all others.
void Account(const CWnd& window, std::string& account)
{
    account += std::to_string(window.GetDlgCtrlID()) + '=' + window.Text().Str() + (window.IsShown() ? '+' : '-') +
               (window.IsWindowEnabled() ? '+' : '-');
    for (const CWnd* const child : window.Children())
        Account(*child, account);
}

std::string Account()
{
    std::string account;
    if (const CDialog* const top = CDialog::GetTopModal())
        Account(*top, account);
    return account + '@' + std::to_string(reinterpret_cast<std::uintptr_t>(CWnd::GetFocus()));
}

/// Does all that there is to do; whether there was anything.
bool Pump()
{
    XSync(gdk_x11_get_default_xdisplay(), False); // what was sent to the server has come back
    bool any = false;
    for (; gtk_events_pending(); any = true)
        gtk_main_iteration_do(FALSE);
    return any;
}

template<class Ready>
void WaitFor(const char* what, Ready ready)
{
    const auto end = std::chrono::steady_clock::now() + kPatience;
    while (!ready()) {
        if (std::chrono::steady_clock::now() > end)
            throw std::logic_error(std::string("waited in vain for ") + what);
        if (!Pump())
            std::this_thread::sleep_for(kBreath);
    }
}

void Settle()
{
    std::string before;
    int quiet = 0;
    WaitFor("the program to come to rest", [&] {
        const bool any = Pump();
        const AfxWx::System* const system = AfxWx::System::Current();
        std::string now = Account();
        quiet = any || !system || !system->IsIdle() || now != before ? 0 : quiet + 1;
        before = std::move(now);
        return quiet >= kQuietRounds;
    });
}

/// The window that has the keyboard; null: none of ours.
GtkWindow* ActiveWindow()
{
    GtkWindow* active = nullptr;
    GList* const windows = gtk_window_list_toplevels();
    for (GList* one = windows; one; one = one->next)
        if (gtk_window_has_toplevel_focus(GTK_WINDOW(one->data)) && gtk_widget_get_mapped(GTK_WIDGET(one->data)))
            active = GTK_WINDOW(one->data);
    g_list_free(windows);
    return active;
}

void WaitForDialog()
{
    WaitFor("the dialog to have the keyboard", [] {
        const AfxWx::System* const system = AfxWx::System::Current();
        wxWindow* const top = system ? reinterpret_cast<wxWindow*>(system->TopWindow()) : nullptr;
        return top && GTK_WIDGET(ActiveWindow()) == static_cast<GtkWidget*>(top->GetHandle());
    });
}

/// The middle of the left edge, where boxes and buttons are hit, on the screen.
std::pair<int, int> PlaceOf(const wxWindow& window)
{
    constexpr int kInside = 10;
    auto* const widget = static_cast<GtkWidget*>(window.GetHandle());
    GtkWidget* const top = gtk_widget_get_toplevel(widget);
    int left = 0, up = 0, x = 0, y = 0;
    gdk_window_get_origin(gtk_widget_get_window(top), &left, &up);
    gtk_widget_translate_coordinates(widget, top, 0, 0, &x, &y);
    return {left + x + std::min(kInside, gtk_widget_get_allocated_width(widget) / 2),
            up + y + gtk_widget_get_allocated_height(widget) / 2};
}

int ToolkitKey(unsigned key)
{
    constexpr std::pair<unsigned, int> kKeys[] = {
        {VK_BACK, WXK_BACK},     {VK_TAB, WXK_TAB},       {VK_RETURN, WXK_RETURN}, {VK_ESCAPE, WXK_ESCAPE},
        {VK_PRIOR, WXK_PAGEUP},  {VK_NEXT, WXK_PAGEDOWN}, {VK_END, WXK_END},       {VK_HOME, WXK_HOME},
        {VK_LEFT, WXK_LEFT},     {VK_UP, WXK_UP},         {VK_RIGHT, WXK_RIGHT},   {VK_DOWN, WXK_DOWN},
        {VK_DELETE, WXK_DELETE}, {VK_OEM_PERIOD, '.'},
    };
    for (const auto& [model, toolkit] : kKeys)
        if (model == key)
            return toolkit;
    return key >= VK_F1 && key < VK_F1 + 12 ? WXK_F1 + static_cast<int>(key - VK_F1) : static_cast<int>(key);
}

void SendKey(unsigned key, unsigned modifiers)
{
    const int held = ((modifiers & Afx::kShift) ? wxMOD_SHIFT : 0) | ((modifiers & Afx::kControl) ? wxMOD_CONTROL : 0) |
                     ((modifiers & Afx::kAlt) ? wxMOD_ALT : 0);
    wxUIActionSimulator().Char(ToolkitKey(key), held);
}

class RealStage : public Test::Stage, public AfxWx::Observer
{
public:
    int Run(const std::function<int()>& tests) override
    {
        constexpr int kNoDisplay = 77;
        return AfxWx::RunApplication("Real windows", tests, kNoDisplay);
    }
    std::unique_ptr<Afx::WindowSystem> MakeSystem(Afx::HeadlessWindowSystem& script) override
    {
        m_script = &script;
        return AfxWx::MakeWindowSystem(this);
    }

    // What is shown is worked by the script.
    void DialogRuns(CDialog& dialog) override
    {
        Settle();
        WaitForDialog();
        Settle();
        TakePicture(dialog);
        m_script->RunDialog(dialog);
    }
    void MessageRuns(const std::string& text, unsigned style) override
    {
        const int answer = m_script->MessageBox(text, style);
        WaitFor("a message box", [] { return GTK_IS_MESSAGE_DIALOG(ActiveWindow()); });
        GtkWidget* const button = gtk_dialog_get_widget_for_response(GTK_DIALOG(ActiveWindow()), Response(answer));
        ASSERT_NE(button, nullptr) << "no such button: " << answer;
        gtk_widget_grab_focus(button);
        Pump();
        wxUIActionSimulator().Char(WXK_SPACE);
    }
    bool Helps(const std::string& file, unsigned topic) override { return m_script->ShowHelp(file, topic); }

    // Acts.
    void Press(unsigned key, unsigned modifiers) override
    {
        WaitForDialog();
        SendKey(key, modifiers);
        Finish();
    }
    void Write(std::string_view text) override
    {
        WaitForDialog();
        while (!text.empty()) {
            const unsigned character = Afx::TakeCharacter(text);
            constexpr unsigned kAsciiEnd = 127;
            if (character == VK_BACK)
                SendKey(VK_BACK, 0);
            else if (character < kAsciiEnd)
                wxUIActionSimulator().Text(wxString(static_cast<wchar_t>(character)));
            else if (CWnd* const focus = CWnd::GetFocus())
                Afx::UserActs::Char(*focus, character); // this keyboard has no such key
        }
        Finish();
    }
    void Click(CWnd& control) override
    {
        WaitForDialog();
        const NativePeer* const peer = PeerOf(&control);
        ASSERT_NE(peer, nullptr) << "no window: " << control.GetDlgCtrlID();
        const auto [x, y] = PlaceOf(*peer->Native());
        wxUIActionSimulator mouse;
        mouse.MouseMove(x, y);
        Pump();
        mouse.MouseClick();
        Finish();
    }
    void Type(CWnd& control, std::string_view text) override
    {
        if (CWnd::GetFocus() != &control)
            Click(control);
        Press('A', Afx::kControl);
        if (text.empty())
            Press(VK_DELETE, 0);
        Write(text);
    }
    void Choose(CWnd& list, int item) override
    {
        if (auto* const sheet = dynamic_cast<CPropertySheet*>(&list)) {
            for (int i = 0; i < sheet->GetPageCount() && sheet->GetActiveIndex() != item; ++i)
                Press(VK_TAB, Afx::kControl);
            return;
        }
        constexpr int kMostControls = 60;
        for (int i = 0; i < kMostControls && CWnd::GetFocus() != &list; ++i)
            Press(VK_TAB, 0);
        const auto* const combo = dynamic_cast<const CComboBox*>(&list);
        if (combo && combo->IsEditable()) {
            CString text;
            combo->GetLBText(item, text);
            Press('A', Afx::kControl);
            Write(text.View());
            return;
        }
        Press(VK_HOME, 0);
        for (int i = 0; i < item; ++i)
            Press(VK_DOWN, 0);
    }

private:
    /// Into the folder MORVUT_PICTURES of the environment, if it is there.
    static void TakePicture(const CDialog& dialog)
    {
        static int s_count = 0;
        const char* const folder = std::getenv("MORVUT_PICTURES");
        if (folder)
            AfxWx::SaveScreenshot(std::string(folder) + '/' + std::to_string(++s_count) + '-' +
                                  (dialog.Text().IsEmpty() ? "untitled" : dialog.Text().Str()) + ".png");
    }
    static int Response(int answer)
    {
        switch (answer) {
        case IDOK:
            return GTK_RESPONSE_OK;
        case IDYES:
            return GTK_RESPONSE_YES;
        case IDNO:
            return GTK_RESPONSE_NO;
        default:
            return GTK_RESPONSE_CANCEL;
        }
    }
    /// The act is done, and what is shown is what the model holds.
    void Finish()
    {
        Settle();
        if (const CDialog* const top = CDialog::GetTopModal())
            ExpectMirrored(*top);
    }
    static void ExpectMirrored(const CWnd& window)
    {
        const NativePeer* const peer = PeerOf(&window);
        if (!peer)
            return;
        if (const auto* const text = dynamic_cast<const wxTextCtrl*>(peer->Native())) {
            EXPECT_EQ(AfxWx::FromWx(text->GetValue()), window.Text().Str()) << window.GetDlgCtrlID();
        }
        EXPECT_EQ(peer->Native()->IsThisEnabled(), window.IsWindowEnabled()) << window.GetDlgCtrlID();
        for (const CWnd* const child : window.Children())
            ExpectMirrored(*child);
    }

    Afx::HeadlessWindowSystem* m_script = nullptr;
} g_realStage;

} // namespace
