#include "Afx/text/CString.h"

#include <algorithm>
#include <cstring>
#include <ostream>

#include "Afx/text/TextFold.h"

namespace
{

constexpr char kBlanks[] = " \t\n\v\f\r";

std::string_view ViewOf(const char* text) noexcept { return text ? std::string_view(text) : std::string_view(); }

std::size_t Clamp(int count, std::size_t limit) noexcept
{
    return count <= 0 ? 0 : std::min(static_cast<std::size_t>(count), limit);
}

int Position(std::size_t found) noexcept { return found == std::string::npos ? -1 : static_cast<int>(found); }

} // namespace

char CString::GetAt(int index) const noexcept
{
    return index >= 0 && static_cast<std::size_t>(index) < m_text.size() ? m_text[static_cast<std::size_t>(index)]
                                                                         : '\0';
}

void CString::SetAt(int index, char c) noexcept
{
    if (index >= 0 && static_cast<std::size_t>(index) < m_text.size())
        m_text[static_cast<std::size_t>(index)] = c;
}

int CString::Compare(const char* other) const noexcept { return m_text.compare(ViewOf(other)); }
int CString::CompareNoCase(const char* other) const noexcept { return Afx::CompareNoCase(m_text, ViewOf(other)); }

CString CString::Left(int count) const { return CString(View().substr(0, Clamp(count, m_text.size()))); }
CString CString::Mid(int first) const { return CString(View().substr(Clamp(first, m_text.size()))); }
CString CString::Mid(int first, int count) const
{
    const std::size_t from = Clamp(first, m_text.size());
    return CString(View().substr(from, Clamp(count, m_text.size())));
}
CString CString::Right(int count) const { return CString(View().substr(m_text.size() - Clamp(count, m_text.size()))); }

CString CString::SpanIncluding(const char* set) const
{
    return CString(View().substr(0, std::min(m_text.find_first_not_of(ViewOf(set)), m_text.size())));
}

CString CString::Tokenize(const char* separators, int& start) const
{
    const std::string_view set = ViewOf(separators);
    const std::size_t first =
        start < 0 ? std::string::npos : m_text.find_first_not_of(set, Clamp(start, m_text.size()));
    if (first == std::string::npos) {
        start = -1;
        return {};
    }
    const std::size_t end = std::min(m_text.find_first_of(set, first), m_text.size());
    start = static_cast<int>(end) + 1;
    return CString(View().substr(first, end - first));
}

int CString::Find(const char* part, int start) const noexcept
{
    return Position(m_text.find(ViewOf(part), start < 0 ? 0 : static_cast<std::size_t>(start)));
}
int CString::Find(char c, int start) const noexcept
{
    return Position(m_text.find(c, start < 0 ? 0 : static_cast<std::size_t>(start)));
}
int CString::ReverseFind(char c) const noexcept { return Position(m_text.rfind(c)); }

int CString::Replace(const char* from, const char* to)
{
    const std::string_view old = ViewOf(from);
    std::size_t at = old.empty() ? std::string::npos : m_text.find(old);
    if (at == std::string::npos)
        return 0;
    std::string replaced;
    std::size_t copied = 0;
    int count = 0;
    for (; at != std::string::npos; at = m_text.find(old, copied), ++count) {
        replaced.append(m_text, copied, at - copied).append(ViewOf(to));
        copied = at + old.size();
    }
    replaced.append(m_text, copied);
    m_text = std::move(replaced);
    return count;
}

int CString::Replace(char from, char to) noexcept
{
    const auto count = std::count(m_text.begin(), m_text.end(), from);
    std::replace(m_text.begin(), m_text.end(), from, to);
    return static_cast<int>(count);
}

int CString::Remove(char c) { return static_cast<int>(std::erase(m_text, c)); }

int CString::Insert(int index, const char* text)
{
    const std::string inserted(ViewOf(text)); // copied: it may be a part of this text
    m_text.insert(Clamp(index, m_text.size()), inserted);
    return GetLength();
}
int CString::Insert(int index, char c)
{
    m_text.insert(Clamp(index, m_text.size()), 1, c);
    return GetLength();
}
int CString::Delete(int index, int count)
{
    m_text.erase(Clamp(index, m_text.size()), Clamp(count, m_text.size()));
    return GetLength();
}

CString& CString::Trim() { return Trim(kBlanks); }
CString& CString::TrimLeft() { return TrimLeft(kBlanks); }
CString& CString::TrimRight() { return TrimRight(kBlanks); }
CString& CString::Trim(const char* set) { return TrimRight(set).TrimLeft(set); }
CString& CString::TrimLeft(const char* set)
{
    m_text.erase(0, std::min(m_text.find_first_not_of(ViewOf(set)), m_text.size()));
    return *this;
}
CString& CString::TrimRight(const char* set)
{
    m_text.erase(m_text.find_last_not_of(ViewOf(set)) + 1); // nothing found: npos + 1 is 0
    return *this;
}
CString& CString::MakeUpper()
{
    m_text = Afx::FoldUpper(m_text);
    return *this;
}
CString& CString::MakeLower()
{
    m_text = Afx::FoldLower(m_text);
    return *this;
}

std::ostream& operator<<(std::ostream& out, const CString& text) { return out << text.View(); }
