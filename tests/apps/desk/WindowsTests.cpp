// What only real windows show of the desktop program.

#include <cstring>
#include <map>
#include <string>

#include "AfxWx/detail/Peer.h"
#include "AfxWx/RealHands.h"
#include "apps/desk/DeskTest.h"
#include "Lattice/Grid.h"

#include <gtk/gtk.h>

namespace
{

/// Counts how often a label is painted with a text that holds this.
class Paintings
{
public:
    Paintings(const CWnd& label, const char* text)
        : m_text(text), m_widget(AfxWx::PeerOf(&label)->Native()->GetHandle()),
          m_signal(g_signal_connect(m_widget, "draw", G_CALLBACK(Drawn), this))
    {}
    Paintings(const Paintings&) = delete;
    Paintings& operator=(const Paintings&) = delete;
    ~Paintings() { g_signal_handler_disconnect(m_widget, m_signal); }
    int count = 0;

private:
    static gboolean Drawn(GtkWidget* widget, cairo_t*, gpointer paintings)
    {
        auto& here = *static_cast<Paintings*>(paintings);
        here.count += std::strstr(gtk_label_get_text(GTK_LABEL(widget)), here.m_text) != nullptr;
        return FALSE;
    }

    const char* m_text;
    void* m_widget;
    gulong m_signal;
};

class DeskInWindows : public DeskTest
{
protected:
    DeskInWindows()
    {
        On("Preview shows how far it is while it runs", [this] {
            const Paintings done(Here().Control(IDC_ROLL_DONE),
                                 " of 464 done."); // another text stands there at the end
            const Paintings remaining(Here().Control(IDC_ROLL_REMAINING), "Estimated Time Remaining:");
            Here().Click(IDC_ROLL_PREVIEW);
            EXPECT_GT(done.count, 0);
            EXPECT_GT(remaining.count, 0);
        });
        On("Drag an edge of", [this](const std::string& list) { m_dragged[list] = Drag(Control(list)); });
        On("As wide as dragged:", [this](const std::string& list) {
            EXPECT_EQ(ModelWidth(Control(list)), m_dragged.at(list));
            EXPECT_EQ(::Test::ShownWidth(Control(list), kColumn), m_dragged.at(list));
        });
    }

private:
    static constexpr int kColumn = 1;

    static int ModelWidth(const CWnd& list)
    {
        if (const auto* const grid = dynamic_cast<const Lattice::CGrid*>(&list))
            return grid->GetColumn(kColumn)->width;
        return dynamic_cast<const CListCtrl&>(list).GetColumns()[kColumn].width;
    }
    /// There and back, the model following; the width that it has then.
    static int Drag(CWnd& list)
    {
        constexpr int kBy = 60;
        const int before = ::Test::ShownWidth(list, kColumn);
        ::Test::DragEdge(list, kColumn, 2 * kBy);
        EXPECT_NEAR(ModelWidth(list), before + 2 * kBy, 1);
        ::Test::DoubleClickEdge(list, kColumn);
        EXPECT_EQ(ModelWidth(list), ::Test::ShownWidth(list, kColumn));
        EXPECT_LT(ModelWidth(list), before + 2 * kBy) << "which no text needs";
        ::Test::DragEdge(list, kColumn, kBy);
        EXPECT_EQ(ModelWidth(list), ::Test::ShownWidth(list, kColumn));
        return ModelWidth(list);
    }

    std::map<std::string, int> m_dragged; // the width of each then
};

STORIES(DeskInWindows, "apps/desk/Windows.story");

} // namespace
