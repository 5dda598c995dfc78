// Counts the uses of `operator new`. The definitions here serve the shared libraries too.

#include <atomic>
#include <cstdlib>
#include <new>

#include "Subject.h"

namespace
{

std::atomic<std::size_t> g_allocations{0};

void* Allocate(std::size_t size)
{
    g_allocations.fetch_add(1, std::memory_order_relaxed);
    if (void* const memory = std::malloc(size ? size : 1))
        return memory;
    throw std::bad_alloc();
}

} // namespace

std::size_t Rules::CountAllocations() noexcept { return g_allocations.load(std::memory_order_relaxed); }

void* operator new(std::size_t size) { return Allocate(size); }
void* operator new[](std::size_t size) { return Allocate(size); }
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete[](void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { std::free(memory); }
