// Texts, fields and buttons.

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/colour.h>
#include <wx/radiobut.h>
#include <wx/settings.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include <algorithm>

#include "Afx/windows/Button.h"
#include "Afx/windows/Edit.h"
#include "Afx/windows/Static.h"
#include "AfxWx/detail/Peer.h"

namespace AfxWx
{
namespace
{

using Afx::Has;
using Afx::Part;

/// A text that is wrapped where its row gives it a width.
class StaticPeer : public NativePeer
{
public:
    StaticPeer(System& system, CWnd& model, wxWindow& parent)
        : NativePeer(system, model), m_text(new wxStaticText(&parent, wxID_ANY, {}))
    {
        Take(m_text);
    }
    wxSize LeastSize(const Afx::LayoutRow* row) const override
    {
        if (!row || row->width <= 0)
            return wxDefaultSize;
        const int width = PixelsOf(*m_text, row->width, 0).x;
        m_text->SetLabel(ToWx(Model().Text()));
        m_text->Wrap(width);
        const int lines = row->lines > 1 ? row->lines * m_text->GetCharHeight() : -1;
        return {width, std::max(lines, m_text->GetBestSize().y)};
    }
    bool FillsCell() const override { return false; }

protected:
    void Mirror(Part parts) override
    {
        if (Has(parts, Part::Text) && parts != Part::All) {
            if (NativePeer* const around = AfxWx::PeerOf(Model().GetParent()))
                around->ChildChanged(*this);
        }
        if (Has(parts, Part::Text))
            m_text->SetLabel(ToWx(Model().Text()));
        NativePeer::Mirror(parts);
    }
    void SpeakNameAs(const CString&) override {} // its text

private:
    wxStaticText* m_text;
};

/// Characters and keys that change the text go to the model, which may refuse them; where the caret goes by arrows and
/// mouse, and what comes in other ways (input methods, the mouse), is told to the model afterwards.
class EditPeer : public NativePeer
{
public:
    EditPeer(System& system, CEdit& model, wxWindow& parent)
        : NativePeer(system, model), m_edit(model),
          m_text(new wxTextCtrl(&parent, wxID_ANY, {}, wxDefaultPosition, wxDefaultSize, StyleOf(model)))
    {
        Take(m_text);
        TakeCharacters(*m_text);
        On(*m_text, wxEVT_TEXT, [this](wxCommandEvent&) {
            if (!m_system.IsMirroring())
                m_system.PerformLater(*this, [this] { Report(); });
        });
    }
    bool IsOwnKey(unsigned key, unsigned modifiers) const override
    {
        if (modifiers & Afx::kAlt)
            return false;
        switch (key) {
        case VK_LEFT:
        case VK_RIGHT:
        case VK_HOME:
        case VK_END:
            return true;
        case VK_UP:
        case VK_DOWN:
        case VK_PRIOR:
        case VK_NEXT:
            return m_edit.IsMultiLine() && !(modifiers & Afx::kControl);
        case VK_BACK:
        case VK_DELETE:
            return modifiers == Afx::kControl; // by words
        default:
            return false;
        }
    }
    void Report() override
    {
        const std::string text = FromWx(m_text->GetValue());
        long from = 0, to = 0;
        m_text->GetSelection(&from, &to);
        if (text == m_edit.Text().View()) {
            Afx::UserActs::Select(m_edit, BytesOf(text, from), BytesOf(text, to));
            return;
        }
        Show(Part::Text | Part::Selection); // what the model has made of it
        Afx::UserActs::Edit(m_edit, text, BytesOf(text, m_text->GetInsertionPoint()));
    }
    void FocusCame() override { Show(Part::Selection); } // the toolkit selects all
    wxSize LeastSize(const Afx::LayoutRow* row) const override
    {
        constexpr int kLines = 4;
        const int lines = row && row->lines > 1 ? row->lines : m_edit.IsMultiLine() ? kLines : 1;
        const int line = lines > 1 ? 0 : m_text->GetBestSize().y;
        return {NativePeer::LeastSize(row).x, std::max(line, HeightOfLines(*m_text, lines))};
    }
    bool GrowsDown() const override { return m_edit.IsMultiLine(); }

protected:
    void Mirror(Part parts) override
    {
        if (Has(parts, Part::Text)) {
            const wxString text = ToWx(Model().Text());
            if (m_text->GetValue() != text) {
                m_text->ChangeValue(text);
                parts = parts | Part::Selection;
            }
        }
        if (Has(parts, Part::Enabled) && m_text->IsEditable() == m_edit.IsReadOnly())
            m_text->SetEditable(!m_edit.IsReadOnly());
        if (Has(parts, Part::Selection)) {
            int start = 0, end = 0;
            m_edit.GetSel(start, end);
            m_text->SetSelection(CharactersOf(m_edit.Text().View(), start), CharactersOf(m_edit.Text().View(), end));
        }
        NativePeer::Mirror(parts);
    }

private:
    static long StyleOf(const CEdit& edit)
    {
        return (edit.IsMultiLine() ? wxTE_MULTILINE | wxTE_WORDWRAP : 0) | (edit.IsPassword() ? wxTE_PASSWORD : 0);
    }

    CEdit& m_edit;
    wxTextCtrl* m_text;
};

/// What all buttons do: they are clicked, and show their text.
class ButtonPeer : public NativePeer
{
public:
    ButtonPeer(System& system, CButton& model) : NativePeer(system, model), m_button(model) {}
    wxSize LeastSize(const Afx::LayoutRow* row) const override
    {
        return {row && row->width > 0 ? PixelsOf(*Native(), row->width, 0).x : -1, -1};
    }
    bool FillsCell() const override { return false; }
    bool IsOwnKey(unsigned key, unsigned modifiers) const override { return key == VK_SPACE && modifiers == 0; }

protected:
    template<class Tag>
    void ClicksOn(const Tag& tag)
    {
        On(*Native(), tag, [this](wxCommandEvent&) {
            Act([this] {
                Show(Part::Check); // which the toolkit has changed by itself
                Afx::UserActs::Click(m_button);
            });
        });
    }
    void Mirror(Part parts) override
    {
        if (Has(parts, Part::Text)) {
            const wxString text = ToWx(Model().Text());
            if (Native()->GetLabel() != text) {
                Native()->SetLabel(text);
                if (NativePeer* const around = AfxWx::PeerOf(Model().GetParent()))
                    around->ChildChanged(*this);
            }
        }
        NativePeer::Mirror(parts);
    }

    CButton& m_button;
};

class PushPeer : public ButtonPeer
{
public:
    PushPeer(System& system, CButton& model, wxWindow& parent) : ButtonPeer(system, model)
    {
        auto* const button = new wxButton(&parent, wxID_ANY, ToWx(model.Text()));
        if (model.GetKind() == CButton::Kind::Default)
            button->SetDefault();
        Take(button);
        ClicksOn(wxEVT_BUTTON);
    }
    wxSize LeastSize(const Afx::LayoutRow* row) const override
    {
        constexpr int kWidth = 50; // dialog units
        const wxSize asked = ButtonPeer::LeastSize(row);
        return {std::max({asked.x, PixelsOf(*Native(), kWidth, 0).x, Native()->GetBestSize().x}), -1};
    }
};

class CheckPeer : public ButtonPeer
{
public:
    CheckPeer(System& system, CButton& model, wxWindow& parent)
        : ButtonPeer(system, model), m_box(new wxCheckBox(&parent, wxID_ANY, ToWx(model.Text())))
    {
        Take(m_box);
        ClicksOn(wxEVT_CHECKBOX);
    }

protected:
    void Mirror(Part parts) override
    {
        if (Has(parts, Part::Check) && m_box->GetValue() != (m_button.GetCheck() != 0))
            m_box->SetValue(m_button.GetCheck() != 0);
        ButtonPeer::Mirror(parts);
    }

private:
    wxCheckBox* m_box;
};

const CButton* RadioAt(const CWnd* window)
{
    const auto* const button = dynamic_cast<const CButton*>(window);
    return button && button->GetKind() == CButton::Kind::Radio ? button : nullptr;
}

/// The radio buttons that stand beside each other are one group of the toolkit's, whose first member is hidden: it is
/// the one that is chosen while none is.
class RadioPeer : public ButtonPeer
{
public:
    RadioPeer(System& system, CButton& model, wxWindow& parent) : ButtonPeer(system, model)
    {
        if (const auto* const before = dynamic_cast<const RadioPeer*>(AfxWx::PeerOf(Before(model)))) {
            m_none = before->m_none;
        } else {
            m_none = new wxRadioButton(&parent, wxID_ANY, {}, wxDefaultPosition, wxDefaultSize, wxRB_GROUP);
            m_none->Hide();
        }
        m_radio = new wxRadioButton(&parent, wxID_ANY, ToWx(model.Text()));
        Take(m_radio);
        ClicksOn(wxEVT_RADIOBUTTON);
    }
    bool IsOwnKey(unsigned key, unsigned modifiers) const override { return ButtonPeer::IsOwnKey(key, modifiers); }

protected:
    void Mirror(Part parts) override
    {
        if (Has(parts, Part::Check)) {
            if (m_button.GetCheck())
                m_radio->SetValue(true);
            else if (m_radio->GetValue())
                m_none->SetValue(true);
        }
        ButtonPeer::Mirror(parts);
    }

private:
    static const CWnd* Before(const CWnd& model)
    {
        const auto& siblings = model.GetParent()->Children();
        const auto here = std::find(siblings.begin(), siblings.end(), &model);
        return here == siblings.begin() || here == siblings.end() || !RadioAt(*(here - 1)) ? nullptr : *(here - 1);
    }

    wxRadioButton* m_none; // of the parent's
    wxRadioButton* m_radio;
};

/// A button that draws itself: what the model draws is the look of a button without a frame, which readers, keyboard
/// and mouse find to be a button.
class DrawnPeer : public ButtonPeer
{
public:
    DrawnPeer(System& system, CButton& model, wxWindow& parent)
        : ButtonPeer(system, model), m_face(new wxButton(&parent, wxID_ANY, ToWx(model.Text()), wxDefaultPosition,
                                                         wxDefaultSize, wxBORDER_NONE | wxBU_EXACTFIT | wxBU_LEFT))
    {
        m_face->SetCursor(wxCursor(wxCURSOR_HAND));
        Take(m_face);
        ClicksOn(wxEVT_BUTTON);
    }

protected:
    void Mirror(Part parts) override
    {
        ButtonPeer::Mirror(parts);
        if (Has(parts, Part::Text | Part::Enabled))
            m_face->SetLabelMarkup(Markup());
    }

private:
    wxString Markup() const
    {
        CDC drawn;
        const CRect place{0, 0, Model().GetRect().Width(), Model().GetRect().Height()};
        m_button.OnDraw(&drawn, place, Model().IsWindowEnabled() ? 0 : CButton::kDrawnDisabled);
        wxString markup;
        for (const CDC::Written& written : drawn.GetWritten()) {
            wxString text = ToWx(written.text);
            for (const auto& [plain, escaped] : {std::pair{"&", "&amp;"}, {"<", "&lt;"}, {">", "&gt;"}})
                text.Replace(plain, escaped);
            text.Replace("&amp;", "&amp;&amp;"); // no mnemonic
            if (written.underlined)
                text = "<u>" + text + "</u>";
            if (written.color != kSystemText)
                text = "<span foreground=\"" + Name(written.color) + "\">" + text + "</span>";
            markup += text;
        }
        return markup;
    }
    static wxString Name(Color color)
    {
        constexpr unsigned kByte = 0xFF, kGreen = 8, kBlue = 16;
        const auto part = [color](unsigned shift) { return static_cast<unsigned char>(color >> shift & kByte); };
        const wxColour shown = color == kSystemLink ? wxSystemSettings::GetColour(wxSYS_COLOUR_HOTLIGHT)
                                                    : wxColour(part(0), part(kGreen), part(kBlue));
        return shown.GetAsString(wxC2S_HTML_SYNTAX);
    }

    wxButton* m_face;
};

class PlaceholderPeer : public NativePeer
{
public:
    PlaceholderPeer(System& system, CWnd& model, wxWindow& parent) : NativePeer(system, model)
    {
        Take(new wxWindow(&parent, wxID_ANY));
    }
};

} // namespace

std::unique_ptr<NativePeer> MakeStatic(System& system, CWnd& model, wxWindow& parent)
{
    return std::make_unique<StaticPeer>(system, model, parent);
}

std::unique_ptr<NativePeer> MakeEdit(System& system, CWnd& model, wxWindow& parent)
{
    return std::make_unique<EditPeer>(system, dynamic_cast<CEdit&>(model), parent);
}

std::unique_ptr<NativePeer> MakeButton(System& system, CWnd& model, wxWindow& parent)
{
    auto& button = dynamic_cast<CButton&>(model);
    switch (button.GetKind()) {
    case CButton::Kind::CheckBox:
        return std::make_unique<CheckPeer>(system, button, parent);
    case CButton::Kind::Radio:
        return std::make_unique<RadioPeer>(system, button, parent);
    case CButton::Kind::OwnerDrawn:
        return std::make_unique<DrawnPeer>(system, button, parent);
    default:
        return std::make_unique<PushPeer>(system, button, parent);
    }
}

std::unique_ptr<NativePeer> MakePlaceholder(System& system, CWnd& model, wxWindow& parent)
{
    return std::make_unique<PlaceholderPeer>(system, model, parent);
}

} // namespace AfxWx
