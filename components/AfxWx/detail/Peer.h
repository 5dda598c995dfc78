#pragma once

// What all native windows share: they copy the model when it has changed, and tell what the user does.

#include <memory>

#include <wx/window.h>

#include "Afx/windows/Layout.h"
#include "Afx/windows/Wnd.h"
#include "AfxWx/detail/System.h"

namespace AfxWx
{

class AFXWX_API NativePeer : public Afx::WindowPeer
{
public:
    NativePeer(System& system, CWnd& model) : m_system(system), m_model(model) {}
    ~NativePeer() override;

    void Show(Afx::Part parts) final;
    /// Copies what has changed since it was called last.
    void MirrorNow();

    CWnd& Model() const noexcept { return m_model; }
    wxWindow* Native() const noexcept { return m_native; }
    /// What the keyboard works on, when it is not the window itself.
    virtual wxWindow* FocusTarget() const { return m_native; }
    /// The window that the native windows of its children stand in.
    virtual wxWindow* Client() const { return m_native; }
    /// A child's size, text or visibility has changed.
    virtual void ChildChanged(NativePeer& child);
    /// Gives the children their places.
    virtual void Arrange() {}

    /// Whether the toolkit's own window deals with a key or a plain character; otherwise the model does.
    virtual bool IsOwnKey(unsigned key, unsigned modifiers) const;
    virtual bool IsOwnCharacter(unsigned) const { return false; }
    /// Whether its parts keep characters to themselves: they are taken as keys then, without regard to case.
    virtual bool TakesLetterKeys() const { return false; }
    /// Before an act: tells the model what the toolkit's window has done by itself.
    virtual void Report() {}
    /// After the native focus has come.
    virtual void FocusCame() {}

    /// The least size of its cell. Null: there is no row.
    virtual wxSize LeastSize(const Afx::LayoutRow* row) const;
    /// Whether room that is left over is of use to it: for more lines; for wider ones.
    virtual bool GrowsDown() const { return false; }
    virtual bool GrowsAcross() const { return GrowsDown(); }
    /// Whether it fills the breadth of its cell.
    virtual bool FillsCell() const { return true; }
    void SpeakName();
    /// A character was typed while it had the focus.
    void CharacterTyped(wxKeyEvent& event);

protected:
    /// `native` is its window from now on.
    void Take(wxWindow* native);
    virtual void Mirror(Afx::Part parts);
    virtual void SpeakNameAs(const CString& name);
    /// Keys of `window`, a part of its own, are those of the peer.
    void TakeCharacters(wxWindow& window);

    /// The user has done something: `act` says it to the model. Nothing while the model is mirrored.
    void Act(const std::function<void()>& act);
    /// Calls `handler` for the events of `from` as long as the peer is there.
    template<class Tag, class Handler>
    void On(wxEvtHandler& from, const Tag& tag, Handler handler)
    {
        from.Bind(tag, [alive = std::weak_ptr<void>(m_alive), handler](typename Tag::EventClass& event) {
            if (alive.expired())
                event.Skip();
            else
                handler(event);
        });
    }

    System& m_system;

private:
    friend class System;

    CWnd& m_model;
    wxWindow* m_native = nullptr;
    Afx::Part m_pending{};
    std::shared_ptr<void> m_alive = std::make_shared<char>();
};

/// The peer of a window of the model; null when it has none.
AFXWX_API NativePeer* PeerOf(const CWnd* window) noexcept;

/// A dialog, a page or a panel: what controls stand in.
class AFXWX_API ContainerPeer : public NativePeer
{
public:
    using NativePeer::NativePeer;
    void ChildChanged(NativePeer& child) override;
    void Arrange() override;
    wxSize LeastSize(const Afx::LayoutRow*) const override { return wxDefaultSize; } // what its controls need
};

// Texts, and positions in them: the model counts bytes of UTF-8, the toolkit characters.
AFXWX_API wxString ToWx(std::string_view text);
inline wxString ToWx(const CString& text) { return ToWx(text.View()); }
inline wxString ToWx(const std::string& text) { return ToWx(std::string_view(text)); }
AFXWX_API std::string FromWx(const wxString& text);
int BytesOf(std::string_view text, long characters) noexcept;
long CharactersOf(std::string_view text, int bytes) noexcept;

/// Width and height in dialog units as pixels.
AFXWX_API wxSize PixelsOf(const wxWindow& window, int width, int height);
/// The height in pixels of a field with so many lines. The toolkit's own measure leaves larger texts out of account.
int HeightOfLines(const wxWindow& field, int lines);
/// The dialog units, at least one, that are nearest to a width in pixels.
AFXWX_API int UnitsOf(const wxWindow& window, int pixels);

/// The key of an event as the model numbers it (VK_...); 0: none that it knows. Modifiers are Afx::Modifier.
unsigned KeyOf(const wxKeyEvent& event) noexcept;
unsigned ModifiersOf(const wxKeyEvent& event) noexcept;

/// Names a native window, and what takes the keyboard inside it, for screen readers.
void SpeakAs(wxWindow& window, const wxString& name);
void SpeakAsDialog(wxWindow& window);

// The peers of each kind of window.
std::unique_ptr<NativePeer> MakeStatic(System& system, CWnd& model, wxWindow& parent);
std::unique_ptr<NativePeer> MakeEdit(System& system, CWnd& model, wxWindow& parent);
std::unique_ptr<NativePeer> MakeButton(System& system, CWnd& model, wxWindow& parent);
std::unique_ptr<NativePeer> MakeCombo(System& system, CWnd& model, wxWindow& parent);
std::unique_ptr<NativePeer> MakeList(System& system, CWnd& model, wxWindow& parent);
std::unique_ptr<NativePeer> MakeTabs(System& system, CWnd& model, wxWindow& parent);
std::unique_ptr<NativePeer> MakePanel(System& system, CWnd& model, wxWindow& parent);
std::unique_ptr<NativePeer> MakePlaceholder(System& system, CWnd& model, wxWindow& parent);
std::unique_ptr<NativePeer> MakeGrid(System& system, CWnd& model, wxWindow& parent);
std::unique_ptr<NativePeer> MakeDialog(System& system, CWnd& model, wxWindow* owner);

/// The panel of a page in its sheet's tabs.
wxWindow& HolderOf(NativePeer& tabs, const CWnd& page);

} // namespace AfxWx
