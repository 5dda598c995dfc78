#include "Shellkit/NamedItems.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace
{

struct Item
{
    void* object;
    void (*destroyer)(void*);
    std::uint64_t age; // the greater, the younger

    void End() const
    {
        if (destroyer)
            destroyer(object);
    }
};

/// The mutex is held while a creator runs, and the creator's own calls pass it: an item is made once, and two threads
/// whose creators ask for each other's items cannot wait for one another. It is not held while a destroyer runs.
struct Store
{
    std::recursive_mutex mutex;
    std::map<std::string, Item, std::less<>> items;
    std::vector<std::string_view> inMaking; // keys whose creators are running
    std::uint64_t made = 0;
    std::atomic<unsigned> generation{0};

    /// Takes the item out; whoever holds it then ends it. Only while the mutex is held.
    Item Remove(std::map<std::string, Item, std::less<>>::iterator at)
    {
        const Item item = at->second;
        items.erase(at);
        generation.fetch_add(1, std::memory_order_release);
        return item;
    }
};

Store& TheStore()
{
    static Store& store = *new Store; // never destroyed: items may be asked for as long as the process lives
    return store;
}

std::string_view KeyText(const char* key) noexcept { return key ? std::string_view(key) : std::string_view(); }

/// Marks a key while its creator runs, also when that throws.
class MakingScope
{
public:
    MakingScope(Store& store, std::string_view key) : m_store(store) { m_store.inMaking.push_back(key); }
    ~MakingScope() { m_store.inMaking.pop_back(); }
    MakingScope(const MakingScope&) = delete;
    MakingScope& operator=(const MakingScope&) = delete;

private:
    Store& m_store;
};

std::optional<Item> TakeOut(std::string_view key)
{
    Store& store = TheStore();
    const std::lock_guard lock(store.mutex);
    const auto found = store.items.find(key);
    if (found == store.items.end())
        return std::nullopt;
    return store.Remove(found);
}

std::optional<Item> TakeOutYoungest()
{
    Store& store = TheStore();
    const std::lock_guard lock(store.mutex);
    const auto youngest = std::max_element(store.items.begin(), store.items.end(),
                                           [](const auto& a, const auto& b) { return a.second.age < b.second.age; });
    if (youngest == store.items.end())
        return std::nullopt;
    return store.Remove(youngest);
}

std::size_t ItemCount()
{
    Store& store = TheStore();
    const std::lock_guard lock(store.mutex);
    return store.items.size();
}

/// Flags have names of their own, so that putting one out can never end somebody's item.
std::string FlagKey(const char* key) { return "SHELLKIT::flag::" + std::string(KeyText(key)); }

char g_flagMark; // what a flag's item points to; its being there is the flag

} // namespace

void* GetGlobalDataItem(const char* key, void* (*creator)(), void (*destroyer)(void*))
{
    Store& store = TheStore();
    const std::lock_guard lock(store.mutex);
    const std::string_view name = KeyText(key);
    if (const auto found = store.items.find(name); found != store.items.end())
        return found->second.object;
    if (!creator || std::find(store.inMaking.begin(), store.inMaking.end(), name) != store.inMaking.end())
        return nullptr;
    std::string copy(name); // before the creator: the caller's text may be gone after it
    void* const object = [&] {
        const MakingScope making(store, copy);
        return creator();
    }();
    if (object)
        store.items.emplace(std::move(copy), Item{object, destroyer, ++store.made});
    return object;
}

bool GlobalItemExists(const char* key)
{
    Store& store = TheStore();
    const std::lock_guard lock(store.mutex);
    return store.items.find(KeyText(key)) != store.items.end();
}

bool DeleteGlobalItem(const char* key)
{
    const auto item = TakeOut(KeyText(key));
    if (item)
        item->End();
    return item.has_value();
}

namespace Shellkit
{

void Shutdown()
{
    constexpr std::size_t kLateItems = 1000; // made by destroyers; more than these never end
    for (std::size_t left = ItemCount() + kLateItems; left > 0; --left) {
        const auto item = TakeOutYoungest();
        if (!item)
            return;
        item->End();
    }
}

const std::atomic<unsigned>& GlobalItemGeneration() noexcept { return TheStore().generation; }

bool GetSharedFlag(const char* key) { return GlobalItemExists(FlagKey(key).c_str()); }

void SetSharedFlag(const char* key, bool on)
{
    const std::string flag = FlagKey(key);
    if (on)
        GetGlobalDataItem(
            flag.c_str(), []() -> void* { return &g_flagMark; }, nullptr);
    else
        DeleteGlobalItem(flag.c_str());
}

} // namespace Shellkit
