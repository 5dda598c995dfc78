#include <array>

#include "MorvUt/mappings/TypeMappings.h"
#include "MorvUt/mappings/UnnamedTables.h"

const TypeMapping* const ppAllMappings[] = {
#define NAMED(table) table,
#define UNNAMED(table) Mappings::table,
#define OUTSIDE(table)
#include "MorvUt/mappings/tables.def"
    nullptr,
};

namespace
{

constexpr int kToNumber = 0;

constexpr NamedMapping kTables[] = {
#define NAMED(table) {#table, kToNumber, table},
#define UNNAMED(table) {"", kToNumber, Mappings::table},
#define OUTSIDE(table) {#table, kOutsideMappings, table},
#include "MorvUt/mappings/tables.def"
};

constexpr auto kNumbered = [] {
    std::array<NamedMapping, std::size(kTables)> numbered{};
    int position = 0;
    for (std::size_t i = 0; i < numbered.size(); ++i) {
        numbered[i] = kTables[i];
        if (numbered[i].position != kOutsideMappings)
            numbered[i].position = position++;
    }
    return numbered;
}();

static_assert(std::size(ppAllMappings) == 101 + 1);
static_assert(kNumbered.size() == 101 + 3 && kNumbered[100].position == 100);

} // namespace

std::span<const NamedMapping> GetNamedMappings() noexcept { return kNumbered; }
