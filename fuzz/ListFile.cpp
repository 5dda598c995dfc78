#include "MorvUt/ui/lists/ListFile.h"

#include <string>

#include "Afx/text/Ascii.h"
#include "Afx/text/Utf8.h"
#include "fuzz/Targets.h"

namespace Fuzz
{
namespace
{

using Entries = std::vector<CString>;

/// The lines between other ends than they had.
std::string Written(const Entries& entries, const char* before, const char* after)
{
    std::string text;
    for (const CString& entry : entries)
        text += before + entry.Str() + after;
    return text;
}

void CheckDecoding(std::string_view bytes, const std::string& text)
{
    Require(Afx::IsUtf8(text), "what is read is UTF-8");
    if (Afx::IsUtf8(bytes))
        Require(text == bytes, "UTF-8 stays as it is");
    else
        Require(Afx::CountCharacters(text) == static_cast<int>(bytes.size()), "each other byte is one character");
}

} // namespace

void ListFile(std::string_view input)
{
    const std::string text = Afx::ToUtf8(input);
    CheckDecoding(input, text);
    const Entries entries = SplitList(text);
    std::string letters, ofText;
    for (const CString& entry : entries) {
        const std::string_view line = entry.View();
        Require(!line.empty() && !Afx::IsBlank(line.front()) && !Afx::IsBlank(line.back()), "entries are clean");
        Require(line.find('\n') == line.npos, "an entry is a line");
        letters += line;
    }
    for (std::string* of : {&letters, &(ofText = text)})
        std::erase_if(*of, &Afx::IsBlank);
    Require(letters == ofText, "nothing but blanks is lost, and the order stays");
    Require(SplitList(Written(entries, "", "\n")) == entries, "a list of entries is itself");
    Require(SplitList(Written(entries, " \t", " \r\n \n")) == entries, "blanks and blank lines change nothing");

    const std::size_t end = text.rfind('\n', text.size() / 2);
    if (end == text.npos)
        return;
    Entries parts = SplitList(std::string_view(text).substr(0, end));
    for (CString& entry : SplitList(std::string_view(text).substr(end)))
        parts.push_back(std::move(entry));
    Require(parts == entries, "lines know nothing of each other");
}

} // namespace Fuzz
