#include "SourceTexts.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <regex>
#include <sstream>

namespace
{

namespace fs = std::filesystem;

/// Cuts the string literals out of a C++ source.
class Literals
{
public:
    Literals(std::string name, std::string source) : m_name(std::move(name)), m_source(std::move(source)) {}

    std::vector<SourceText> Run()
    {
        while (m_at < m_source.size())
            Next();
        return std::move(m_texts);
    }

private:
    bool Starts(const char* text) const { return m_source.compare(m_at, std::string_view(text).size(), text) == 0; }
    void SkipTo(const char* end)
    {
        const std::size_t found = m_source.find(end, m_at + 2);
        m_at = found == std::string::npos ? m_source.size() : found;
    }

    void Next()
    {
        const char c = m_source[m_at];
        if (Starts("//")) {
            SkipTo("\n");
        } else if (Starts("/*")) {
            SkipTo("*/");
            m_at += 2;
        } else if (c == '\'' && (m_at == 0 || !std::isalnum(static_cast<unsigned char>(m_source[m_at - 1])))) {
            Quoted('\''); // between digits it is a separator
            m_follows = false;
        } else if (Starts("R\"(")) {
            m_at += 3;
            const std::size_t end = std::min(m_source.find(")\"", m_at), m_source.size());
            Add(m_source.substr(m_at, end - m_at));
            m_at = end + 2;
        } else if (c == '"') {
            Add(Quoted('"'));
        } else {
            m_follows = m_follows && std::isspace(static_cast<unsigned char>(c));
            ++m_at;
        }
    }

    std::string Quoted(char mark)
    {
        std::string text;
        for (++m_at; m_at < m_source.size() && m_source[m_at] != mark; ++m_at) {
            if (m_source[m_at] == '\\')
                text += m_source[++m_at] == 'n' ? '\n' : m_source[m_at];
            else
                text += m_source[m_at];
        }
        ++m_at;
        return text;
    }

    void Add(const std::string& text)
    {
        if (m_follows) {
            m_texts.back().text += text;
        } else {
            const auto line =
                1 + std::count(m_source.begin(), m_source.begin() + static_cast<std::ptrdiff_t>(m_at), '\n');
            m_texts.push_back({m_name + ":" + std::to_string(line), text});
        }
        m_follows = true;
    }

    std::string m_name, m_source;
    std::size_t m_at = 0;
    bool m_follows = false; // only blanks since the last literal
    std::vector<SourceText> m_texts;
};

bool HoldsSql(const std::string& text)
{
    static const std::regex words("\\b(SELECT|INSERT|UPDATE|DELETE|EXEC|CALL|CREATE|ALTER|DROP|PRAGMA|LOCK|SAVE|BEGIN|"
                                  "COMMIT|ROLLBACK|SAVEPOINT|RELEASE|FROM|WHERE|AND|OR|NOT|NULL|VALUES|ORDER|GROUP|"
                                  "HAVING|CASE|WHEN|ELSE|COALESCE|MAX|MIN|COUNT|SUM|TOP|LIMIT|DESC|JOIN|EXISTS|IN|IS|"
                                  "BETWEEN|LIKE|UNION|SET|TRANSACTION|NULLS|DEFAULT|COLLATE|IDENTITY)\\b");
    return std::regex_search(text, words);
}

} // namespace

std::vector<SourceText> SqlInSources(const std::string& root)
{
    std::vector<std::string> files;
    for (const char* const folder : {"components", "apps"})
        for (const auto& entry : fs::recursive_directory_iterator(fs::path(root) / folder)) {
            const fs::path kind = entry.path().extension();
            if (kind == ".cpp" || kind == ".h" || kind == ".def")
                files.push_back(fs::relative(entry.path(), root).generic_string());
        }
    std::sort(files.begin(), files.end());
    std::vector<SourceText> found;
    for (const std::string& file : files) {
        std::ostringstream source;
        source << std::ifstream(fs::path(root) / file).rdbuf();
        for (SourceText& text : Literals(file, source.str()).Run())
            if (HoldsSql(text.text))
                found.push_back(std::move(text));
    }
    return found;
}

bool IsWholeStatement(const std::string& text)
{
    static const std::regex verb("^(SELECT|INSERT|UPDATE|DELETE|EXEC)\\b[^]*[^ (,[]$");
    const auto opened = std::count(text.begin(), text.end(), '('), closed = std::count(text.begin(), text.end(), ')');
    static const std::regex verbOnly("^[A-Z]+$");
    return opened == closed && std::regex_match(text, verb) && !std::regex_match(text, verbOnly);
}
