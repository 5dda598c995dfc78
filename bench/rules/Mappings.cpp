// Every key of every code table, as it stands and in small letters, and for every sixteenth one that is not there.

#include <strings.h>

#include <unordered_map>

#include "Afx/text/TextFold.h"
#include "MorvUt/mappings/TypeMappings.h"
#include "Subject.h"
#include "Values.h"

namespace Rules
{
namespace
{

using Map = std::unordered_map<std::string, int>;

struct Question
{
    const TypeMapping* table;
    const Map* map; // the same table by folded keys
    std::string key;
};

const Map* MapOf(const TypeMapping* table)
{
    static std::unordered_map<const TypeMapping*, Map> maps;
    const auto [at, isNew] = maps.try_emplace(table);
    for (const TypeMapping* row = table; isNew && row->shortName; ++row)
        at->second.emplace(Afx::FoldLower(row->shortName), row->index); // the first of equal keys stays
    return &at->second;
}

std::vector<Question> Questions()
{
    std::vector<Question> questions;
    for (const NamedMapping& mapping : GetNamedMappings())
        for (const TypeMapping* row = mapping.table; row->shortName; ++row) {
            const std::string key = row->shortName;
            questions.push_back({mapping.table, MapOf(mapping.table), key});
            questions.push_back({mapping.table, MapOf(mapping.table), Afx::FoldLower(key)});
            if (questions.size() % 16 == 0)
                questions.back().key += '?';
        }
    return questions;
}

} // namespace

void RegisterMappings()
{
    Subject("code of a key", Questions(),
            [](const Question& question) {
                int index = -1;
                GetMapIndexFromShortName(question.table, question.key.c_str(), &index);
                return index;
            })
        .Against("linear scan by strcasecmp",
                 [](const Question& question) {
                     for (const TypeMapping* row = question.table; row->shortName; ++row)
                         if (strcasecmp(row->shortName, question.key.c_str()) == 0)
                             return row->index;
                     return -1;
                 })
        .Against("unordered_map of folded keys", [](const Question& question) {
            const auto found = question.map->find(Afx::FoldLower(question.key));
            return found == question.map->end() ? -1 : found->second;
        });
}

} // namespace Rules
