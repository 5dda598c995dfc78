// Same-key access of process-wide singletons against function-local statics with a compare.

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

struct LocalClient
{
    long id = 0;
    int isPartnership = 0;
    short year = 0;
    int dormant = 0;
};

[[gnu::noinline]] const LocalClient& DataOfLocalStatic(long id, int isPartnership, short year)
{
    static LocalClient held{id, isPartnership, year, 0};
    if (held.id != id || held.isPartnership != isPartnership || held.year != year)
        held = {id, isPartnership, year, 0};
    return held;
}

[[gnu::noinline]] const CClientSingletonData& DataOfOurs(long id, int isPartnership, short year)
{
    return CClientSingleton::Data(id, isPartnership, year);
}

/// Of one client and year, as a screen asks again and again. Nobody is held, so that no practice is needed.
template<auto dataOf>
void Client(benchmark::State& state)
{
    long id = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(id);
        benchmark::DoNotOptimize(dataOf(id, 0, 0).dormant);
    }
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

constexpr char kWhy[] =
    "the instance stands where the one store of the process keeps it; a static variable of one module "
    "stands in that module";

} // namespace

int main(int argc, char** argv)
{
    benchmark::RegisterBenchmark("same-key access of the current year/ours", Ours);
    benchmark::RegisterBenchmark("same-key access of the current year/function-local static", LocalStatic);
    benchmark::RegisterBenchmark("same-key access of a client/ours", Client<&DataOfOurs>);
    benchmark::RegisterBenchmark("same-key access of a client/function-local static", Client<&DataOfLocalStatic>);
    const int result = Bench::RunAll(
        argc, argv, {{"same-key access of the current year", kWhy}, {"same-key access of a client", kWhy}});
    MorvUtShutDown();
    return result;
}
