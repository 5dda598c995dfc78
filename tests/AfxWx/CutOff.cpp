#include "AfxWx/CutOff.h"

#include <wx/display.h>
#include <wx/grid.h>

#include <algorithm>

#include "Afx/windows/Dialog.h"
#include "AfxWx/detail/Peer.h"

#include <gtk/gtk.h>

namespace
{

using Test::ShownIn;

wxRect PlaceIn(GtkWidget* around, GtkWidget* widget)
{
    wxRect place{0, 0, gtk_widget_get_allocated_width(widget), gtk_widget_get_allocated_height(widget)};
    gtk_widget_translate_coordinates(widget, around, 0, 0, &place.x, &place.y);
    return place;
}

/// All of a text; of what is typed or chosen a line.
wxSize NeedOf(GtkWidget* widget)
{
    constexpr int kFrame = 2; // pixels above the line, and below it
    wxSize need;
    if (GTK_IS_LABEL(widget)) {
        pango_layout_get_pixel_size(gtk_label_get_layout(GTK_LABEL(widget)), &need.x, &need.y);
    } else if (GTK_IS_ENTRY(widget) || GTK_IS_TEXT_VIEW(widget) || GTK_IS_COMBO_BOX(widget)) {
        PangoLayout* const line = gtk_widget_create_pango_layout(widget, nullptr);
        pango_layout_get_pixel_size(line, nullptr, &need.y);
        g_object_unref(line);
        need.y += 2 * kFrame;
    }
    return need;
}

/// As it is called to a screen reader, or what stands in it is.
std::string NameOf(GtkWidget* widget)
{
    const char* const name = atk_object_get_name(gtk_widget_get_accessible(widget));
    const std::vector<GtkWidget*> inside = ShownIn(widget);
    if (name && *name)
        return std::string(1, '"') + name + '"';
    return inside.empty() ? G_OBJECT_TYPE_NAME(widget) : NameOf(inside.front());
}

/// Collects what is cut off in one window.
class Search
{
public:
    explicit Search(const wxWindow& window)
    {
        Expect("the window, of the screen", window.GetSize(), wxDisplay(&window).GetGeometry().GetSize());
        Look(static_cast<GtkWidget*>(window.GetHandle()));
        LookAtGrids(window);
    }
    std::vector<std::string> found;

private:
    void Expect(const std::string& what, const wxSize& need, const wxSize& room)
    {
        const auto in = [](const wxSize& size) { return std::to_string(size.x) + " x " + std::to_string(size.y); };
        if (need.x > room.x || need.y > room.y)
            found.push_back(what + ": needs " + in(need) + ", has " + in(room));
    }
    void Look(GtkWidget* widget)
    {
        const wxRect here = PlaceIn(widget, widget);
        Expect(NameOf(widget), NeedOf(widget), here.GetSize());
        std::vector<GtkWidget*> before;
        for (GtkWidget* const inner : ShownIn(widget)) {
            if (GTK_IS_SCROLLED_WINDOW(widget) && GTK_IS_FIXED(inner))
                continue; // a grid's cells, over which an editor stands
            const wxRect place = PlaceIn(widget, inner);
            if (!here.Contains(place) && !GTK_IS_TREE_VIEW(widget)) // which scrolls its headings
                found.push_back(NameOf(inner) + ": is not inside what is around it");
            for (GtkWidget* const other : before)
                if (GTK_IS_FIXED(widget) && place.Intersects(PlaceIn(widget, other)))
                    found.push_back(NameOf(inner) + ": covers " + NameOf(other));
            before.push_back(inner);
            Look(inner);
        }
    }
    void LookAtGrids(const wxWindow& window)
    {
        if (const auto* const grid = dynamic_cast<const wxGrid*>(&window))
            LookAtHeadings(*grid);
        for (const wxWindow* const child : window.GetChildren())
            LookAtGrids(*child);
    }
    /// Which are no widgets.
    void LookAtHeadings(const wxGrid& grid)
    {
        const wxFont font = grid.GetLabelFont();
        const auto look = [&](const wxString& text, const wxSize& room) {
            wxSize need;
            grid.GetTextExtent(text, &need.x, &need.y, nullptr, nullptr, &font);
            if (room.x > 0) // row headings that say no more than the first column are not shown
                Expect('"' + AfxWx::FromWx(text) + '"', need, room);
        };
        for (int i = 0; i < grid.GetNumberCols(); ++i)
            look(grid.GetColLabelValue(i), {grid.GetColSize(i), grid.GetColLabelSize()});
        for (int i = 0; i < std::min(grid.GetNumberRows(), 20); ++i)
            look(grid.GetRowLabelValue(i), {grid.GetRowLabelSize(), grid.GetRowSize(i)});
    }
};

} // namespace

std::vector<GtkWidget*> Test::ShownIn(GtkWidget* widget)
{
    const auto add = [](GtkWidget* inner, gpointer shown) {
        if (gtk_widget_get_visible(inner) && (gtk_widget_get_child_visible(inner) || GTK_IS_BOX(inner)))
            static_cast<std::vector<GtkWidget*>*>(shown)->push_back(inner);
    };
    std::vector<GtkWidget*> shown;
    if (GTK_IS_CONTAINER(widget))
        gtk_container_forall(GTK_CONTAINER(widget), add, &shown);
    return shown;
}

std::vector<std::string> Test::CutOff(const CDialog& dialog)
{
    const AfxWx::NativePeer* const peer = AfxWx::PeerOf(&dialog);
    return peer && peer->Native()->IsShownOnScreen() ? Search(*peer->Native()).found : std::vector<std::string>();
}
