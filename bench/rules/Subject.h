#pragma once

// One of our functions on realistic values, and peers that give the same answers.

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "Afx/text/CString.h"
#include "Ratios.h"

namespace Rules
{

/// Uses of `operator new` by this program and its libraries so far.
std::size_t CountAllocations() noexcept;

/// Bytes in an array of their own.
struct Bytes
{
    std::unique_ptr<unsigned char[]> data;
    std::size_t size = 0;

    friend bool operator==(const Bytes& a, const Bytes& b) noexcept
    {
        return std::string_view(reinterpret_cast<const char*>(a.data.get()), a.size) ==
               std::string_view(reinterpret_cast<const char*>(b.data.get()), b.size);
    }
};

// Whether an answer needs memory of its own: a text that is too long to lie in its object, an array always.
inline bool NeedsMemory(const CString& text) { return text.GetLength() > 15; }
inline bool NeedsMemory(const Bytes&) { return true; }
template<class Answer>
bool NeedsMemory(const Answer&)
{
    return false;
}

inline bool IsSame(const std::string& peer, const CString& ours) { return peer == ours.View(); }
template<class Answer>
bool IsSame(const Answer& peer, const Answer& ours)
{
    return peer == ours;
}

/// What our function of one subject allocated.
struct Tally
{
    std::size_t calls = 0;
    std::size_t allocations = 0;
    std::size_t needed = 0; // of them, for answers that need memory of their own
};

/// Our function of one subject, for counting.
struct Path
{
    std::string subject;
    std::function<Tally()> count;
};
std::vector<Path>& Paths();
Bench::Reasons& Reasons();

/// A subject, registered with its first entry; `Against` adds the peers.
template<class Item, class Ours>
class Subject
{
public:
    /// `prepare` sets the switches of the process as `ours` needs them.
    Subject(
        std::string name, std::vector<Item> items, Ours ours, void (*prepare)() = [] {})
        : m_name(std::move(name)), m_items(std::make_shared<const std::vector<Item>>(std::move(items))), m_ours(ours),
          m_prepare(prepare)
    {
        Time("ours", ours);
        Paths().push_back({m_name, [items = m_items, ours, prepare] { return Count(*items, ours, prepare); }});
    }

    /// Ends the program when the peer's answers are not ours: such a pair says nothing.
    template<class Peer>
    Subject& Against(const char* peerName, Peer peer)
    {
        m_prepare();
        for (const Item& item : *m_items)
            if (!IsSame(peer(item), m_ours(item))) {
                std::fprintf(stderr, "%s: %s gives another answer for item %td\n", m_name.c_str(), peerName,
                             &item - m_items->data());
                std::exit(2);
            }
        Time(peerName, peer);
        return *this;
    }

    /// Why ours is slower than a peer that does less.
    void Slower(const char* why) { Reasons()[m_name] = why; }

private:
    template<class Action>
    void Time(const char* entry, Action action)
    {
        const auto run = [items = m_items, action, prepare = m_prepare](benchmark::State& state) {
            prepare();
            const Item* const first = items->data();
            const Item* const end = first + items->size();
            const Item* at = first;
            for (auto _ : state) {
                benchmark::DoNotOptimize(action(*at));
                if (++at == end)
                    at = first;
            }
        };
        benchmark::RegisterBenchmark((m_name + '/' + entry).c_str(), run);
    }

    static Tally Count(const std::vector<Item>& items, Ours ours, void (*prepare)())
    {
        prepare();
        ours(items.front()); // what is made once, on first use
        Tally tally;
        for (const Item& item : items) {
            const std::size_t before = CountAllocations();
            const auto answer = ours(item);
            const std::size_t used = CountAllocations() - before;
            ++tally.calls;
            tally.allocations += used;
            tally.needed += used == 1 && NeedsMemory(answer) ? 1 : 0;
        }
        return tally;
    }

    std::string m_name;
    std::shared_ptr<const std::vector<Item>> m_items;
    Ours m_ours;
    void (*m_prepare)();
};

void RegisterMoneyToText();
void RegisterMoneyFromText();
void RegisterDates();
void RegisterFormats();
void RegisterIdentifiers();
void RegisterHex();
void RegisterMappings();

} // namespace Rules
