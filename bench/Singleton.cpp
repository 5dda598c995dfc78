// Same-key access of a process-wide singleton against a function-local static with a compare.

#include "MorvUt/MorvUt.h"
#include "MorvUt/StartUp.h"
#include "Ratios.h"

namespace
{

// What a module that keeps the year for itself would write.
struct LocalYear
{
    short key = 0;
    short year = 0;
};

[[gnu::noinline]] short YearOfLocalStatic(short key)
{
    static LocalYear held{key, 2024};
    if (held.key != key)
        held = {key, 2024};
    return held.year;
}

void Ours(benchmark::State& state)
{
    SetCurrentTaxYear(33);
    for (auto _ : state)
        benchmark::DoNotOptimize(GetCurrentRealTaxYear());
}

void LocalStatic(benchmark::State& state)
{
    short key = 1;
    for (auto _ : state) {
        benchmark::DoNotOptimize(key);
        benchmark::DoNotOptimize(YearOfLocalStatic(key));
    }
}

} // namespace

int main(int argc, char** argv)
{
    benchmark::RegisterBenchmark("same-key access/ours", Ours);
    benchmark::RegisterBenchmark("same-key access/function-local static", LocalStatic);
    const int result = Bench::RunAll(
        argc, argv,
        {{"same-key access",
          "every module asks whether the one store of the process still holds the instance that it remembers; a static "
          "variable of one module need not"}});
    MorvUtShutDown();
    return result;
}
