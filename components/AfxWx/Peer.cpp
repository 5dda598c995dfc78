#include "AfxWx/detail/Peer.h"

#include <algorithm>

#include <wx/event.h>

#include "Afx/text/Utf8.h"
#include "Afx/windows/WindowPeer.h"

#ifdef __WXGTK__
#include <gtk/gtk.h>
#else
#include <wx/access.h>
#endif

namespace AfxWx
{
namespace
{

using Afx::Has;
using Afx::Part;

struct KeyPair
{
    int toolkit;
    unsigned model;
};
constexpr KeyPair kKeyPairs[] = {{WXK_BACK, VK_BACK},     {WXK_TAB, VK_TAB},
                                 {WXK_RETURN, VK_RETURN}, {WXK_NUMPAD_ENTER, VK_RETURN},
                                 {WXK_ESCAPE, VK_ESCAPE}, {WXK_SPACE, VK_SPACE},
                                 {WXK_PAGEUP, VK_PRIOR},  {WXK_NUMPAD_PAGEUP, VK_PRIOR},
                                 {WXK_PAGEDOWN, VK_NEXT}, {WXK_NUMPAD_PAGEDOWN, VK_NEXT},
                                 {WXK_END, VK_END},       {WXK_NUMPAD_END, VK_END},
                                 {WXK_HOME, VK_HOME},     {WXK_NUMPAD_HOME, VK_HOME},
                                 {WXK_LEFT, VK_LEFT},     {WXK_NUMPAD_LEFT, VK_LEFT},
                                 {WXK_UP, VK_UP},         {WXK_NUMPAD_UP, VK_UP},
                                 {WXK_RIGHT, VK_RIGHT},   {WXK_NUMPAD_RIGHT, VK_RIGHT},
                                 {WXK_DOWN, VK_DOWN},     {WXK_NUMPAD_DOWN, VK_DOWN},
                                 {WXK_DELETE, VK_DELETE}, {WXK_NUMPAD_DELETE, VK_DELETE},
                                 {'.', VK_OEM_PERIOD}};
constexpr int kFunctionKeys = 12;

// Of a field or a button without a row of a layout, in dialog units.
constexpr int kPlainWidth = 60;

} // namespace

NativePeer* PeerOf(const CWnd* window) noexcept
{
    return window ? dynamic_cast<NativePeer*>(window->GetPeer()) : nullptr;
}

NativePeer::~NativePeer()
{
    m_alive.reset();
    m_system.Bury(*this, m_native);
}

void NativePeer::Take(wxWindow* native)
{
    m_native = native;
    m_system.Enlist(*this, *native);
    On(*FocusTarget(), wxEVT_SET_FOCUS, [this](wxFocusEvent& event) {
        event.Skip();
        if (CWnd::GetFocus() == &m_model)
            return;
        m_system.PerformLater(*this, [this] {
            if (m_system.PeerOf(wxWindow::FindFocus()) != this || CWnd::GetFocus() == &m_model)
                return;
            m_system.WantFocus(); // where the model has it then
            Afx::UserActs::Focus(m_model);
        });
    });
    Show(Part::All);
}

void NativePeer::TakeCharacters(wxWindow& window)
{
    On(window, wxEVT_CHAR, [this](wxKeyEvent& event) { CharacterTyped(event); });
}

void NativePeer::CharacterTyped(wxKeyEvent& event)
{
    const auto character = static_cast<unsigned>(event.GetUnicodeKey());
    const bool isPlain = character == VK_BACK || (character >= VK_SPACE && character != WXK_DELETE);
    if (!isPlain || event.ControlDown() || event.AltDown() || IsOwnCharacter(character)) {
        event.Skip();
        return;
    }
    Act([this, character] {
        CWnd& model = m_model;
        const WindowRef here(&model);
        Report();
        if (here)
            Afx::UserActs::Char(model, character);
    });
}

void NativePeer::Act(const std::function<void()>& act)
{
    if (!m_system.IsMirroring())
        m_system.Perform(*m_native, act);
}

void NativePeer::Show(Part parts)
{
    m_pending = m_pending | parts;
    m_system.Dirty(*this);
}

void NativePeer::MirrorNow()
{
    const Part parts = std::exchange(m_pending, Part{});
    Mirror(parts);
}

void NativePeer::Mirror(Part parts)
{
    if (Has(parts, Part::Enabled) && m_native->IsThisEnabled() != m_model.IsWindowEnabled())
        m_native->Enable(m_model.IsWindowEnabled());
    const bool changesPlace = parts != Part::All && m_native->IsShown() != m_model.IsShown();
    if (Has(parts, Part::Visible))
        m_native->Show(m_model.IsShown());
    if (Has(parts, Part::Name))
        SpeakName();
    if (Has(parts, Part::Focus))
        m_system.WantFocus();
    if (changesPlace || parts == Part::All)
        if (NativePeer* const around = AfxWx::PeerOf(m_model.GetParent()))
            around->ChildChanged(*this);
}

void NativePeer::SpeakName() { SpeakNameAs(m_model.GetAccessibleName()); }
void NativePeer::SpeakNameAs(const CString& name) { SpeakAs(*m_native, ToWx(name)); }
void NativePeer::ChildChanged(NativePeer&) {}
bool NativePeer::IsOwnKey(unsigned, unsigned) const { return false; }

wxSize NativePeer::LeastSize(const Afx::LayoutRow* row) const
{
    const int width = row && row->width > 0 ? row->width : kPlainWidth;
    return {PixelsOf(*m_native, width, 0).x, -1};
}

void ContainerPeer::ChildChanged(NativePeer&) { m_system.Unarranged(*this); }

// Texts.

wxString ToWx(std::string_view text)
{
    wxString shown = wxString::FromUTF8(text.data(), text.size());
    if (shown.empty() && !text.empty()) // not UTF-8: better a wrong letter than none
        shown = wxString(text.data(), wxConvISO8859_1, text.size());
    return shown;
}

std::string FromWx(const wxString& text)
{
    const wxScopedCharBuffer bytes = text.utf8_str();
    return {bytes.data(), bytes.length()};
}

int BytesOf(std::string_view text, long characters) noexcept
{
    std::string_view rest = text;
    for (; characters > 0 && !rest.empty(); --characters)
        Afx::TakeCharacter(rest);
    return static_cast<int>(text.size() - rest.size());
}

long CharactersOf(std::string_view text, int bytes) noexcept
{
    return Afx::CountCharacters(text.substr(0, static_cast<std::size_t>(std::max(bytes, 0))));
}

wxSize PixelsOf(const wxWindow& window, int width, int height)
{
    return window.ConvertDialogToPixels(wxSize(width, height));
}

int HeightOfLines(const wxWindow& field, int lines)
{
    constexpr int kFrame = 4; // dialog units
    return lines * field.GetCharHeight() + PixelsOf(field, 0, kFrame).y;
}

int UnitsOf(const wxWindow& window, int pixels)
{
    return std::max(1, window.ConvertPixelsToDialog(wxSize(pixels, 0)).x);
}

// Keys.

unsigned KeyOf(const wxKeyEvent& event) noexcept
{
    const int key = event.GetKeyCode();
    const auto* const pair = std::find_if(std::begin(kKeyPairs), std::end(kKeyPairs),
                                          [key](const KeyPair& one) { return one.toolkit == key; });
    if (pair != std::end(kKeyPairs))
        return pair->model;
    if (key >= WXK_F1 && key < WXK_F1 + kFunctionKeys)
        return VK_F1 + static_cast<unsigned>(key - WXK_F1);
    return (key >= 'A' && key <= 'Z') || (key >= '0' && key <= '9') ? static_cast<unsigned>(key) : 0;
}

unsigned ModifiersOf(const wxKeyEvent& event) noexcept
{
    return (event.ShiftDown() ? Afx::kShift : 0u) | (event.ControlDown() ? Afx::kControl : 0u) |
           (event.AltDown() ? Afx::kAlt : 0u);
}

#ifdef __WXGTK__
namespace
{

void NameInside(GtkWidget* widget, gpointer name)
{
    if (GTK_IS_ENTRY(widget) || GTK_IS_TEXT_VIEW(widget) || GTK_IS_TREE_VIEW(widget) || GTK_IS_TOGGLE_BUTTON(widget))
        atk_object_set_name(gtk_widget_get_accessible(widget), static_cast<const char*>(name));
    if (GTK_IS_CONTAINER(widget))
        gtk_container_forall(GTK_CONTAINER(widget), NameInside, name);
}

} // namespace

void SpeakAs(wxWindow& window, const wxString& name)
{
    const wxScopedCharBuffer bytes = name.utf8_str();
    GtkWidget* const widget = static_cast<GtkWidget*>(window.GetHandle());
    atk_object_set_name(gtk_widget_get_accessible(widget), bytes.data());
    if (GTK_IS_CONTAINER(widget) && window.GetChildren().empty())
        gtk_container_forall(GTK_CONTAINER(widget), NameInside, const_cast<char*>(bytes.data()));
}

void SpeakAsDialog(wxWindow& window)
{
    atk_object_set_role(gtk_widget_get_accessible(static_cast<GtkWidget*>(window.GetHandle())), ATK_ROLE_DIALOG);
}
#else
namespace
{

/// The name; the rest is what the system says of such a window.
class NamedWindow : public wxAccessible
{
public:
    NamedWindow(wxWindow& window, const wxString& name) : wxAccessible(&window), m_name(name) {}
    wxAccStatus GetName(int id, wxString* name) override
    {
        if (id != 0)
            return wxACC_NOT_IMPLEMENTED;
        *name = m_name;
        return wxACC_OK;
    }

private:
    wxString m_name;
};

} // namespace

void SpeakAs(wxWindow& window, const wxString& name) { window.SetAccessible(new NamedWindow(window, name)); }
void SpeakAsDialog(wxWindow&) {} // it is one there
#endif

} // namespace AfxWx
