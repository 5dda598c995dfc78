// The hands that work real windows: keys and mouse go through the display server, and after each act the hands wait
// until the program has nothing left to do and what it shows no longer changes.

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <set>
#include <stdexcept>
#include <thread>

#include <wx/dialog.h>
#include <wx/grid.h>
#include <wx/textctrl.h>

#include "Afx/text/Utf8.h"
#include "Afx/windows/MessageBox.h"
#include "AfxWx/CutOff.h"
#include "AfxWx/detail/Peer.h"
#include "AfxWx/RealHands.h"

#include <gtk/gtk.h>

// Last: they name macros as others name types.
#include <gdk/gdkx.h>

#include <X11/extensions/XTest.h>
#include <X11/keysym.h>
#include <X11/XKBlib.h>

namespace
{

using AfxWx::NativePeer;
using AfxWx::PeerOf;
using ::Test::SendKey;
using ::Test::Settle;

constexpr std::chrono::seconds kPatience{10};
constexpr std::chrono::milliseconds kBreath{1};
constexpr int kQuietRounds = 3;

GtkWidget* WidgetOf(const wxWindow& window) { return static_cast<GtkWidget*>(window.GetHandle()); }

const AfxWx::System& TheSystem() { return dynamic_cast<const AfxWx::System&>(*Afx::WindowSystem::Current()); }

/// The window before all others; null without one.
GtkWidget* TopWidget()
{
    const wxWindow* const top = TheSystem().TopWindow();
    return top ? WidgetOf(*top) : nullptr;
}

/// The model's account: the texts and states of all in a window.
void Account(const CWnd& window, std::string& account)
{
    account += std::to_string(window.GetDlgCtrlID()) + '=' + window.Text().Str() + (window.IsShown() ? '+' : '-') +
               (window.IsWindowEnabled() ? '+' : '-');
    for (const CWnd* const child : window.Children())
        Account(*child, account);
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
        GtkWidget* const top = TopWidget();
        GtkWidget* const grab = gtk_grab_get_current();
        const bool isDropped = grab && gtk_window_get_window_type(GTK_WINDOW(gtk_widget_get_toplevel(grab))) ==
                                           GTK_WINDOW_POPUP; // a combo box's list
        return TheSystem().IsIdle() && (isDropped || (top && GTK_WIDGET(ActiveWindow()) == top));
    });
}

/// What was changed last has its place on the screen.
void WaitForPaint(GtkWidget* widget)
{
    GdkFrameClock* const clock = gtk_widget_get_frame_clock(widget);
    bool painted = false;
    const gulong watch =
        g_signal_connect_swapped(clock, "after-paint", G_CALLBACK(+[](bool* done) { *done = true; }), &painted);
    gtk_widget_queue_draw(gtk_widget_get_toplevel(widget));
    WaitFor("a window to be painted", [&painted] { return painted; });
    g_signal_handler_disconnect(clock, watch);
}

/// Keys that were pressed and buttons that were let go, as they have come back from the display server: on their way
/// they may wait for the window manager.
std::size_t g_keysPressed = 0, g_buttonsReleased = 0;

void CountEvent(GdkEvent* event, gpointer)
{
    g_keysPressed += event->type == GDK_KEY_PRESS;
    g_buttonsReleased += event->type == GDK_BUTTON_RELEASE;
    gtk_main_do_event(event);
}

/// The toolkit takes the handler back whenever it yields.
void CountEvents() { gdk_event_handler_set(CountEvent, nullptr, nullptr); }

/// One key of the keyboard, down and up, with those that are held down meanwhile.
void SendSymbol(KeySym symbol, unsigned modifiers)
{
    Display* const display = gdk_x11_get_default_xdisplay();
    const KeyCode key = XKeysymToKeycode(display, symbol);
    if (key == 0)
        throw std::logic_error("the keyboard has no such key: " + std::to_string(symbol));
    if (XkbKeycodeToKeysym(display, key, 0, 0) != symbol)
        modifiers |= Afx::kShift;
    constexpr std::pair<unsigned, KeySym> kHeld[] = {
        {Afx::kShift, XK_Shift_L}, {Afx::kControl, XK_Control_L}, {Afx::kAlt, XK_Alt_L}};
    std::vector<KeyCode> keys;
    for (const auto& [modifier, held] : kHeld)
        if (modifiers & modifier)
            keys.push_back(XKeysymToKeycode(display, held));
    keys.push_back(key);
    CountEvents();
    const std::size_t awaited = g_keysPressed + keys.size();
    for (const KeyCode one : keys)
        XTestFakeKeyEvent(display, one, True, CurrentTime);
    for (; !keys.empty(); keys.pop_back())
        XTestFakeKeyEvent(display, keys.back(), False, CurrentTime);
    WaitFor("a key", [awaited] { return g_keysPressed >= awaited; });
}

KeySym SymbolOf(unsigned key)
{
    constexpr std::pair<unsigned, KeySym> kKeys[] = {
        {VK_BACK, XK_BackSpace}, {VK_TAB, XK_Tab},           {VK_RETURN, XK_Return},
        {VK_ESCAPE, XK_Escape},  {VK_PRIOR, XK_Page_Up},     {VK_NEXT, XK_Page_Down},
        {VK_END, XK_End},        {VK_HOME, XK_Home},         {VK_LEFT, XK_Left},
        {VK_UP, XK_Up},          {VK_RIGHT, XK_Right},       {VK_DOWN, XK_Down},
        {VK_DELETE, XK_Delete},  {VK_OEM_PERIOD, XK_period},
    };
    for (const auto& [model, symbol] : kKeys)
        if (model == key)
            return symbol;
    if (key >= VK_F1 && key < VK_F1 + 12)
        return XK_F1 + (key - VK_F1);
    return key >= 'A' && key <= 'Z' ? key - 'A' + XK_a : key; // a letter without Shift
}

void MoveTo(int x, int y)
{
    const int scale = gdk_window_get_scale_factor(gdk_get_default_root_window()); // of the toolkit's pixels
    XTestFakeMotionEvent(gdk_x11_get_default_xdisplay(), -1, scale * x, scale * y, CurrentTime);
    Pump();
}

/// Presses the mouse's button `inside` pixels from a widget's left edge, in its middle from top to bottom, and lets it
/// go `by` pixels further to the right; so many times.
void SendDrag(GtkWidget* widget, int inside, int by = 0, int times = 1)
{
    GtkWidget* const top = gtk_widget_get_toplevel(widget);
    int x = 0, y = 0;
    gtk_widget_translate_coordinates(widget, top, inside, gtk_widget_get_allocated_height(widget) / 2, &x, &y);
    gdk_window_get_root_coords(gtk_widget_get_window(top), x, y, &x, &y);
    MoveTo(1, 1); // a button that the mouse has not entered is not clicked
    MoveTo(x, y);
    CountEvents();
    for (; times > 0; --times) {
        const std::size_t before = g_buttonsReleased;
        XTestFakeButtonEvent(gdk_x11_get_default_xdisplay(), 1, True, CurrentTime);
        if (by != 0) {
            Pump();
            MoveTo(x + by / 2, y);
            MoveTo(x + by, y);
        }
        XTestFakeButtonEvent(gdk_x11_get_default_xdisplay(), 1, False, CurrentTime);
        WaitFor("the mouse's button", [before] { return g_buttonsReleased > before; });
    }
}

/// A column of a list or a grid as it is shown; where the right edge of its heading is, inside a widget.
struct Column
{
    int width;
    GtkWidget* widget;
    int edge;
};

Column ColumnOf(const wxWindow& list, int column)
{
    if (const auto* const grid = dynamic_cast<const wxGrid*>(&list)) {
        int edge = -1;
        for (int i = 0; i <= column; ++i)
            edge += grid->GetColSize(i);
        return {grid->GetColSize(column), WidgetOf(*grid->GetGridColLabelWindow()), edge};
    }
    auto* const view = GTK_TREE_VIEW(gtk_bin_get_child(GTK_BIN(WidgetOf(list))));
    GtkTreeViewColumn* const shown = gtk_tree_view_get_column(view, column);
    const int width = gtk_tree_view_column_get_width(shown);
    return {width, gtk_tree_view_column_get_button(shown), width - 1};
}

/// Drags the right edge of a column's heading by so many dialog units; by none: clicks it, so many times.
void SendToEdge(const CWnd& list, int column, int by, int times)
{
    const wxWindow& native = *PeerOf(&list)->Native();
    WaitForDialog();
    WaitForPaint(WidgetOf(native));
    const Column shown = ColumnOf(native, column);
    SendDrag(shown.widget, shown.edge, AfxWx::PixelsOf(native, by, 0).x, times);
    Settle();
    WaitForPaint(WidgetOf(native)); // which gives columns their widths
}

/// What takes the keyboard is called what the model calls it; what a table holds has names of its own.
void ExpectCalled(GtkWidget* widget, const std::string& name)
{
    AtkObject* const object = gtk_widget_get_accessible(widget);
    const char* const spoken = atk_object_get_name(object);
    if (gtk_widget_get_can_focus(widget) && gtk_widget_get_mapped(widget)) {
        EXPECT_EQ(spoken ? spoken : "", name);
    }
    if (atk_object_get_role(object) != ATK_ROLE_TABLE)
        for (GtkWidget* const inner : ::Test::ShownIn(widget))
            ExpectCalled(inner, name);
}

void ExpectSpoken(const NativePeer& peer)
{
    const CWnd& model = peer.Model();
    if (!model.IsTabStop() || !model.IsWindowVisible() || !peer.FocusTarget()->GetChildren().empty())
        return;
    constexpr int kFirstOfLibrary = 1000; // windows of the tests' own have nameless controls
    const std::string name = model.GetAccessibleName().Str();
    EXPECT_TRUE(!name.empty() || model.GetDlgCtrlID() < kFirstOfLibrary) << "nameless: " << model.GetDlgCtrlID();
    ExpectCalled(WidgetOf(*peer.FocusTarget()), name);
}

class RealStage : public Test::Stage, public AfxWx::Observer
{
public:
    int Run(const std::function<int()>& tests) override { return AfxWx::RunApplication("Real windows", tests); }
    std::unique_ptr<Afx::WindowSystem> MakeSystem(Afx::HeadlessWindowSystem& script) override
    {
        m_script = &script;
        g_object_set(gtk_settings_get_default(), "gtk-enable-animations", FALSE, "gtk-cursor-blink", FALSE, nullptr);
        XAutoRepeatOff(gdk_x11_get_default_xdisplay()); // however slow the machine
        return AfxWx::MakeWindowSystem(this);
    }

    // What is shown is worked by the script.
    void DialogRuns(CDialog& dialog) override
    {
        WaitForDialog();
        Settle();
        ExpectReadable(dialog);
        TakePicture(dialog);
        m_script->RunDialog(dialog);
    }
    void MessageRuns(const std::string& text, unsigned style) override
    {
        const int answer = m_script->MessageBox(text, style);
        WaitFor("a message box", [] { return GTK_IS_MESSAGE_DIALOG(ActiveWindow()); });
        const int response = answer == IDOK    ? GTK_RESPONSE_OK
                             : answer == IDYES ? GTK_RESPONSE_YES
                             : answer == IDNO  ? GTK_RESPONSE_NO
                                               : GTK_RESPONSE_CANCEL;
        GtkWidget* const button = gtk_dialog_get_widget_for_response(GTK_DIALOG(ActiveWindow()), response);
        ASSERT_NE(button, nullptr) << "no such button: " << answer;
        EXPECT_STRNE(gtk_window_get_title(ActiveWindow()), "");
        gtk_widget_grab_focus(button);
        Pump();
        SendSymbol(XK_space, 0);
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
            if (character < kAsciiEnd) // whose symbols have the numbers of the characters
                SendSymbol(character == VK_BACK ? XK_BackSpace : character, 0);
            else if (CWnd* const focus = CWnd::GetFocus()) {
                Afx::UserActs::Char(*focus, character); // this keyboard has no such key
                Settle();
            }
        }
        Finish();
    }
    void Click(CWnd& control) override
    {
        WaitForDialog();
        const NativePeer* const peer = PeerOf(&control);
        ASSERT_NE(peer, nullptr) << "no window: " << control.GetDlgCtrlID();
        GtkWidget* const widget = WidgetOf(*peer->Native());
        WaitForPaint(widget);
        constexpr int kInside = 10; // where boxes and buttons are hit
        SendDrag(widget, std::min(kInside, gtk_widget_get_allocated_width(widget) / 2));
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
    void Choose(CWnd& list, int item) override { ChooseByKeys(list, item); }

private:
    /// Into the folder MORVUT_PICTURES of the environment, if it is there.
    static void TakePicture(const CDialog& dialog)
    {
        static int s_count = 0;
        std::string title = dialog.Text().Str();
        std::replace(title.begin(), title.end(), '/', '-'); // of tax years
        if (const char* const folder = std::getenv("MORVUT_PICTURES"))
            AfxWx::SaveScreenshot(std::string(folder) + '/' + std::to_string(++s_count) + '-' + title + ".png");
    }
    /// The act is done, and what is shown is what the model holds.
    void Finish()
    {
        Settle();
        if (const CDialog* const top = CDialog::GetTopModal()) {
            ExpectMirrored(*top);
            ExpectReadable(*top);
        }
    }
    /// Told once for each text, which would stay cut off at every act.
    static void ExpectReadable(const CDialog& dialog)
    {
        static auto& s_told = *new std::set<std::string>;
        if (::Test::CutOff(dialog).empty())
            return;
        WaitForPaint(WidgetOf(*PeerOf(&dialog)->Native()));
        for (const std::string& line : ::Test::CutOff(dialog))
            if (s_told.insert(dialog.Text().Str() + ": " + line).second)
                ADD_FAILURE() << "cut off in " << dialog.Text().Str() << ": " << line;
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
        ExpectSpoken(*peer);
        for (const CWnd* const child : window.Children())
            ExpectMirrored(*child);
    }

    Afx::HeadlessWindowSystem* m_script = nullptr;
} g_realStage;

} // namespace

void Test::Settle()
{
    std::string before;
    int quiet = 0;
    WaitFor("the program to come to rest", [&] {
        const bool any = Pump();
        int x = 0, y = 0;
        if (GtkWidget* const top = TopWidget()) // which the window manager may still be placing
            gdk_window_get_origin(gtk_widget_get_window(top), &x, &y);
        std::string now = std::to_string(x) + ',' + std::to_string(y);
        if (const CDialog* const dialog = CDialog::GetTopModal())
            Account(*dialog, now);
        quiet = any || !TheSystem().IsIdle() || now != before ? 0 : quiet + 1;
        before = std::move(now);
        return quiet >= kQuietRounds;
    });
}

void* Test::ActiveHandle() { return ActiveWindow(); }
void Test::SendKey(unsigned key, unsigned modifiers) { SendSymbol(SymbolOf(key), modifiers); }

int Test::ShownWidth(const CWnd& list, int column)
{
    const wxWindow& native = *PeerOf(&list)->Native();
    return AfxWx::UnitsOf(native, ColumnOf(native, column).width);
}

void Test::DragEdge(CWnd& list, int column, int by) { SendToEdge(list, column, by, 1); }
void Test::DoubleClickEdge(CWnd& list, int column) { SendToEdge(list, column, 0, 2); }
