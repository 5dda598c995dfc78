#include "Script.h"

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

/// \n and \xNN are bytes.
std::string Unescaped(std::string_view text)
{
    std::string bytes;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const std::string_view rest = text.substr(i);
        if (rest.starts_with("\\n")) {
            bytes += '\n';
            ++i;
        } else if (rest.starts_with("\\x") && rest.size() >= 4) {
            bytes += static_cast<char>(std::stoi(std::string(rest.substr(2, 2)), nullptr, 16));
            i += 3;
        } else {
            bytes += text[i];
        }
    }
    return bytes;
}

std::vector<Cell> ToRow(const std::string& rest)
{
    std::vector<Cell> row;
    std::istringstream cells(rest);
    for (std::string cell; std::getline(cells, cell, '|');)
        row.push_back(cell == "null" ? Cell() : Cell(Unescaped(cell)));
    return row;
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
    else if (word == "skip")
        answer.skip = std::stol(rest);
    else if (word == "delay")
        answer.milliseconds = std::stoi(rest);
    else
        throw std::runtime_error("the script has an unknown line: " + word);
}

const Answer* Script::Find(std::string_view text)
{
    for (Answer& answer : m_answers) {
        if (answer.times == 0 || !Fits(answer.pattern, text))
            continue;
        if (answer.skip > 0) {
            --answer.skip;
            continue;
        }
        if (answer.times > 0)
            --answer.times;
        return &answer;
    }
    return nullptr;
}

bool Fits(std::string_view pattern, std::string_view text) noexcept
{
    std::size_t at = 0, in = 0, star = std::string_view::npos,
                behind = 0; // the last '*', and what it stands for so far
    while (in < text.size()) {
        if (at < pattern.size() && pattern[at] == '*') {
            star = at++;
            behind = in;
        } else if (at < pattern.size() && pattern[at] == text[in]) {
            ++at;
            ++in;
        } else if (star != std::string_view::npos) {
            at = star + 1;
            in = ++behind;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of('*', at) == std::string_view::npos;
}

} // namespace OdbcFake
