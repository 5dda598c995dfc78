#pragma once

// Stories: what a user does and sees, as text that is run by Hands.
//
//     == A name, by which the test is called too
//     Open                                 a line of the fixture's own, with what is done in the window below it
//         Type Employer: Harbour Ropes Ltd
//         Press Tab Ctrl+End               keys one after the other
//         Write "12 "                      at the caret; \n, \t, \b, \\ are characters; a text in quotes may begin with
//                                      a space, and "12 "*200 is two hundred of it
//         Enter 30/6/2017 | 40 | 10        into cells, with Tab behind each
//         Choose Country: France           an item of a combo box, or the first row of a list that begins so
//         Answer No                        to the next message box that offers more than OK
//         Click Notes...
//         Message Please fill in: Pay      the next message is this one
//         Answer by default No             the button of the last message that Enter presses
//         Next                             what is done in the dialog that opens next: written before what opens it
//             Click OK
//         Focus Pay                        also: All selected, Enabled Pay, Disabled Pay, Gone Pay
//         Text Total: = 12...              of a field; "..." stands for any text
//         Shows 2 found.                   some text beside the fields
//         Rows Schedules                   of a list, a combo box or a grid, as they stand below; none: it is empty
//             Employment | Harbour Ropes Ltd
//         Count Schedules: 1
//         Clipboard a\tb                   put there by another program; Copied: what is there
//         Help desk.md#12                  the topic that was asked for last
//         The page has changed             as the program tells a sheet; also: Cannot be opened again
//
// A control is called as a screen reader calls it: by the label before it, or by its own text, which "..." may
// cut short; "Reminder (2)" is the second of that name, "#12" is called by its number. A line that begins with # is a
// comment.

#include <map>

#include "support/Hands.h"

namespace Test
{

/// Base of fixtures whose tests are stories, beside their class of GoogleTest. Constructors give lines of their own.
class Stories
{
public:
    struct Line
    {
        int number;
        std::string text;
        std::vector<Line> inside;
    };
    using Lines = std::vector<Line>;

    /// Runs a story of a file that is named as under tests/.
    void Play(const std::string& file, const std::string& name);

protected:
    Stories();
    /// What a line does that begins with these words: `act` is given nothing, the rest of it, or a name and the
    /// text behind its colon, and may answer a text, which must be what stands below the line.
    template<class Act>
    void On(const std::string& words, Act act)
    {
        m_verbs[words] = [act](const std::string& text, const Line& line) {
            const auto call = [&] {
                if constexpr (std::is_invocable_v<Act>)
                    return act();
                else if constexpr (std::is_invocable_v<Act, const std::string&>)
                    return act(text);
                else
                    return std::apply(act, NameAndText(text));
            };
            if constexpr (std::is_void_v<decltype(call())>)
                call(), Expect(Below(line), "");
            else
                Expect(Below(line), AsText(call()));
        };
    }
    /// A line that tells what there is, behind its words or behind a name and a colon: `ask` answers it, of the name.
    template<class Ask>
    void Is(const std::string& words, Ask ask)
    {
        m_verbs[words] = [ask](const std::string& text, const Line&) {
            if constexpr (std::is_invocable_v<Ask>)
                Expect(Meant(text), AsText(ask()));
            else {
                const auto [name, expected] = NameAndText(text);
                Expect(expected, AsText(ask(name)));
            }
        };
    }
    /// The same with what is done in a window below it: `act` is given that alone, or behind the rest of the line.
    template<class Act>
    void Around(const std::string& words, Act act)
    {
        m_verbs[words] = [this, act](const std::string& text, const Line& line) {
            if constexpr (std::is_invocable_v<Act, Acts>)
                act(ActsOf(line));
            else
                act(text, ActsOf(line));
        };
    }
    /// A line that opens a dialog of its own, with what is done in it below.
    template<class Dialog>
    void Opens(const std::string& words)
    {
        Around(words, [](Acts inside) {
            Dialog dialog;
            Work(dialog, std::move(inside));
        });
    }
    /// Those of the window that the story is in; throws outside of all.
    Hands& Here() const;
    CWnd& Control(const std::string& name) const;
    template<class Kind>
    Kind& Control(const std::string& name) const
    {
        return dynamic_cast<Kind&>(Control(name));
    }
    /// "NAME: text" in its parts, with the text that is meant.
    static std::pair<std::string, std::string> NameAndText(const std::string& text);
    /// What `Rows` shows.
    virtual std::vector<std::string> RowsOf(const CWnd& control) const;

private:
    void Run(const Lines& lines, Hands* hands);
    void Do(const Line& line);
    Acts ActsOf(const Line& line);
    template<class Value>
    static std::string AsText(const Value& value)
    {
        if constexpr (std::is_arithmetic_v<Value>)
            return std::to_string(value);
        else
            return CString(value).Str();
    }
    /// The text that is meant, which may stand in quotes, and so many times.
    static std::string Meant(const std::string& text);
    static std::string Below(const Line& line);
    static void Expect(const std::string& pattern, const std::string& found);

    std::map<std::string, std::function<void(const std::string& text, const Line& line)>> m_verbs;
    Hands* m_hands = nullptr;
    std::string m_file;
};

/// The stories of a file by their names.
const std::map<std::string, Stories::Lines>& StoriesIn(const std::string& file);

/// Makes each story of the file a test of the fixture: "Keeps its figures" is Keeps_its_figures.
template<class Fixture>
bool Tell(const char* suite, const std::string& file)
{
    struct Told : Fixture
    {
        Told(const std::string& file, const std::string& name) : m_file(file), m_name(name) {}
        void TestBody() override { this->Play(m_file, m_name); }
        std::string m_file, m_name;
    };
    for (const auto& [name, lines] : StoriesIn(file)) {
        const auto make = [file, story = name]() -> Fixture* { return new Told(file, story); };
        testing::RegisterTest(suite, name.c_str(), nullptr, nullptr, file.c_str(), 0, make);
    }
    return true;
}

#define STORIES(Fixture, file)                                                                                         \
    [[maybe_unused]] static const bool g_stories##Fixture = ::Test::Tell<Fixture>(#Fixture, file)

} // namespace Test
