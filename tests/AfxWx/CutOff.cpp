#include "AfxWx/CutOff.h"

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/combobox.h>
#include <wx/dataview.h>
#include <wx/display.h>
#include <wx/grid.h>
#include <wx/notebook.h>
#include <wx/radiobut.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>
#include <wx/tokenzr.h>
#include <wx/toplevel.h>

#include <algorithm>

#include "Afx/windows/Dialog.h"
#include "AfxWx/detail/Peer.h"

#include <gtk/gtk.h>

namespace
{

constexpr int kFrame = 2; // pixels above a line of a field, and below it

using Lines = std::vector<std::string>;

GtkWidget* WidgetOf(const wxWindow& window) { return static_cast<GtkWidget*>(window.GetHandle()); }

/// What the widget needs by itself, without the size that was asked for it.
wxSize NeedOf(GtkWidget* widget)
{
    int askedWidth = 0, askedHeight = 0;
    gtk_widget_get_size_request(widget, &askedWidth, &askedHeight);
    gtk_widget_set_size_request(widget, -1, -1);
    GtkRequisition need{};
    gtk_widget_get_preferred_size(widget, nullptr, &need);
    gtk_widget_set_size_request(widget, askedWidth, askedHeight);
    return {need.width, need.height};
}

wxSize RoomOf(GtkWidget* widget)
{
    return {gtk_widget_get_allocated_width(widget), gtk_widget_get_allocated_height(widget)};
}

wxSize NeedOfText(const wxStaticText& text)
{
    wxSize need;
    wxStringTokenizer lines(text.GetLabelText(), "\n", wxTOKEN_RET_EMPTY_ALL);
    while (lines.HasMoreTokens()) {
        const wxSize line = text.GetTextExtent(lines.GetNextToken());
        need = {std::max(need.x, line.x), need.y + std::max(line.y, 1)};
    }
    return need;
}

/// Collects what is cut off in one dialog.
class Search
{
public:
    explicit Search(const std::string& title) : m_title(title) {}
    void Look(const CWnd& window)
    {
        const AfxWx::NativePeer* const peer = AfxWx::PeerOf(&window);
        if (!peer || !peer->Native()->IsShownOnScreen())
            return;
        m_now = std::to_string(window.GetDlgCtrlID());
        const wxWindow& native = *peer->Native();
        LookAtText(native, window.Text().Str());
        if (const auto* const grid = dynamic_cast<const wxGrid*>(&native))
            LookAtHeadings(*grid);
        else if (const auto* const list = dynamic_cast<const wxDataViewCtrl*>(&native))
            LookAtHeadings(*list);
        else if (const auto* const tabs = dynamic_cast<const wxNotebook*>(&native))
            LookAtTabs(*tabs);
        if (!native.IsTopLevel())
            LookAtPlace(native, window.Text().Str());
        if (dynamic_cast<const wxGrid*>(&native)) // its editor stands over a cell
            return;
        for (const CWnd* const child : window.Children())
            Look(*child);
    }
    void LookAtScreen(const wxWindow& top)
    {
        const wxRect screen = wxDisplay(&top).GetGeometry();
        Expect("the window, of the screen", top.GetSize(), screen.GetSize());
    }
    Lines found;

private:
    void Expect(const std::string& text, const wxSize& need, const wxSize& room)
    {
        if (need.x <= room.x && need.y <= room.y)
            return;
        const auto in = [](const wxSize& size) { return std::to_string(size.x) + " x " + std::to_string(size.y); };
        found.push_back(m_title + ", control " + m_now + ", \"" + text + "\": needs " + in(need) + ", has " + in(room));
    }
    void LookAtText(const wxWindow& native, const std::string& text)
    {
        if (const auto* const label = dynamic_cast<const wxStaticText*>(&native))
            Expect(text, NeedOfText(*label), label->GetSize());
        else if (dynamic_cast<const wxButton*>(&native) || dynamic_cast<const wxCheckBox*>(&native) ||
                 dynamic_cast<const wxRadioButton*>(&native))
            Expect(text, NeedOf(WidgetOf(native)), RoomOf(WidgetOf(native)));
        else if (const auto* const field = dynamic_cast<const wxTextCtrl*>(&native))
            Expect(text, {0, field->GetCharHeight() + 2 * kFrame}, RoomOf(WidgetOf(native)));
        else if (dynamic_cast<const wxComboBox*>(&native))
            Expect(text, {0, native.GetCharHeight() + 2 * kFrame}, RoomOf(WidgetOf(native)));
    }
    void LookAtHeadings(const wxGrid& grid)
    {
        const wxFont font = grid.GetLabelFont();
        const auto look = [&](const wxString& text, const wxSize& room) {
            int width = 0, height = 0;
            grid.GetTextExtent(text, &width, &height, nullptr, nullptr, &font);
            if (!text.empty() && room.x > 0) // row headings that say no more than the first column are not shown
                Expect(AfxWx::FromWx(text), {width, height}, room);
        };
        for (int i = 0; i < grid.GetNumberCols(); ++i)
            look(grid.GetColLabelValue(i), {grid.GetColSize(i), grid.GetColLabelSize()});
        for (int i = 0; i < std::min(grid.GetNumberRows(), 20); ++i)
            look(grid.GetRowLabelValue(i), {grid.GetRowLabelSize(), grid.GetRowSize(i)});
    }
    void LookAtHeadings(const wxDataViewCtrl& list)
    {
        for (unsigned i = 0; i < list.GetColumnCount(); ++i) {
            GtkWidget* const button =
                gtk_tree_view_column_get_button(GTK_TREE_VIEW_COLUMN(list.GetColumn(i)->GetGtkHandle()));
            Expect(AfxWx::FromWx(list.GetColumn(i)->GetTitle()), NeedOf(button), RoomOf(button));
        }
    }
    void LookAtTabs(const wxNotebook& tabs)
    {
        auto* const book = GTK_NOTEBOOK(WidgetOf(tabs));
        for (int i = 0; i < gtk_notebook_get_n_pages(book); ++i) {
            GtkWidget* const tab = gtk_notebook_get_tab_label(book, gtk_notebook_get_nth_page(book, i));
            Expect(AfxWx::FromWx(tabs.GetPageText(static_cast<std::size_t>(i))), NeedOf(tab), RoomOf(tab));
        }
    }
    /// Inside what is around it, and covered by nothing beside it.
    void LookAtPlace(const wxWindow& native, const std::string& text)
    {
        const wxWindow& around = *native.GetParent();
        const wxRect place = native.GetRect();
        Expect(text + ", inside what is around it", {place.GetRight() + 1, place.GetBottom() + 1},
               around.GetClientSize());
        for (const wxWindow* const other : around.GetChildren())
            if (other != &native && other->IsShown() && !other->IsTopLevel() && other->GetRect().Intersects(place))
                found.push_back(m_title + ", control " + m_now + ", \"" + text + "\" and \"" +
                                AfxWx::FromWx(other->GetLabel()) + "\" cover each other");
    }

    std::string m_title, m_now;
};

} // namespace

std::vector<std::string> Test::CutOff(const CDialog& dialog)
{
    Search search(dialog.Text().Str());
    search.Look(dialog);
    if (const AfxWx::NativePeer* const peer = AfxWx::PeerOf(&dialog); peer && peer->Native()->IsTopLevel())
        search.LookAtScreen(*peer->Native());
    return search.found;
}
