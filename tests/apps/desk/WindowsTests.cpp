// What only real windows show of the desktop program.

#include <algorithm>
#include <string>
#include <vector>

#include "AfxWx/detail/Peer.h"
#include "AfxWx/RealHands.h"
#include "apps/desk/DeskTest.h"
#include "Lattice/Grid.h"
#include "layouts/Sheets.h"

#include <gtk/gtk.h>

namespace
{

class DeskInWindows : public DeskTest
{
protected:
    /// A new schedule with interest, on the page of its payments.
    void RunPayments(Script script)
    {
        RunIn("C0002", [=](Hands& hands) {
            hands.Pick(IDC_RETURN_KIND, "Interest");
            InNext([=](Hands& sheet) {
                sheet.Type(IDC_INTEREST_NAME, "Saltmarsh Savings");
                sheet.Press(VK_TAB, Afx::kControl); // to the payments
                script(sheet);
                sheet.Click(IDCANCEL);
            });
            hands.Click(IDC_RETURN_NEW);
        });
    }
    static int ModelWidth(const CWnd& list, int column)
    {
        if (const auto* const grid = dynamic_cast<const Lattice::CGrid*>(&list))
            return grid->GetColumn(column)->width;
        return dynamic_cast<const CListCtrl&>(list).GetColumns()[static_cast<std::size_t>(column)].width;
    }
    /// Drags an edge there and back, the model following; the width that it has then.
    static int Drag(CWnd& list)
    {
        constexpr int kColumn = 1, kBy = 60;
        const int before = ::Test::ShownWidth(list, kColumn);
        ::Test::DragEdge(list, kColumn, 2 * kBy);
        EXPECT_NEAR(ModelWidth(list, kColumn), before + 2 * kBy, 1);
        ::Test::DoubleClickEdge(list, kColumn);
        EXPECT_EQ(ModelWidth(list, kColumn), ::Test::ShownWidth(list, kColumn));
        EXPECT_LT(ModelWidth(list, kColumn), before + 2 * kBy) << "which no text needs";
        ::Test::DragEdge(list, kColumn, kBy);
        EXPECT_EQ(ModelWidth(list, kColumn), ::Test::ShownWidth(list, kColumn));
        return ModelWidth(list, kColumn);
    }
    static void ExpectRemembered(const CWnd& list, int width)
    {
        EXPECT_EQ(ModelWidth(list, 1), width);
        EXPECT_EQ(::Test::ShownWidth(list, 1), width);
    }
};

/// The texts that a label has been painted with, in the order in which they came first.
class PaintedTexts
{
public:
    explicit PaintedTexts(const CWnd& label)
        : m_widget(static_cast<GtkWidget*>(AfxWx::PeerOf(&label)->Native()->GetHandle())),
          m_signal(g_signal_connect(m_widget, "draw", G_CALLBACK(Drawn), &m_texts))
    {}
    PaintedTexts(const PaintedTexts&) = delete;
    PaintedTexts& operator=(const PaintedTexts&) = delete;
    ~PaintedTexts() { g_signal_handler_disconnect(m_widget, m_signal); }
    long CountWith(const char* part) const
    {
        return std::count_if(m_texts.begin(), m_texts.end(),
                             [part](const std::string& text) { return text.find(part) != std::string::npos; });
    }

private:
    static gboolean Drawn(GtkWidget* widget, cairo_t*, gpointer texts)
    {
        auto& all = *static_cast<std::vector<std::string>*>(texts);
        if (const std::string text = gtk_label_get_text(GTK_LABEL(widget)); all.empty() || all.back() != text)
            all.push_back(text);
        return FALSE;
    }

    GtkWidget* m_widget;
    std::vector<std::string> m_texts;
    gulong m_signal;
};

} // namespace

TEST_F(DeskInWindows, RollForwardShowsHowFarItIsWhileItRuns)
{
    Run([](Hands& hands) {
        ::Test::AddClients(450);
        hands.Pick(IDC_CLIENTS_YEAR, kYear);
        InNext([](Hands& roll) {
            const PaintedTexts done(roll.Control(IDC_ROLL_DONE)), remaining(roll.Control(IDC_ROLL_REMAINING));
            roll.Click(IDC_ROLL_PREVIEW);
            EXPECT_GT(done.CountWith(" of 464 done."), 0) << "which is another text at the end";
            EXPECT_GT(remaining.CountWith("Estimated Time Remaining:"), 0);
            roll.Click(IDCANCEL);
        });
        hands.Click(IDC_CLIENTS_ROLL);
    });
}

TEST_F(DeskInWindows, ColumnThatWasDraggedIsAsWideAtTheNextOpening)
{
    int list = 0, grid = 0;
    Run([&](Hands& hands) { list = Drag(hands.Control(IDC_CLIENTS_LIST)); });
    RunPayments([&](Hands& hands) { grid = Drag(hands.Control(IDC_PAYMENTS_GRID)); });
    Run([&](Hands& hands) { ExpectRemembered(hands.Control(IDC_CLIENTS_LIST), list); });
    RunPayments([&](Hands& hands) { ExpectRemembered(hands.Control(IDC_PAYMENTS_GRID), grid); });
}
