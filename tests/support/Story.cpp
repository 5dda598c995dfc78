#include "support/Story.h"

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <sstream>

#include "Afx/windows/Edit.h"
#include "Afx/windows/ListCtrl.h"
#include "Afx/windows/PropertySheet.h"
#include "Afx/windows/Static.h"
#include "support/Table.h"

namespace Test
{
namespace
{

const std::map<std::string, unsigned> kKeys = {
    {"Tab", VK_TAB},   {"Enter", VK_RETURN}, {"Escape", VK_ESCAPE}, {"PageDown", VK_NEXT}, {"End", VK_END},
    {"Home", VK_HOME}, {"Left", VK_LEFT},    {"Up", VK_UP},         {"Right", VK_RIGHT},   {"Down", VK_DOWN},
    {"F1", VK_F1},     {"F2", VK_F2},        {"F4", VK_F4},         {"Delete", VK_DELETE}, {".", VK_OEM_PERIOD}};
constexpr std::pair<std::string_view, unsigned> kHeld[] = {
    {"Ctrl+", Afx::kControl}, {"Alt+", Afx::kAlt}, {"Shift+", Afx::kShift}};
const std::map<std::string, int> kButtons = {{"OK", IDOK}, {"Cancel", IDCANCEL}, {"Yes", IDYES}, {"No", IDNO}};

void PressKeys(Hands& hands, const std::string& keys)
{
    std::istringstream each(keys);
    for (std::string key; each >> key;) {
        unsigned modifiers = 0;
        for (const auto& [prefix, modifier] : kHeld)
            if (key.starts_with(prefix)) {
                key.erase(0, prefix.size());
                modifiers |= modifier;
            }
        const bool isLetter = key.size() == 1 && !kKeys.contains(key);
        hands.Press(isLetter ? static_cast<unsigned>(key[0]) : kKeys.at(key), modifiers);
    }
}

/// Whether the text is the pattern, in which "..." stands for any text.
bool Fits(std::string_view text, std::string_view pattern)
{
    const std::size_t any = pattern.find("...");
    if (any == pattern.npos || !text.starts_with(pattern.substr(0, any)))
        return text == pattern;
    for (std::size_t at = any; at <= text.size(); ++at)
        if (Fits(text.substr(at), pattern.substr(any + 3)))
            return true;
    return false;
}

/// The lines from `at` on that stand further right than `indent`.
Stories::Lines Block(const Stories::Lines& all, std::size_t& at, std::size_t indent)
{
    Stories::Lines block;
    while (at < all.size()) {
        const std::size_t here = all[at].text.find_first_not_of(' ');
        if (here <= indent && indent != std::string::npos)
            break;
        Stories::Line& line = block.emplace_back(all[at++]);
        line.text.erase(0, here);
        line.inside = Block(all, at, here);
    }
    return block;
}

} // namespace

const std::map<std::string, Stories::Lines>& StoriesIn(const std::string& file)
{
    static std::map<std::string, std::map<std::string, Stories::Lines>> files;
    auto& stories = files[file];
    if (!stories.empty())
        return stories;
    std::ifstream lines(MORVUT_TESTS + file);
    Stories::Lines* story = nullptr;
    int number = 0;
    for (std::string line; std::getline(lines, line);) {
        ++number;
        const std::size_t start = line.find_first_not_of(' ');
        if (line.starts_with("== "))
            story = &stories[ReplacedAll(line.substr(3), " ", "_")];
        else if (story && start != line.npos && line[start] != '#')
            story->push_back({number, line, {}});
    }
    for (auto& [name, told] : stories) {
        std::size_t at = 0;
        told = Block(told, at, std::string::npos);
    }
    if (stories.empty())
        throw std::invalid_argument("no stories in " + file);
    return stories;
}

Stories::Stories()
{
    On("Click", [this](const std::string& text) {
        if (kButtons.contains(text)) // which a window may have without showing it
            Here().Click(static_cast<unsigned>(kButtons.at(text)));
        else
            TheTouch().Click(Control(text));
    });
    On("Press", [this](const std::string& text) { PressKeys(Here(), text); });
    On("Enter", [this](std::string text) {
        text += " | ";
        for (std::size_t end; (end = text.find(" | ")) != text.npos; text.erase(0, end + 3)) {
            Here().Write(text.substr(0, end));
            Here().Press(VK_TAB);
        }
    });
    On("Write", [this](const std::string& text) { Here().Write(Meant(text)); });
    On("Answer", [this](const std::string& text) { Here().Answer(kButtons.at(text)); });
    Is("Message", [this] { return Here().TakeMessage(); });
    Is("Answer by default", [] { return Windows().Messages().back().style & MB_DEFBUTTON2 ? "No" : "Yes"; });
    On("All selected", [] {
        const auto* const edit = dynamic_cast<const CEdit*>(CWnd::GetFocus());
        ASSERT_NE(edit, nullptr);
        EXPECT_EQ(edit->GetSelectedText(), edit->Text());
    });
    On("Focus", [this](const std::string& text) {
        const CWnd* const focus = CWnd::GetFocus();
        EXPECT_EQ(focus, &Control(text)) << (focus ? focus->GetAccessibleName() : "nothing");
    });
    On("Enabled", [this](const std::string& text) { EXPECT_TRUE(Control(text).IsWindowEnabled()); });
    On("Disabled", [this](const std::string& text) { EXPECT_FALSE(Control(text).IsWindowEnabled()); });
    On("Gone", [this](const std::string& text) { EXPECT_THROW(Control(text), std::logic_error); });
    On("Rows", [this](const std::string& text) {
        std::string all;
        for (const std::string& row : RowsOf(Control(text)))
            all += row + '\n';
        return all;
    });
    On("Clipboard", [](const std::string& text) { Afx::WindowSystem::Current()->SetClipboard(Meant(text)); });
    Is("Copied", [] { return Afx::WindowSystem::Current()->GetClipboard(); });
    Is("Help", [] { return Windows().Helped().empty() ? "" : Windows().Helped().back(); });
    On("Shows", [this](const std::string& text) {
        std::string all;
        const CWnd* const found = Here().Find([&](const CWnd& window) {
            const bool isStatic = dynamic_cast<const CStatic*>(&window) != nullptr;
            all += isStatic ? window.Text().Str() + '\n' : "";
            return isStatic && Fits(window.Text().Str(), Meant(text));
        });
        EXPECT_NE(found, nullptr) << all;
    });
    On("Type", [this](const std::string& name, const std::string& text) { TheTouch().Type(Control(name), text); });
    Is("Text", [this](const std::string& name) { return Control(name).Text(); });
    Is("Count", [this](const std::string& name) { return RowsOf(Control(name)).size(); });
    On("Choose", [this](const std::string& name, const std::string& text) {
        const std::vector<std::string> rows = RowsOf(Control(name));
        auto row = std::find(rows.begin(), rows.end(), text);
        if (row == rows.end())
            row = std::find_if(rows.begin(), rows.end(), [&](const auto& each) { return Fits(each, text + "..."); });
        EXPECT_NE(row, rows.end());
        TheTouch().Choose(Control(name), static_cast<int>(row - rows.begin()));
    });
    On("The page has changed",
       [this] { dynamic_cast<CPropertySheet&>(Here().Window()).GetActivePage()->SetModified(); });
    On("Cannot be opened again", [this] { EXPECT_EQ(dynamic_cast<CDialog&>(Here().Window()).DoModal(), -1); });
    Around("Next", InNext);
}

void Stories::Play(const std::string& file, const std::string& name)
{
    m_file = MORVUT_TESTS + file;
    const auto& stories = StoriesIn(file);
    ASSERT_TRUE(stories.contains(name)) << "no story " << name << " in " << file;
    Run(stories.at(name), nullptr);
}

Hands& Stories::Here() const
{
    if (!m_hands)
        throw std::logic_error("in no window");
    return *m_hands;
}

CWnd& Stories::Control(const std::string& called) const
{
    std::string name = called, all;
    int which = 1;
    if (const std::size_t at = called.rfind(" ("); at != called.npos && std::sscanf(&called[at], " (%d)", &which) == 1)
        name.erase(at);
    CWnd* const found = Here().Find([&](const CWnd& window) {
        const bool isControl = !dynamic_cast<const CStatic*>(&window) && !dynamic_cast<const CDialog*>(&window);
        const std::string own =
            name.starts_with('#') ? '#' + std::to_string(window.GetDlgCtrlID()) : window.GetAccessibleName().Str();
        all += isControl ? ", " + own : "";
        return isControl && Fits(own, name) && --which == 0;
    });
    if (!found)
        throw std::logic_error("no control is called " + called + all);
    return *found;
}

std::string Stories::Meant(const std::string& text)
{
    const std::size_t end = text.rfind('"');
    if (!text.starts_with('"') || end == 0)
        return Unescaped(text);
    const std::string once = Unescaped(text.substr(1, end - 1));
    std::string all;
    for (int times = end + 2 < text.size() ? std::stoi(text.substr(end + 2)) : 1; times > 0; --times)
        all += once;
    return all;
}

std::pair<std::string, std::string> Stories::NameAndText(const std::string& text)
{
    const std::size_t colon = std::min(text.find(": "), text.ends_with(':') ? text.size() - 1 : text.npos);
    if (colon == text.npos)
        throw std::invalid_argument("no colon behind the name");
    return {text.substr(0, colon), Meant(text.substr(std::min(colon + 2, text.size())))};
}

std::vector<std::string> Stories::RowsOf(const CWnd& control) const
{
    std::vector<std::string> rows;
    if (const auto* const combo = dynamic_cast<const CComboBox*>(&control)) {
        CString item;
        for (int i = 0; combo->GetLBText(i, item); ++i)
            rows.push_back(item.Str());
        return rows;
    }
    const auto& list = dynamic_cast<const CListCtrl&>(control);
    for (int row = 0; row < list.GetItemCount(); ++row) {
        std::string text;
        for (int column = 0; column < static_cast<int>(list.GetColumns().size()); ++column)
            text += (column == 0 ? "" : " | ") + list.GetItemText(row, column).Str();
        rows.push_back(text.substr(0, text.find_last_not_of(' ') + 1));
    }
    return rows;
}

std::string Stories::Below(const Line& line)
{
    std::string below;
    for (const Line& each : line.inside)
        below += (below.empty() ? "" : "\n") + each.text;
    return below;
}

void Stories::Expect(const std::string& pattern, const std::string& found)
{
    const std::string text = found.ends_with('\n') ? found.substr(0, found.size() - 1) : found;
    if (!Fits(text, pattern))
        ADD_FAILURE() << "expected:\n" << pattern << "\nfound:\n" << text;
}

Acts Stories::ActsOf(const Line& line)
{
    return [this, &line](Hands& hands) { Run(line.inside, &hands); };
}

void Stories::Run(const Lines& lines, Hands* hands)
{
    Hands* const outer = std::exchange(m_hands, hands);
    for (const Line& line : lines) {
        const testing::ScopedTrace trace(m_file.c_str(), line.number, line.text);
        try {
            Do(line);
        } catch (const std::exception& exception) {
            ADD_FAILURE() << exception.what();
            break;
        }
    }
    m_hands = outer;
}

void Stories::Do(const Line& line)
{
    for (auto verb = m_verbs.rbegin(); verb != m_verbs.rend(); ++verb) // the longest one first
        if (const auto& [words, act] = *verb; line.text == words || line.text.starts_with(words + ' '))
            return act(line.text.substr(std::min(words.size() + 1, line.text.size())), line);
    throw std::invalid_argument("no such line");
}

} // namespace Test
