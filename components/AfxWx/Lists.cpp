// Combo boxes and lists.

#include <wx/bmpbndl.h>
#include <wx/combobox.h>
#include <wx/dataview.h>
#include <wx/headerctrl.h>
#include <wx/image.h>

#include <algorithm>

#ifdef __WXGTK__
#include <gtk/gtk.h>
#endif

#include "Afx/windows/ComboBox.h"
#include "Afx/windows/ListCtrl.h"
#include "AfxWx/detail/Peer.h"

namespace AfxWx
{
namespace
{

using Afx::Has;
using Afx::Part;

class ComboPeer : public NativePeer
{
public:
    ComboPeer(System& system, CComboBox& model, wxWindow& parent)
        : NativePeer(system, model), m_model(model),
          m_combo(new wxComboBox(&parent, wxID_ANY, {}, wxDefaultPosition, wxDefaultSize, 0, nullptr,
                                 model.IsEditable() ? 0 : wxCB_READONLY))
    {
        Take(m_combo);
        TakeCharacters(*m_combo);
        On(*m_combo, wxEVT_COMBOBOX, [this](wxCommandEvent& event) {
            const int item = event.GetSelection();
            if (!m_system.IsMirroring())
                m_system.PerformLater(*this, [this, item] {
                    Show(Part::Selection | Part::Text);
                    Afx::UserActs::Choose(m_model, item);
                });
        });
        On(*m_combo, wxEVT_TEXT, [this](wxCommandEvent&) {
            if (!m_system.IsMirroring() && m_model.IsEditable())
                m_system.PerformLater(*this, [this] { Report(); });
        });
        for (const bool opens : {true, false})
            On(*m_combo, opens ? wxEVT_COMBOBOX_DROPDOWN : wxEVT_COMBOBOX_CLOSEUP, [this, opens](wxCommandEvent&) {
                m_isDropped = opens;
                if (!m_system.IsMirroring() && m_model.GetDroppedState() != opens)
                    m_system.PerformLater(*this, [this, opens] { Afx::UserActs::Drop(m_model, opens); });
            });
    }
    bool IsOwnKey(unsigned key, unsigned modifiers) const override
    {
        if (!m_model.IsEditable() || (modifiers & Afx::kAlt))
            return false;
        constexpr unsigned kOwn[] = {VK_LEFT, VK_RIGHT, VK_HOME, VK_END, VK_DELETE, VK_BACK};
        constexpr unsigned kOwnWithControl[] = {'A', 'C', 'V', 'X'};
        return std::find(std::begin(kOwn), std::end(kOwn), key) != std::end(kOwn) ||
               (modifiers == Afx::kControl &&
                std::find(std::begin(kOwnWithControl), std::end(kOwnWithControl), key) != std::end(kOwnWithControl));
    }
    bool IsOwnCharacter(unsigned) const override { return m_model.IsEditable(); }
    bool TakesLetterKeys() const override { return !m_model.IsEditable(); }
    void Report() override
    {
        if (!m_model.IsEditable())
            return;
        const std::string text = FromWx(m_combo->GetValue());
        if (text != m_model.Text().View())
            Afx::UserActs::Edit(m_model, text, BytesOf(text, m_combo->GetInsertionPoint()));
    }
    wxSize LeastSize(const Afx::LayoutRow* row) const override
    {
        constexpr int kWidth = 90; // dialog units
        return {PixelsOf(*m_combo, row && row->width > 0 ? row->width : kWidth, 0).x,
                std::max(m_combo->GetBestSize().y, HeightOfLines(*m_combo, 1))};
    }

protected:
    void Mirror(Part parts) override
    {
        if (Has(parts, Part::Items)) {
            wxArrayString items;
            for (int i = 0; i < m_model.GetCount(); ++i) {
                CString text;
                m_model.GetLBText(i, text);
                items.push_back(ToWx(text));
            }
            if (items != m_combo->GetStrings()) {
                if (m_isDropped) // a list that is open keeps rows that are no longer there
                    m_combo->Dismiss();
                m_combo->Set(items);
                parts = parts | Part::Selection | Part::Text;
            }
        }
        if (Has(parts, Part::Selection | Part::Text)) {
            if (m_combo->GetSelection() != m_model.GetCurSel())
                m_combo->SetSelection(m_model.GetCurSel());
            const wxString text = ToWx(m_model.Text());
            if (m_model.IsEditable() && m_combo->GetValue() != text) {
                m_combo->ChangeValue(text);
                m_combo->SetInsertionPointEnd();
            }
        }
        NativePeer::Mirror(parts);
        if (Has(parts, Part::Items) && m_model.GetDroppedState() != m_isDropped)
            m_system.PerformLater(*this, [this] { DropOrClose(); }); // when it stands in its place
    }

private:
    void DropOrClose()
    {
        const bool drops = m_model.GetDroppedState();
        if (drops == m_isDropped || !m_combo->IsShownOnScreen())
            return;
        if (!drops) {
            m_combo->Dismiss();
        } else if (m_model.GetCount() > 0) {
            m_combo->Popup();
#ifdef __WXGTK__
            GtkWidget* const list = gtk_grab_get_current(); // which has chosen its first item by itself
            if (m_model.GetCurSel() == CComboBox::kNone && GTK_IS_MENU(list))
                gtk_menu_shell_deselect(GTK_MENU_SHELL(list));
#endif
        }
    }

    CComboBox& m_model;
    wxComboBox* m_combo;
    bool m_isDropped = false;
};

/// The rows of a list, read when they are shown.
class Rows : public wxDataViewVirtualListModel
{
public:
    explicit Rows(const CListCtrl& list) : m_list(list) {}
    unsigned GetColumnCount() const override { return static_cast<unsigned>(m_list.GetColumns().size()); }
    wxString GetColumnType(unsigned column) const override { return column == 0 ? "wxDataViewIconText" : "string"; }
    void GetValueByRow(wxVariant& value, unsigned row, unsigned column) const override
    {
        const wxString text = ToWx(m_list.GetItemText(static_cast<int>(row), static_cast<int>(column)));
        if (column == 0)
            value << wxDataViewIconText(text, ImageOf(static_cast<int>(row)));
        else
            value = text;
    }
    bool SetValueByRow(const wxVariant&, unsigned, unsigned) override { return false; }

private:
    wxBitmapBundle ImageOf(int row) const
    {
        const CImageList* const images = m_list.GetImageList();
        const Afx::Bitmap* const picture = images ? images->GetImage(m_list.GetItemImage(row)) : nullptr;
        if (!picture)
            return {};
        wxImage image(picture->width, picture->height);
        image.InitAlpha();
        constexpr unsigned kByte = 8;
        for (int y = 0, at = 0; y < picture->height; ++y)
            for (int x = 0; x < picture->width; ++x) {
                const std::uint32_t pixel = picture->pixels[static_cast<std::size_t>(at++)];
                const auto part = [pixel](unsigned n) { return static_cast<unsigned char>(pixel >> (n * kByte)); };
                image.SetRGB(x, y, part(2), part(1), part(0));
                image.SetAlpha(x, y, part(3));
            }
        return wxBitmapBundle::FromBitmap(wxBitmap(image));
    }

    const CListCtrl& m_list;
};

#ifdef __WXGTK__
/// The user drags a heading's edge: told as other desktops tell it. The width is -1 when the edge was double-clicked.
void HeadingSized(GtkTreeViewColumn* sized, GParamSpec*, gpointer view)
{
    auto& list = *static_cast<wxDataViewCtrl*>(view);
    for (unsigned i = 0; i < list.GetColumnCount(); ++i)
        if (GTK_TREE_VIEW_COLUMN(list.GetColumn(i)->GetGtkHandle()) == sized) {
            wxHeaderCtrlEvent event(wxEVT_HEADER_END_RESIZE, list.GetId());
            event.SetColumn(static_cast<int>(i));
            event.SetWidth(gtk_tree_view_column_get_fixed_width(sized));
            list.HandleWindowEvent(event);
        }
}
#endif

class ListPeer : public NativePeer
{
public:
    ListPeer(System& system, CListCtrl& model, wxWindow& parent)
        : NativePeer(system, model), m_list(model),
          m_view(new wxDataViewCtrl(&parent, wxID_ANY, wxDefaultPosition, wxDefaultSize,
                                    model.IsSingleSelection() ? wxDV_SINGLE : wxDV_MULTIPLE)),
          m_rows(new Rows(model))
    {
        m_view->AssociateModel(m_rows.get());
#ifdef __WXGTK__
        gtk_tree_view_set_enable_search(GTK_TREE_VIEW(m_view->GtkGetTreeView()), FALSE); // the model finds by typing
#endif
        Take(m_view);
        TakeCharacters(*m_view->GetMainWindow());
        On(*m_view, wxEVT_DATAVIEW_SELECTION_CHANGED, [this](wxDataViewEvent&) {
            if (!m_system.IsMirroring())
                m_system.PerformLater(*this, [this] { Chosen(); });
        });
        On(*m_view, wxEVT_DATAVIEW_ITEM_ACTIVATED, [this](wxDataViewEvent& event) {
            const auto row = static_cast<int>(m_rows->GetRow(event.GetItem()));
            m_system.PerformLater(*this, [this, row] { Afx::UserActs::DoubleClick(m_list, row); });
        });
        On(*m_view, wxEVT_DATAVIEW_COLUMN_HEADER_CLICK, [this](wxDataViewEvent& event) {
            const int column = event.GetColumn();
            m_system.PerformLater(*this, [this, column] {
                if (Afx::UserActs::Focus(m_list))
                    m_list.ClickColumn(column);
            });
        });
        On(SourceOfWidths(), wxEVT_HEADER_END_RESIZE, [this](wxHeaderCtrlEvent& event) {
            if (m_system.IsMirroring())
                return;
            const int column = event.GetColumn(), width = event.GetWidth();
            m_system.PerformLater(*this, [this, column, width] { Sized(column, width); });
        });
        On(*m_view->GetMainWindow(), wxEVT_MOTION, [this](wxMouseEvent& event) {
            event.Skip();
            ShowTip(event.GetPosition());
        });
    }
    wxSize LeastSize(const Afx::LayoutRow* row) const override
    {
        constexpr int kWidth = 240, kLines = 8, kLine = 11; // dialog units a line, with the room between lines
        const int lines = row && row->lines > 1 ? row->lines : kLines;
        return PixelsOf(*m_view, row && row->width > 0 ? row->width : kWidth, (lines + 1) * kLine);
    }
    bool GrowsDown() const override { return true; }

protected:
    void Mirror(Part parts) override
    {
        if (Has(parts, Part::Items)) {
            if (Headings() != m_headings)
                MakeColumns();
            m_rows->Reset(static_cast<unsigned>(m_list.GetItemCount()));
            parts = parts | Part::Selection;
        }
        if (Has(parts, Part::Widths) && Headings() != m_headings) {
            m_headings = Headings();
            for (unsigned i = 0; i < m_headings.size(); ++i)
                m_view->GetColumn(i)->SetWidth(WidthOf(i));
        }
        if (Has(parts, Part::Selection)) {
            wxDataViewItemArray selected;
            for (const int row : m_list.GetSelectedRows())
                selected.push_back(m_rows->GetItem(static_cast<unsigned>(row)));
            if (const int focused = m_list.GetFocusedRow(); focused >= 0) {
                const wxDataViewItem item = m_rows->GetItem(static_cast<unsigned>(focused));
                m_view->SetCurrentItem(item); // which selects it
                m_view->EnsureVisible(item);
            }
            m_view->SetSelections(selected);
        }
        NativePeer::Mirror(parts);
    }

private:
    std::vector<std::pair<CString, int>> Headings() const
    {
        std::vector<std::pair<CString, int>> headings;
        for (const CListCtrl::Column& column : m_list.GetColumns())
            headings.emplace_back(column.heading, column.width);
        return headings;
    }
    void MakeColumns()
    {
        m_headings = Headings();
        m_view->ClearColumns();
        for (unsigned i = 0; i < m_headings.size(); ++i) {
            const wxString heading = ToWx(m_headings[i].first);
            wxDataViewColumn& column =
                *(i == 0 ? m_view->AppendIconTextColumn(heading, i, wxDATAVIEW_CELL_INERT, WidthOf(i))
                         : m_view->AppendTextColumn(heading, i, wxDATAVIEW_CELL_INERT, WidthOf(i)));
            column.SetResizeable(true);
            column.SetMinWidth(WidthOfText(heading));
#ifdef __WXGTK__
            g_signal_connect(column.GetGtkHandle(), "notify::fixed-width", G_CALLBACK(HeadingSized), m_view);
#endif
        }
    }
    int WidthOfText(const wxString& text) const // pixels
    {
        constexpr int kRoom = 12; // dialog units beside the heading, for the mark of sorting
        return m_view->GetTextExtent(text).x + PixelsOf(*m_view, kRoom, 0).x;
    }
    int WidthOf(unsigned column) const // pixels
    {
        return std::max(PixelsOf(*m_view, m_headings[column].second, 0).x, WidthOfText(ToWx(m_headings[column].first)));
    }
    wxWindow& SourceOfWidths()
    {
#ifdef wxHAS_GENERIC_DATAVIEWCTRL
        return *m_view->GenericGetHeader();
#else
        return *m_view;
#endif
    }
    /// The user has sized a column to so many pixels; a negative number: to what its texts need.
    void Sized(int column, int pixels)
    {
        const auto place = static_cast<std::size_t>(column);
        if (column < 0 || place >= m_headings.size())
            return;
        if (pixels < 0) {
            constexpr int kMeasured = 200; // rows, from the top
            const CImageList* const images = column == 0 ? m_list.GetImageList() : nullptr;
            const Afx::Bitmap* const image = images ? images->GetImage(0) : nullptr;
            pixels = WidthOfText(ToWx(m_headings[place].first));
            for (int row = 0; row < std::min(m_list.GetItemCount(), kMeasured); ++row)
                pixels =
                    std::max(pixels, WidthOfText(ToWx(m_list.GetItemText(row, column))) + (image ? image->width : 0));
        } else {
            m_headings[place].second = UnitsOf(*m_view, pixels); // it is that already, to the pixel
        }
        m_list.SetColumnWidth(column, UnitsOf(*m_view, pixels));
    }
    /// One row is chosen by a click, rows are added and taken away with Ctrl and Shift.
    void Chosen()
    {
        wxDataViewItemArray items;
        m_view->GetSelections(items);
        std::vector<int> rows;
        for (const wxDataViewItem& item : items)
            rows.push_back(static_cast<int>(m_rows->GetRow(item)));
        std::sort(rows.begin(), rows.end());
        Show(Part::Selection);
        const std::vector<int> before = m_list.GetSelectedRows();
        if (rows == before)
            return;
        if (rows.size() == 1) {
            Afx::UserActs::Choose(m_list, rows.front());
            return;
        }
        std::vector<int> changed;
        std::set_symmetric_difference(rows.begin(), rows.end(), before.begin(), before.end(),
                                      std::back_inserter(changed));
        const WindowRef here(&m_list);
        for (const int row : changed)
            if (here)
                Afx::UserActs::Toggle(m_list, row);
    }
    void ShowTip(const wxPoint& place)
    {
        wxDataViewItem item;
        wxDataViewColumn* column = nullptr;
        m_view->HitTest(place, item, column);
        const wxString tip = item.IsOk() ? ToWx(m_list.GetTip(static_cast<int>(m_rows->GetRow(item)))) : wxString();
        if (tip == m_tip)
            return;
        m_tip = tip;
        if (tip.empty())
            m_view->GetMainWindow()->UnsetToolTip();
        else
            m_view->GetMainWindow()->SetToolTip(tip);
    }

    CListCtrl& m_list;
    wxDataViewCtrl* m_view;
    wxObjectDataPtr<Rows> m_rows;
    std::vector<std::pair<CString, int>> m_headings;
    wxString m_tip;
};

} // namespace

std::unique_ptr<NativePeer> MakeCombo(System& system, CWnd& model, wxWindow& parent)
{
    return std::make_unique<ComboPeer>(system, dynamic_cast<CComboBox&>(model), parent);
}

std::unique_ptr<NativePeer> MakeList(System& system, CWnd& model, wxWindow& parent)
{
    return std::make_unique<ListPeer>(system, dynamic_cast<CListCtrl&>(model), parent);
}

} // namespace AfxWx
