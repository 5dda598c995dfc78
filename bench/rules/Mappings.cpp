// Code lookups: tables of three lengths with half of the keys missing, and every table with nearly all keys there.

#include <strings.h>

#include <algorithm>
#include <array>
#include <unordered_map>

#include "Afx/text/TextFold.h"
#include "MorvUt/mappings/TypeMappings.h"
#include "Subject.h"
#include "Values.h"

namespace Rules
{
namespace
{

char Lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; }

// For a map that ignores the case of ASCII letters.

struct HashNoCase
{
    std::size_t operator()(std::string_view key) const
    {
        std::size_t hash = 0;
        for (const char c : key)
            hash = hash * 31 + static_cast<unsigned char>(Lower(c));
        return hash;
    }
};

struct EqualNoCase
{
    bool operator()(std::string_view a, std::string_view b) const
    {
        return a.size() == b.size() && strncasecmp(a.data(), b.data(), a.size()) == 0;
    }
};

/// A table of ours, and the same rows as the peers hold them.
class Table
{
public:
    explicit Table(const TypeMapping* rows) : m_rows(rows), m_sorted(rows, rows + GetMapCount(rows))
    {
        for (const TypeMapping& row : m_sorted) { // the first of equal keys stays
            m_folded.emplace(Afx::FoldLower(row.shortName), row.index);
            m_hashed.emplace(row.shortName, row.index);
        }
        std::stable_sort(m_sorted.begin(), m_sorted.end(), [](const TypeMapping& a, const TypeMapping& b) {
            return strcasecmp(a.shortName, b.shortName) < 0;
        });
    }
    const TypeMapping* Rows() const { return m_rows; }
    std::size_t Count() const { return m_sorted.size(); }

    // The code of a key, -1 when it is missing.

    int Ours(const char* key) const
    {
        int index = -1;
        GetMapIndexFromShortName(m_rows, key, &index);
        return index;
    }
    int Scan(const char* key) const
    {
        for (const TypeMapping* row = m_rows; row->shortName; ++row)
            if (strcasecmp(row->shortName, key) == 0)
                return row->index;
        return -1;
    }
    int BinarySearch(const char* key) const
    {
        const auto at =
            std::lower_bound(m_sorted.begin(), m_sorted.end(), key, [](const TypeMapping& row, const char* wanted) {
                return strcasecmp(row.shortName, wanted) < 0;
            });
        return at != m_sorted.end() && strcasecmp(at->shortName, key) == 0 ? at->index : -1;
    }
    int Folded(const std::string& key) const
    {
        const auto found = m_folded.find(Afx::FoldLower(key));
        return found == m_folded.end() ? -1 : found->second;
    }
    int Hashed(const std::string& key) const
    {
        const auto found = m_hashed.find(key);
        return found == m_hashed.end() ? -1 : found->second;
    }

private:
    const TypeMapping* m_rows;
    std::vector<TypeMapping> m_sorted;
    std::unordered_map<std::string, int> m_folded;
    std::unordered_map<std::string, int, HashNoCase, EqualNoCase> m_hashed;
};

struct Question
{
    const Table* table;
    std::string key;
};

void Compare(const std::string& subject, std::vector<Question> questions)
{
    Subject(subject, std::move(questions), [](const Question& asked) { return asked.table->Ours(asked.key.c_str()); })
        .Against("strcasecmp scan", [](const Question& asked) { return asked.table->Scan(asked.key.c_str()); })
        .Against("sorted", [](const Question& asked) { return asked.table->BinarySearch(asked.key.c_str()); })
        .Against("unordered_map of folded keys", [](const Question& asked) { return asked.table->Folded(asked.key); })
        .Against("unordered_map, ASCII", [](const Question& asked) { return asked.table->Hashed(asked.key); })
        .Slower("ours reads the table as it stands, row by row; the peer has arranged it beforehand");
}

std::vector<Table> NamedTables()
{
    std::vector<Table> tables;
    for (const NamedMapping& mapping : GetNamedMappings())
        tables.emplace_back(mapping.table);
    return tables;
}

/// Every key of every table, as it stands and in small letters; every sixteenth is mistyped.
std::vector<Question> AllKeys(const std::vector<Table>& tables)
{
    std::vector<Question> questions;
    for (const Table& table : tables)
        for (const TypeMapping* row = table.Rows(); row->shortName; ++row) {
            const std::string key = row->shortName;
            questions.push_back({&table, key});
            questions.push_back({&table, Afx::FoldLower(key)});
            if (questions.size() % 16 == 0)
                questions.back().key += '?';
        }
    return questions;
}

/// Any key of the table; one character, anywhere in it, becomes another when it is to be missing.
std::string AnyKey(const Table& table, bool isMissing, Numbers& numbers)
{
    std::string key = table.Rows()[numbers.Below(static_cast<unsigned>(table.Count()))].shortName;
    while (isMissing && table.Hashed(key) != -1)
        key[numbers.Below(static_cast<unsigned>(key.size()))] = static_cast<char>('A' + numbers.Below(26));
    return key;
}

enum class Missing
{
    Half,
    All
};

std::vector<Question> AnyKeys(const Table& table, Missing missing)
{
    Numbers numbers(1947);
    std::vector<Question> questions;
    for (std::size_t i = 0; i < kCount; ++i) {
        const bool isMissing = missing == Missing::All || numbers.Below(2) == 0;
        questions.push_back({&table, AnyKey(table, isMissing, numbers)});
    }
    return questions;
}

/// A table of 104 rows, put together from the longest ones: none of ours has more than 47.
const TypeMapping* LongTable()
{
    static const auto table = [] {
        std::array<TypeMapping, 104 + 1> rows;
        auto at = rows.begin();
        for (const TypeMapping* from : {CGTGridRefs, mapScheduleNumbers, OtherOutRefs})
            for (; from->shortName && at != rows.end() - 1; ++from)
                *at++ = *from;
        *at = kEndOfTable;
        return rows;
    }();
    return table.data();
}

} // namespace

void RegisterMappings()
{
    static const std::vector<Table> all = NamedTables();
    Compare("code of a key, all tables", AllKeys(all));
    static const Table tables[] = {Table(propUK), Table(CGTGridRefs), Table(LongTable())};
    for (const Table& table : tables) {
        const std::string subject = "code of a key, " + std::to_string(table.Count()) + " rows, ";
        Compare(subject + "half missing", AnyKeys(table, Missing::Half));
        Compare(subject + "all missing", AnyKeys(table, Missing::All));
    }
}

} // namespace Rules
