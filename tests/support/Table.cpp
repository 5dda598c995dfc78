#include "support/Table.h"

#include <fstream>
#include <list>
#include <map>

#include <gtest/gtest.h>

#include "support/TestSupport.h"

namespace Test
{

std::string Unescaped(const std::string& text)
{
    static const std::string kLetters = "nrtb\\", kMeant = "\n\r\t\b\\";
    std::string plain;
    for (std::size_t i = 0; i < text.size(); ++i)
        if (text[i] != '\\')
            plain += text[i];
        else if (text.at(++i) == 'x') {
            plain += static_cast<char>(std::stoi(text.substr(i + 1, 2), nullptr, 16));
            i += 2;
        } else
            plain += kMeant.at(kLetters.find(text[i]));
    return plain;
}

std::string FileText(const std::string& file) { return ReadFile(MORVUT_TESTS + file); }

namespace
{

using Fields = std::vector<const char*>;

/// The texts of a line, which are kept.
Fields FieldsIn(const std::string& line)
{
    static std::list<std::string> texts;
    Fields fields;
    for (std::size_t start = 0, end = 0; end != line.npos; start = end + 1) {
        end = line.find('\t', start);
        fields.push_back(texts.emplace_back(Unescaped(line.substr(start, end - start))).c_str());
    }
    return fields;
}

std::map<std::string, std::vector<Fields>> TablesOf(const std::string& file)
{
    std::map<std::string, std::vector<Fields>> tables;
    std::ifstream lines(MORVUT_TESTS + file);
    std::vector<Fields>* rows = nullptr;
    for (std::string line; std::getline(lines, line);)
        if (line.starts_with('[') && line.ends_with(']'))
            rows = &tables[line.substr(1, line.size() - 2)];
        else if (rows && !line.empty() && line[0] != '#')
            rows->push_back(FieldsIn(line));
    return tables;
}

} // namespace

const std::vector<Fields>& FieldsOf(const std::string& file)
{
    static std::map<std::string, std::map<std::string, std::vector<Fields>>> files;
    if (!files.contains(file))
        files.emplace(file, TablesOf(file));
    const testing::TestInfo& test = *testing::UnitTest::GetInstance()->current_test_info();
    const std::string suite = test.test_suite_name(), name = test.name(); // "Values/Suite", "Name/0"
    const std::string table = suite.substr(suite.find('/') + 1) + '.' + name.substr(0, name.find('/'));
    const std::vector<Fields>& rows = files[file][table];
    if (rows.empty())
        throw std::invalid_argument("no table [" + table + "] in " + file);
    return rows;
}

} // namespace Test
