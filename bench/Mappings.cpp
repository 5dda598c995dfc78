// Every key of every code table looked up once, against what a module would write itself.

#include <strings.h>

#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "Afx/TextFold.h"
#include "MorvUt/mappings/TypeMappings.h"
#include "MorvUt/StartUp.h"
#include "Ratios.h"

namespace
{

struct Question
{
    const TypeMapping* table;
    std::string key;
};

std::vector<Question> EveryKey()
{
    std::vector<Question> questions;
    for (const NamedMapping& mapping : GetNamedMappings())
        for (const TypeMapping* row = mapping.table; row->shortName; ++row)
            questions.push_back({mapping.table, Afx::FoldLower(row->shortName)});
    return questions;
}

template<class Look>
void AskAll(benchmark::State& state, Look look)
{
    const auto questions = EveryKey();
    for (auto _ : state)
        for (const Question& question : questions)
            benchmark::DoNotOptimize(look(question));
}

void Ours(benchmark::State& state)
{
    AskAll(state, [](const Question& question) {
        int index = -1;
        GetMapIndexFromShortName(question.table, question.key.c_str(), &index);
        return index;
    });
}

void ScanWithStrcasecmp(benchmark::State& state)
{
    AskAll(state, [](const Question& question) {
        for (const TypeMapping* row = question.table; row->shortName; ++row)
            if (strcasecmp(row->shortName, question.key.c_str()) == 0)
                return row->index;
        return -1;
    });
}

void HashOfFoldedKeys(benchmark::State& state)
{
    using Map = std::unordered_map<std::string, int>;
    std::unordered_map<const TypeMapping*, Map> maps;
    std::vector<std::pair<const Map*, std::string>> questions;
    for (const Question& question : EveryKey()) {
        Map& map = maps[question.table];
        questions.emplace_back(&map, question.key);
        int index = -1;
        GetMapIndexFromShortName(question.table, question.key.c_str(), &index);
        map.emplace(question.key, index);
    }
    for (auto _ : state)
        for (const auto& [map, key] : questions)
            benchmark::DoNotOptimize(map->find(Afx::FoldLower(key))->second);
}

} // namespace

int main(int argc, char** argv)
{
    benchmark::RegisterBenchmark("key to code/ours", Ours);
    benchmark::RegisterBenchmark("key to code/scan with strcasecmp", ScanWithStrcasecmp);
    benchmark::RegisterBenchmark("key to code/hash map of folded keys", HashOfFoldedKeys);
    const int result = Bench::RunAll(argc, argv);
    MorvUtShutDown();
    return result;
}
