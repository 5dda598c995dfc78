#include "Afx/system/detail/IniText.h"

#include "Afx/text/TextFold.h"

namespace Afx::Detail
{
namespace
{

constexpr std::string_view kBlanks = " \t\r\v\f";
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

std::string_view Trim(std::string_view text) noexcept
{
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

/// Walks over the lines of a text; knows where each begins and ends, its line end included.
class Lines
{
public:
    explicit Lines(std::string_view text) noexcept : m_text(text), m_end(text.starts_with(kByteOrderMark) ? 3 : 0) {}

    bool Next() noexcept
    {
        m_begin = m_end;
        if (m_begin == m_text.size())
            return false;
        const std::size_t lineEnd = m_text.find('\n', m_begin);
        m_end = lineEnd == std::string_view::npos ? m_text.size() : lineEnd + 1;
        return true;
    }
    std::size_t Begin() const noexcept { return m_begin; }
    std::size_t End() const noexcept { return m_end; }
    /// The line without blanks and line end around it.
    std::string_view Text() const noexcept
    {
        std::string_view line = m_text.substr(m_begin, m_end - m_begin);
        if (line.ends_with('\n'))
            line.remove_suffix(1);
        return Trim(line);
    }

private:
    std::string_view m_text;
    std::size_t m_begin = 0, m_end;
};

std::optional<std::string_view> SectionOf(std::string_view line) noexcept
{
    if (line.size() < 2 || line.front() != '[' || line.back() != ']')
        return std::nullopt;
    return Trim(line.substr(1, line.size() - 2));
}

struct Entry
{
    std::string_view name, value;
};

std::optional<Entry> EntryOf(std::string_view line) noexcept
{
    const std::size_t equals = line.find('=');
    if (equals == std::string_view::npos || line.front() == ';' || line.front() == '#' || line.front() == '[')
        return std::nullopt;
    return Entry{Trim(line.substr(0, equals)), Trim(line.substr(equals + 1))};
}

struct Escape
{
    char character, letter;
};
constexpr Escape kEscapes[] = {{'\n', 'n'}, {'\r', 'r'}, {'"', '"'}, {'\\', '\\'}};

/// A value stands in quotes when it would not come back as it is without.
bool NeedsQuotes(std::string_view value) noexcept
{
    return Trim(value) != value || value.find_first_of("\n\r") != std::string_view::npos || value.starts_with('"');
}

std::string Quote(std::string_view value)
{
    if (!NeedsQuotes(value))
        return std::string(value);
    std::string quoted = "\"";
    for (const char c : value) {
        char written = c;
        for (const Escape& escape : kEscapes)
            if (escape.character == c) {
                quoted += '\\';
                written = escape.letter;
            }
        quoted += written;
    }
    return quoted + '"';
}

std::string Unquote(std::string_view value)
{
    if (value.size() < 2 || value.front() != '"' || value.back() != '"')
        return std::string(value);
    value = value.substr(1, value.size() - 2);
    std::string plain;
    for (std::size_t i = 0; i < value.size(); ++i) {
        char read = value[i];
        if (read == '\\' && i + 1 < value.size())
            for (const Escape& escape : kEscapes)
                if (escape.letter == value[i + 1]) {
                    read = escape.character;
                    ++i;
                    break;
                }
        plain += read;
    }
    return plain;
}

/// Where a value stands in a text, or would.
struct Place
{
    bool inSection = false; // the section exists
    bool found = false;
    std::size_t begin = 0, end = 0; // the entry's line; without one, where it would be inserted
    std::string_view value;
};

Place FindPlace(std::string_view text, std::string_view section, std::string_view name)
{
    Place place;
    bool inside = false;
    for (Lines lines(text); lines.Next();) {
        const std::string_view line = lines.Text();
        if (line.empty())
            continue;
        if (const auto header = SectionOf(line)) {
            inside = EqualNoCase(*header, section);
            if (inside && !place.inSection) {
                place.inSection = true;
                place.begin = place.end = lines.End();
            }
            continue;
        }
        if (!inside)
            continue;
        if (const auto entry = EntryOf(line); entry && EqualNoCase(entry->name, name))
            return {true, true, lines.Begin(), lines.End(), entry->value};
        place.begin = place.end = lines.End();
    }
    return place;
}

std::size_t LineBegin(std::string_view text, std::size_t at) noexcept
{
    const std::size_t before = text.substr(0, at).rfind('\n');
    if (before != std::string_view::npos)
        return before + 1;
    return text.starts_with(kByteOrderMark) ? kByteOrderMark.size() : 0;
}

/// The place of an entry that is removed, or of its whole section when nothing but blank lines would be left of it.
Place WithEmptySection(std::string_view text, Place entry)
{
    constexpr std::string_view kSpace = " \t\r\v\f\n";
    const auto isHeading = [&](std::size_t begin) {
        return SectionOf(Trim(text.substr(begin, text.find('\n', begin) - begin))).has_value();
    };
    const std::size_t heading = LineBegin(text, text.substr(0, entry.begin).find_last_not_of(kSpace));
    const std::size_t next = text.find_first_not_of(kSpace, entry.end);
    if (!isHeading(heading))
        return entry;
    if (next != std::string_view::npos) {
        const std::size_t nextLine = LineBegin(text, next);
        if (isHeading(nextLine)) {
            entry.begin = heading;
            entry.end = nextLine;
        }
        return entry;
    }
    const std::size_t first = LineBegin(text, 0);
    const std::size_t before = text.substr(first, heading - first).find_last_not_of(kSpace);
    entry.begin = before == std::string_view::npos ? first : text.find('\n', first + before) + 1;
    entry.end = text.size();
    return entry;
}

bool IsPlain(std::string_view text) noexcept
{
    return !text.empty() && Trim(text) == text &&
           text.find_first_of(std::string_view("\n\r\0", 3)) == std::string_view::npos;
}

} // namespace

bool IsIniSection(std::string_view section) noexcept { return IsPlain(section) && !section.ends_with(']'); }

bool IsIniName(std::string_view name) noexcept
{
    return IsPlain(name) && name.find('=') == std::string_view::npos && name.front() != ';' && name.front() != '#' &&
           name.front() != '[';
}

std::optional<std::string> FindIniValue(std::string_view text, std::string_view section, std::string_view name)
{
    const Place place = FindPlace(text, Trim(section), Trim(name));
    if (!place.found)
        return std::nullopt;
    return Unquote(place.value);
}

std::string SetIniValue(std::string_view text, std::string_view section, std::string_view name,
                        std::optional<std::string_view> value)
{
    Place place = FindPlace(text, section, name);
    if (!place.found && !value)
        return std::string(text);
    if (!value)
        place = WithEmptySection(text, place);
    const std::string_view lineEnd = text.find("\r\n") != std::string_view::npos ? "\r\n" : "\n";
    std::string line;
    if (value)
        line.append(name).append("=").append(Quote(*value)).append(lineEnd);
    std::string changed(text.substr(0, place.inSection ? place.begin : text.size()));
    if (!changed.empty() && changed != kByteOrderMark && changed.back() != '\n')
        changed += lineEnd;
    if (!place.inSection) {
        if (!changed.empty() && changed != kByteOrderMark)
            changed += lineEnd;
        changed.append("[").append(section).append("]").append(lineEnd);
    }
    changed += line;
    if (place.inSection)
        changed += text.substr(place.end);
    return changed;
}

} // namespace Afx::Detail
