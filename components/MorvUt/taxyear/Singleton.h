#pragma once

// Caches of which a process has one, whichever of its modules asks.

#include <atomic>
#include <memory>
#include <stdexcept>
#include <string>
#include <typeinfo>

#include "MorvUt/Export.h"
#include "Shellkit/NamedItems.h"

/// While set, new singletons do not subscribe to data changes and destroyed ones do not unsubscribe. Subscriptions that
/// exist stay.
MORVUT_API void DisableQuarryListeners(bool disable) noexcept;
MORVUT_API bool AreQuarryListenersDisabled() noexcept;

/// A cache that the process has once: it holds one `Data`, and `Derived` (which derives from it and befriends it) says
/// how the data are kept. The instance belongs to Shellkit's named items, made on first use and ended by `Destroy` or
/// at shut-down; whoever wants everything read anew destroys it. For the user-interface thread.
template<class Data, class Derived>
class CSingleton
{
public:
    CSingleton(const CSingleton&) = delete;
    CSingleton& operator=(const CSingleton&) = delete;
    virtual ~CSingleton() = default;
    /// Subscribe to data changes, and end that. Adding twice must be the same as once.
    virtual void AddListeners() {}
    virtual void RemoveListeners() {}

    /// The one instance, made on first use. Cheap: each module remembers where the store keeps it.
    static Derived& Instance()
    {
        if (void* const item = s_place.load(std::memory_order_acquire)->load(std::memory_order_acquire)) [[likely]]
            return *static_cast<Derived*>(item);
        return Find();
    }
    /// 1 when there is an instance; never makes one.
    static int Loaded() { return Place() ? 1 : 0; }
    /// Ends the instance; references into it end too. The next `Instance()` is a fresh, empty one.
    static void Destroy() { DeleteGlobalItem(GetKey().c_str()); }

protected:
    CSingleton() = default;

    Data m_data;

private:
    /// The same in every module of the process.
    static std::string GetKey() { return std::string("MORVUT::") + typeid(CSingleton).name(); }

    static const std::atomic<void*>& Place()
    {
        const std::atomic<void*>* place = s_place.load(std::memory_order_acquire);
        if (place == &s_nowhere) {
            place = &Shellkit::GlobalItemPlace(GetKey().c_str());
            s_place.store(place, std::memory_order_release);
        }
        return *place;
    }

    [[gnu::noinline]] static Derived& Find() // by itself, so that those who ask save no registers for it
    {
        Place(); // so that from now on a look there is enough
        void* const instance = GetGlobalDataItem(GetKey().c_str(), &Create, &End);
        if (!instance)
            throw std::logic_error("a singleton asks for itself while it is being made");
        return *static_cast<Derived*>(instance);
    }

    static void* Create()
    {
        auto* const derived = new Derived; // the store hands back this very pointer, not its base
        std::unique_ptr<CSingleton> made(derived);
        if (!AreQuarryListenersDisabled())
            made->AddListeners();
        static_cast<void>(made.release()); // the store's now
        return derived;
    }

    static void End(void* item)
    {
        const std::unique_ptr<CSingleton> ended(static_cast<Derived*>(item)); // whose destructor may be private
        if (!AreQuarryListenersDisabled())
            ended->RemoveListeners();
    }

    // What this module remembers. Atomic, so that a worker thread may ask for an instance that is there.
    inline static const std::atomic<void*> s_nowhere{nullptr};
    inline static std::atomic<const std::atomic<void*>*> s_place{&s_nowhere};
};
