// What only real windows show of the desktop program.

#include <map>
#include <string>

#include "AfxWx/detail/Peer.h"
#include "AfxWx/RealHands.h"
#include "apps/desk/DeskTest.h"
#include "Lattice/Grid.h"

#include <gtk/gtk.h>

namespace
{

class DeskInWindows : public DeskTest
{
protected:
    DeskInWindows()
    {
        On("Preview shows how far it is while it runs", [this] {
            for (const unsigned id : {IDC_ROLL_DONE, IDC_ROLL_REMAINING})
                g_signal_connect(AfxWx::PeerOf(&Here().Control(id))->Native()->GetHandle(), "draw", G_CALLBACK(Painted),
                                 &m_painted);
            Here().Click(IDC_ROLL_PREVIEW);
            EXPECT_NE(m_painted.find(" of 2014 done."), std::string::npos); // another text stands there at the end
            EXPECT_NE(m_painted.find("Estimated Time Remaining:"), std::string::npos);
        });
        On("Drag an edge of", [this](const std::string& list) { m_dragged[list] = Drag(Control(list)); });
        On("As wide as dragged:", [this](const std::string& list) {
            EXPECT_EQ(ModelWidth(Control(list)), m_dragged.at(list));
            EXPECT_EQ(::Test::ShownWidth(Control(list), kColumn), m_dragged.at(list));
        });
    }

private:
    static constexpr int kColumn = 1;

    static gboolean Painted(GtkWidget* label, cairo_t*, gpointer texts)
    {
        *static_cast<std::string*>(texts) += gtk_label_get_text(GTK_LABEL(label));
        return FALSE;
    }

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

    std::string m_painted;                // what labels have shown
    std::map<std::string, int> m_dragged; // the width of each then
};

STORIES(DeskInWindows, "apps/desk/Windows.story");

} // namespace
