// A sheet of twelve pages, opened without a display, against plain structs of what each window is.

#include <array>
#include <vector>

#include "Afx/windows/DataExchange.h"
#include "MorvUt/ui/sheets/TXPropertyPage.h"
#include "MorvUt/ui/sheets/TXPropertySheet.h"
#include "ui/Ui.h"

namespace Ui
{
namespace
{

using Afx::ControlKind;

constexpr int kPages = 12, kFields = 9, kOwnWindows = 5; // the sheet, its tabs, OK, Cancel, Apply
constexpr unsigned kFirstField = 201, kTick = 301;
constexpr auto kPageRows = [] {
    std::array<Afx::LayoutRow, 2 * kFields + 1> rows{};
    auto row = rows.begin();
    for (int i = 0; i < kFields; ++i) {
        *row++ = {ControlKind::Label, 0, "&Amount received:", i, 0};
        *row++ = {ControlKind::Field, kFirstField + static_cast<unsigned>(i), "", i, 1};
    }
    *row = {ControlKind::CheckBox, kTick, "Taxed before it was &paid", kFields, 1};
    return rows;
}();
constexpr Afx::DialogLayout kPage{"Income", kPageRows.data(), kPageRows.size()};
constexpr char kText[] = "1,234.56";

class CIncomePage : public TXPropertyPage
{
public:
    CIncomePage() : TXPropertyPage(kPage) { m_texts.fill(kText); }

protected:
    void DoDataExchange(CDataExchange* exchange) override
    {
        auto id = static_cast<int>(kFirstField);
        for (CString& text : m_texts)
            DDX_Text(exchange, id++, text);
    }

private:
    std::array<CString, kFields> m_texts;
};

int CountWindows(const CWnd& window)
{
    int count = 1;
    for (const CWnd* const child : window.Children())
        count += CountWindows(*child);
    return count;
}

/// How many windows there are while it is open, its first page filled and shown.
int OpenSheet()
{
    TXPropertySheet sheet("Income");
    std::array<CIncomePage, kPages> pages;
    for (CIncomePage& page : pages)
        sheet.AddPage(&page);
    int count = 0;
    RunHeadless(sheet, [&] { count = CountWindows(sheet); });
    return count;
}

struct PlainWindow
{
    unsigned id;
    std::string text;
    CRect place;
    bool isShown = true, isEnabled = true;
    std::vector<std::unique_ptr<PlainWindow>> inside;
};

/// The same in two columns, one line below the other.
int OpenPlainSheet()
{
    constexpr int kGap = 7, kLine = 14, kLeft[] = {kGap, 90}, kWidth[] = {76, 120};
    PlainWindow sheet{0, "Income", {}, true, true, {}};
    int count = 1;
    const auto add = [&count](PlainWindow& around, unsigned id, const char* text, const CRect& place) -> PlainWindow& {
        ++count;
        around.inside.push_back(std::make_unique<PlainWindow>(PlainWindow{id, text, place, true, true, {}}));
        return *around.inside.back();
    };
    for (int i = 0; i < kPages; ++i) {
        PlainWindow& page = add(sheet, 0, kPage.title, {});
        for (const Afx::LayoutRow& row : kPageRows) {
            const int left = kLeft[row.column], top = kGap + row.row * (kLine + kGap);
            add(page, row.id, i == 0 && row.kind == ControlKind::Field ? kText : row.text,
                {left, top, left + kWidth[row.column], top + kLine});
        }
        page.isShown = i == 0;
    }
    for (const char* const text : {"", "OK", "Cancel", "&Apply"})
        add(sheet, 0, text, {});
    return count;
}

} // namespace

void RegisterSheet(Bench::Reasons& reasons)
{
    constexpr int kWindows = kOwnWindows + kPages * (1 + static_cast<int>(kPageRows.size()));
    const std::string subject = "sheet of 12 pages opened";
    const auto add = [&](const char* entry, int (*open)()) {
        Require(open() == kWindows, "a sheet has another number of windows");
        Register(subject + entry, [open](benchmark::State& state) {
            for (auto _ : state)
                benchmark::DoNotOptimize(open());
        });
    };
    add("/ours", OpenSheet);
    add("/structs", OpenPlainSheet);
    reasons[subject] =
        "ours are windows of a class for each kind, with a parent, an owner and a place in the tab order, "
        "measured and placed by what stands in them, and ended one by one; the peer's are texts in places "
        "that are known";
}

} // namespace Ui
