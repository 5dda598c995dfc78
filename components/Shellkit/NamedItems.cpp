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

/// Where an item stands. Once made, the place of a key is there for as long as the process lives.
struct Place
{
    std::atomic<void*> object{nullptr}; // null: there is no item
    void (*destroyer)(void*) = nullptr;
    std::uint64_t age = 0; // the greater, the younger
};

/// An item that was taken out of the store: whoever holds it ends it.
struct Item
{
    void* object;
    void (*destroyer)(void*);

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
    std::map<std::string, Place, std::less<>> places;
    std::vector<std::string_view> inMaking; // keys whose creators are running
    std::uint64_t made = 0;
};

Store& TheStore()
{
    static Store& store = *new Store; // never destroyed: items may be asked for as long as the process lives
    return store;
}

std::string_view KeyText(const char* key) noexcept { return key ? std::string_view(key) : std::string_view(); }

// These need the mutex.

Place* Find(Store& store, std::string_view key) noexcept
{
    const auto found = store.places.find(key);
    return found != store.places.end() && found->second.object ? &found->second : nullptr;
}

Place& PlaceOf(Store& store, std::string_view key)
{
    const auto found = store.places.find(key);
    return found != store.places.end() ? found->second : store.places.try_emplace(std::string(key)).first->second;
}

Item TakeOut(Place& place) noexcept { return {place.object.exchange(nullptr), place.destroyer}; }

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

std::optional<Item> TakeOutYoungest()
{
    Store& store = TheStore();
    const std::lock_guard lock(store.mutex);
    Place* youngest = nullptr;
    for (auto& [key, place] : store.places)
        if (place.object && (!youngest || place.age > youngest->age))
            youngest = &place;
    return youngest ? std::optional(TakeOut(*youngest)) : std::nullopt;
}

auto ItemCount()
{
    Store& store = TheStore();
    const std::lock_guard lock(store.mutex);
    return std::count_if(store.places.begin(), store.places.end(),
                         [](const auto& entry) { return entry.second.object != nullptr; });
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
    if (const Place* const found = Find(store, name))
        return found->object;
    if (!creator || std::find(store.inMaking.begin(), store.inMaking.end(), name) != store.inMaking.end())
        return nullptr;
    const std::string copy(name); // before the creator: the caller's text may be gone after it
    void* const object = [&] {
        const MakingScope making(store, copy);
        return creator();
    }();
    if (object) {
        Place& place = PlaceOf(store, copy);
        place.destroyer = destroyer;
        place.age = ++store.made;
        place.object = object;
    }
    return object;
}

bool GlobalItemExists(const char* key)
{
    Store& store = TheStore();
    const std::lock_guard lock(store.mutex);
    return Find(store, KeyText(key)) != nullptr;
}

bool DeleteGlobalItem(const char* key)
{
    const auto item = [&]() -> std::optional<Item> {
        Store& store = TheStore();
        const std::lock_guard lock(store.mutex);
        Place* const place = Find(store, KeyText(key));
        return place ? std::optional(TakeOut(*place)) : std::nullopt;
    }();
    if (item)
        item->End();
    return item.has_value();
}

namespace Shellkit
{

void Shutdown()
{
    constexpr int kLateItems = 1000; // made by destroyers; more than these never end
    for (auto left = ItemCount() + kLateItems; left > 0; --left) {
        const auto item = TakeOutYoungest();
        if (!item)
            return;
        item->End();
    }
}

const std::atomic<void*>& GlobalItemPlace(const char* key)
{
    Store& store = TheStore();
    const std::lock_guard lock(store.mutex);
    return PlaceOf(store, KeyText(key)).object;
}

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
