// The hands that work real windows: keys and mouse go through the display server, and after each act the hands wait
// until the program has nothing left to do and what it shows no longer changes.

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <iterator>
#include <set>
#include <stdexcept>
#include <thread>

#include <wx/dataview.h>
#include <wx/grid.h>
#include <wx/textctrl.h>

#include "Afx/text/Utf8.h"
#include "Afx/windows/Button.h"
#include "Afx/windows/ComboBox.h"
#include "Afx/windows/Edit.h"
#include "Afx/windows/ListCtrl.h"
#include "Afx/windows/MessageBox.h"
#include "AfxWx/CutOff.h"
#include "AfxWx/detail/Peer.h"
#include "AfxWx/RealHands.h"
#include "Lattice/Grid.h"

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

/// What can be seen: the focus, the place of the dialog before all others, and the text and state of all in it.
void Account(const CWnd& window, std::string& account)
{
    account += std::to_string(window.GetDlgCtrlID()) + '=' + window.Text().Str() + (window.IsShown() ? '+' : '-') +
               (window.IsWindowEnabled() ? '+' : '-');
    for (const CWnd* const child : window.Children())
        Account(*child, account);
}

GtkWidget* WidgetOf(const wxWindow& window) { return static_cast<GtkWidget*>(window.GetHandle()); }

/// The window before all others; null without one.
GtkWidget* TopWidget()
{
    const AfxWx::System* const system = AfxWx::System::Current();
    const wxWindow* const top = system ? reinterpret_cast<wxWindow*>(system->TopWindow()) : nullptr;
    return top ? WidgetOf(*top) : nullptr;
}

std::string Account()
{
    std::string account;
    if (const CDialog* const top = CDialog::GetTopModal())
        Account(*top, account);
    GtkWidget* const top = TopWidget();
    if (GdkWindow* const drawn = top ? gtk_widget_get_window(top) : nullptr) {
        int x = 0, y = 0;
        gdk_window_get_origin(drawn, &x, &y); // the window manager may still be placing it
        account += std::to_string(x) + ',' + std::to_string(y);
    }
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
    if (const AfxWx::System* const system = AfxWx::System::Current(); system && !system->IsIdle())
        Settle();
    WaitFor("the dialog to have the keyboard", [] {
        GtkWidget* const top = TopWidget();
        GtkWidget* const grab = gtk_grab_get_current();
        const bool isDropped =
            grab && (GTK_IS_MENU(grab) || (GTK_IS_WINDOW(grab) && gtk_window_get_window_type(GTK_WINDOW(grab)) ==
                                                                      GTK_WINDOW_POPUP)); // a combo box's list
        return isDropped || (top && GTK_WIDGET(ActiveWindow()) == top);
    });
}

/// In pixels of the screen, of which the toolkit's own may hold several.
struct Place
{
    int x, y;
};

/// A place in a widget, `right` from its left edge, in its middle from top to bottom.
Place PlaceIn(GtkWidget* widget, int right)
{
    GtkWidget* const top = gtk_widget_get_toplevel(widget);
    int left = 0, up = 0, x = 0, y = 0;
    gdk_window_get_origin(gtk_widget_get_window(top), &left, &up);
    gtk_widget_translate_coordinates(widget, top, right, gtk_widget_get_allocated_height(widget) / 2, &x, &y);
    const int scale = gtk_widget_get_scale_factor(top);
    return {scale * (left + x), scale * (up + y)};
}

/// Near the left edge, where boxes and buttons are hit.
Place PlaceOf(const wxWindow& window)
{
    constexpr int kInside = 10;
    GtkWidget* const widget = WidgetOf(window);
    return PlaceIn(widget, std::min(kInside, gtk_widget_get_allocated_width(widget) / 2));
}

/// The columns of a list or a grid as they are shown.
struct ShownColumns
{
    explicit ShownColumns(const CWnd& list)
        : native(*PeerOf(&list)->Native()), grid(dynamic_cast<wxGrid*>(&native)),
          view(dynamic_cast<wxDataViewCtrl*>(&native))
    {}
    int Width(int column) const
    {
        return grid ? grid->GetColSize(column) : view->GetColumn(static_cast<unsigned>(column))->GetWidth();
    }
    /// Where the heading's right edge is dragged.
    Place Edge(int column) const
    {
        if (grid) {
            int right = -1;
            for (int i = 0; i <= column; ++i)
                right += grid->GetColSize(i);
            return PlaceIn(WidgetOf(*grid->GetGridColLabelWindow()), right);
        }
        auto* const shown = GTK_TREE_VIEW_COLUMN(view->GetColumn(static_cast<unsigned>(column))->GetGtkHandle());
        return PlaceIn(gtk_tree_view_column_get_button(shown), gtk_tree_view_column_get_width(shown) - 1);
    }

    wxWindow& native;
    wxGrid* grid;
    wxDataViewCtrl* view;
};

/// Keys that were pressed and buttons that were let go, as they have come back from the display server: on their way
/// they may wait for the window manager.
int g_keysPressed = 0, g_buttonsReleased = 0;

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
    if (XkbKeycodeToKeysym(display, key, 0, 0) != symbol && XkbKeycodeToKeysym(display, key, 0, 1) == symbol)
        modifiers |= Afx::kShift;
    constexpr std::pair<unsigned, KeySym> kHeld[] = {
        {Afx::kShift, XK_Shift_L}, {Afx::kControl, XK_Control_L}, {Afx::kAlt, XK_Alt_L}};
    CountEvents();
    int awaited = g_keysPressed + 1;
    for (const auto& [modifier, held] : kHeld)
        awaited += (modifiers & modifier) != 0;
    for (const bool isDown : {true, false}) {
        if (!isDown)
            XTestFakeKeyEvent(display, key, False, CurrentTime);
        for (const auto& [modifier, held] : kHeld)
            if (modifiers & modifier)
                XTestFakeKeyEvent(display, XKeysymToKeycode(display, held), isDown, CurrentTime);
        if (isDown)
            XTestFakeKeyEvent(display, key, True, CurrentTime);
    }
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

void MoveTo(Place place)
{
    XTestFakeMotionEvent(gdk_x11_get_default_xdisplay(), -1, place.x, place.y, CurrentTime);
    Pump();
}

void SendButton(bool isDown) { XTestFakeButtonEvent(gdk_x11_get_default_xdisplay(), 1, isDown, CurrentTime); }

/// Presses the mouse's button at a place and lets it go at another, so many times.
void SendDrag(Place from, Place to, int times = 1)
{
    MoveTo({1, 1}); // a button that the mouse has not entered is not clicked
    MoveTo(from);
    CountEvents();
    for (const int awaited = g_buttonsReleased + times; times > 0; --times) {
        SendButton(true);
        if (to.x != from.x || to.y != from.y) {
            Pump();
            MoveTo({(from.x + to.x) / 2, (from.y + to.y) / 2});
            MoveTo(to);
        }
        SendButton(false);
        WaitFor("the mouse's button", [=] { return g_buttonsReleased > awaited - times; });
    }
}

void HasPainted(GdkFrameClock*, gpointer painted) { *static_cast<bool*>(painted) = true; }

/// What was changed last has its place on the screen.
void WaitForPaint(const wxWindow& inside)
{
    GtkWidget* const window = gtk_widget_get_toplevel(WidgetOf(inside));
    GdkFrameClock* const clock = gtk_widget_get_frame_clock(window);
    bool painted = false;
    const gulong watch = g_signal_connect(clock, "after-paint", G_CALLBACK(HasPainted), &painted);
    gtk_widget_queue_draw(window);
    WaitFor("a window to be painted", [&painted] { return painted; });
    g_signal_handler_disconnect(clock, watch);
}

/// Drags the right edge of a column's heading by so many dialog units; by none: clicks it, so many times.
void SendToEdge(const CWnd& list, int column, int by, int times)
{
    WaitForDialog();
    const ShownColumns shown(list);
    WaitForPaint(shown.native);
    const Place from = shown.Edge(column);
    const int scale = gtk_widget_get_scale_factor(WidgetOf(shown.native));
    SendDrag(from, {from.x + AfxWx::PixelsOf(shown.native, by, 0).x * scale, from.y}, times);
    Settle();
    WaitForPaint(shown.native); // which gives columns their widths
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
    const bool isGrid = dynamic_cast<const Lattice::CGrid*>(&model) != nullptr;
    const bool isControl = isGrid || dynamic_cast<const CEdit*>(&model) || dynamic_cast<const CButton*>(&model) ||
                           dynamic_cast<const CComboBox*>(&model) || dynamic_cast<const CListCtrl*>(&model);
    if (!isControl || !model.IsWindowVisible())
        return;
    constexpr int kFirstOfLibrary = 1000; // windows of the tests' own have nameless controls
    const std::string name = model.GetAccessibleName().Str();
    EXPECT_TRUE(!name.empty() || model.GetDlgCtrlID() < kFirstOfLibrary) << "nameless: " << model.GetDlgCtrlID();
    ExpectCalled(WidgetOf(*(isGrid ? peer.FocusTarget() : peer.Native())), name);
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
        g_object_set(gtk_settings_get_default(), "gtk-enable-animations", FALSE, "gtk-cursor-blink", FALSE, nullptr);
        XAutoRepeatOff(gdk_x11_get_default_xdisplay()); // however slow the machine
        return AfxWx::MakeWindowSystem(this);
    }

    // What is shown is worked by the script.
    void DialogRuns(CDialog& dialog) override
    {
        Settle();
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
            if (character == VK_BACK)
                SendKey(VK_BACK, 0);
            else if (character < kAsciiEnd)
                SendSymbol(character, 0); // whose symbols have the numbers of the characters
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
        WaitForPaint(*peer->Native());
        const Place place = PlaceOf(*peer->Native());
        SendDrag(place, place);
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
        const char* const folder = std::getenv("MORVUT_PICTURES");
        if (!folder)
            return;
        std::string title = dialog.Text().IsEmpty() ? "untitled" : dialog.Text().Str();
        std::replace(title.begin(), title.end(), '/', '-'); // of tax years
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
        WaitForPaint(*PeerOf(&dialog)->Native());
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
        const AfxWx::System* const system = AfxWx::System::Current();
        std::string now = Account();
        quiet = any || !system || !system->IsIdle() || now != before ? 0 : quiet + 1;
        before = std::move(now);
        return quiet >= kQuietRounds;
    });
}

void* Test::ActiveHandle() { return ActiveWindow(); }
void Test::SendKey(unsigned key, unsigned modifiers) { SendSymbol(SymbolOf(key), modifiers); }

int Test::ShownWidth(const CWnd& list, int column)
{
    const ShownColumns shown(list);
    return AfxWx::UnitsOf(shown.native, shown.Width(column));
}

void Test::DragEdge(CWnd& list, int column, int by) { SendToEdge(list, column, by, 1); }
void Test::DoubleClickEdge(CWnd& list, int column) { SendToEdge(list, column, 0, 2); }
