#pragma once

// Narrow text in UTF-8 with the members that MFC developers expect.

#include <compare>
#include <concepts>
#include <initializer_list>
#include <iosfwd>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "Afx/Export.h"
#include "Afx/text/FormatText.h"

/// Text in UTF-8. Lengths and positions count bytes. Texts of up to 15 bytes need no memory of their own.
class AFX_API CString
{
public:
    CString() noexcept = default;
    CString(const char* text) : m_text(text ? text : "") {} // null gives the empty text
    /// The first `length` bytes of `text`, which has at least that many; none for null or a negative length.
    CString(const char* text, int length)
        : m_text(text && length > 0 ? std::string_view(text, static_cast<std::size_t>(length)) : "")
    {}
    CString(std::string_view text) : m_text(text) {}
    CString(const std::string& text) : m_text(text) {}
    CString(std::string&& text) noexcept : m_text(std::move(text)) {}
    explicit CString(char c, int repeat = 1) : m_text(repeat > 0 ? static_cast<std::size_t>(repeat) : 0, c) {}
    CString& operator=(const char* text)
    {
        m_text = text ? text : "";
        return *this;
    }

    const char* GetString() const noexcept { return m_text.c_str(); }
    operator const char*() const noexcept { return m_text.c_str(); }
    std::string_view View() const noexcept { return m_text; }
    const std::string& Str() const noexcept { return m_text; }

    int GetLength() const noexcept { return static_cast<int>(m_text.size()); }
    bool IsEmpty() const noexcept { return m_text.empty(); }
    void Empty() noexcept { m_text.clear(); }
    /// The byte at `index`; 0 outside the text.
    char GetAt(int index) const noexcept;
    void SetAt(int index, char c) noexcept; // nothing outside the text
    template<std::integral I>
    char operator[](I index) const noexcept
    {
        return GetAt(static_cast<int>(index));
    }

    /// Replaces the text by `format` filled with `args` (see Afx::FormatString, Afx::AppendFormat).
    template<class... Args>
    void Format(Afx::FormatString<std::type_identity_t<Args>...> format, const Args&... args)
    {
        std::string text; // built apart: an argument may be this very text
        Afx::AppendFormat(text, format.View(), Args_t<sizeof...(Args)>{args...}.items, sizeof...(Args));
        m_text = std::move(text);
    }
    template<class... Args>
    void AppendFormat(Afx::FormatString<std::type_identity_t<Args>...> format, const Args&... args)
    {
        std::string text;
        Afx::AppendFormat(text, format.View(), Args_t<sizeof...(Args)>{args...}.items, sizeof...(Args));
        m_text += text;
    }
    /// The string resource `id` of the current resource context; false and unchanged when there is none.
    bool LoadString(unsigned id);
    /// The string resource `id` with %1, %2 ... replaced by `texts` in order.
    void FormatMessage(unsigned id, std::initializer_list<std::string_view> texts);

    /// Less than, equal to or greater than 0, as the bytes compare.
    int Compare(const char* other) const noexcept;
    /// The same after folding case (ASCII, Latin-1, Latin Extended-A).
    int CompareNoCase(const char* other) const noexcept;

    CString Left(int count) const;
    CString Mid(int first) const;
    CString Mid(int first, int count) const;
    CString Right(int count) const;
    /// The longest start of the text that holds only characters of `set`.
    CString SpanIncluding(const char* set) const;
    /// The next piece between characters of `separators`, from `start` on, which moves behind it; `start` becomes -1
    /// at the end.
    CString Tokenize(const char* separators, int& start) const;

    int Find(const char* part, int start = 0) const noexcept; // -1: not found
    int Find(char c, int start = 0) const noexcept;
    int ReverseFind(char c) const noexcept;
    /// Each returns the number of places (Replace, Remove) or the new length (Insert, Delete).
    int Replace(const char* from, const char* to);
    int Replace(char from, char to) noexcept;
    int Remove(char c);
    int Insert(int index, const char* text);
    int Insert(int index, char c);
    int Delete(int index, int count = 1);
    CString& Trim(); // white space
    CString& TrimLeft();
    CString& TrimRight();
    CString& Trim(const char* set); // the bytes of `set`; null or empty: nothing
    CString& TrimLeft(const char* set);
    CString& TrimRight(const char* set);
    CString& Trim(char c) { return Trim(CString(c)); }
    CString& TrimLeft(char c) { return TrimLeft(CString(c)); }
    CString& TrimRight(char c) { return TrimRight(CString(c)); }
    CString& MakeUpper();
    CString& MakeLower();

    CString& operator+=(std::string_view text)
    {
        m_text += text;
        return *this;
    }
    CString& operator+=(const char* text)
    {
        if (text)
            m_text += text;
        return *this;
    }
    CString& operator+=(const std::string& text)
    {
        m_text += text;
        return *this;
    }
    CString& operator+=(const CString& text)
    {
        m_text += text.m_text;
        return *this;
    }
    CString& operator+=(char c)
    {
        m_text += c;
        return *this;
    }
    friend CString operator+(const CString& a, const CString& b) { return CString(a.m_text + b.m_text); }
    friend CString operator+(const CString& a, const char* b) { return CString(a.m_text + (b ? b : "")); }
    friend CString operator+(const char* a, const CString& b) { return CString((a ? a : "") + b.m_text); }
    friend CString operator+(const CString& a, char b) { return CString(a.m_text + b); }

    // As Compare; a null pointer is the empty text.
    friend bool operator==(const CString& a, const CString& b) noexcept { return a.m_text == b.m_text; }
    friend bool operator==(const CString& a, const char* b) noexcept { return a.m_text == (b ? b : ""); }
    friend std::strong_ordering operator<=>(const CString& a, const CString& b) noexcept
    {
        return a.m_text.compare(b.m_text) <=> 0;
    }
    friend std::strong_ordering operator<=>(const CString& a, const char* b) noexcept { return a.Compare(b) <=> 0; }
    friend AFX_API std::ostream& operator<<(std::ostream& out, const CString& text);

private:
    template<std::size_t N>
    struct Args_t
    {
        Afx::FormatArg items[N ? N : 1];
    };

    std::string m_text;
};

inline Afx::FormatArg::FormatArg(const CString& value) noexcept : m_kind(Kind::Text), m_text(value.View()) {}
