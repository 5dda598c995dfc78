#include "Script.h"

#include <algorithm>
#include <sstream>
#include <stdexcept>

namespace OdbcFake
{
namespace
{

Message ToMessage(const std::string& rest)
{
    std::istringstream words(rest);
    Message message;
    words >> message.state >> message.native >> std::ws;
    std::getline(words, message.text);
    return message;
}

std::vector<Column> ToColumns(const std::string& rest)
{
    std::istringstream words(rest);
    std::vector<Column> columns;
    for (std::string word; words >> word;) {
        const std::size_t colon = word.find(':');
        columns.push_back({word.substr(0, colon), colon == std::string::npos ? "nvarchar" : word.substr(colon + 1)});
    }
    return columns;
}

std::vector<Cell> ToRow(const std::string& rest)
{
    std::vector<Cell> row;
    std::istringstream cells(rest);
    for (std::string cell; std::getline(cells, cell, '|');)
        row.push_back(cell == "null" ? Cell() : Cell(cell));
    return row;
}

/// '*' in the pattern is any text.
bool Fits(std::string_view pattern, std::string_view text) noexcept
{
    if (pattern.empty())
        return text.empty();
    if (pattern.front() != '*')
        return !text.empty() && pattern.front() == text.front() && Fits(pattern.substr(1), text.substr(1));
    for (std::size_t skipped = 0; skipped <= text.size(); ++skipped)
        if (Fits(pattern.substr(1), text.substr(skipped)))
            return true;
    return false;
}

} // namespace

void Script::Read(std::istream& lines)
{
    for (std::string line; std::getline(lines, line);) {
        std::istringstream words(line);
        std::string word, rest;
        if (!(words >> word) || word.front() == '#')
            continue;
        words >> std::ws;
        std::getline(words, rest);
        ReadLine(word, rest);
    }
}

void Script::ReadLine(const std::string& word, const std::string& rest)
{
    if (word == "dbms") {
        m_dbms = rest;
        return;
    }
    if (word == "on") {
        m_answers.emplace_back().pattern = rest;
        return;
    }
    if (m_answers.empty())
        throw std::runtime_error("the script begins with no answer: " + word);
    Answer& answer = m_answers.back();
    if (word == "columns")
        answer.columns = ToColumns(rest);
    else if (word == "row")
        answer.rows.push_back(ToRow(rest));
    else if (word == "count")
        answer.count = std::stol(rest);
    else if (word == "error")
        answer.error = ToMessage(rest);
    else if (word == "info")
        answer.info = ToMessage(rest);
    else if (word == "later")
        answer.isLater = true;
    else if (word == "ends")
        answer.endsTransaction = true;
    else if (word == "nototal")
        answer.hidesLength = true;
    else if (word == "times")
        answer.times = std::stol(rest);
    else
        throw std::runtime_error("the script has an unknown line: " + word);
}

const Answer* Script::Find(std::string_view text)
{
    const auto found = std::find_if(m_answers.begin(), m_answers.end(),
                                    [&](const Answer& each) { return each.times != 0 && Fits(each.pattern, text); });
    if (found == m_answers.end())
        return nullptr;
    found->times -= found->times > 0 ? 1 : 0;
    return &*found;
}

} // namespace OdbcFake
