// Counts heap allocations while a benchmark asks for it: the program's malloc family is
// replaced by one that counts and hands over to the C library's own. Outside a count the
// replacement costs one well-predicted branch.

#include "bench_support.h"

#include <sys/resource.h>

#include <atomic>
#include <cstddef>

extern "C" {
void *__libc_malloc(size_t size);
void *__libc_calloc(size_t count, size_t size);
void *__libc_realloc(void *p, size_t size);
void __libc_free(void *p);
}

namespace {

std::atomic<bool> g_counting{false};
std::atomic<long> g_allocations{0};

inline void count()
{
    if (g_counting.load(std::memory_order_relaxed))
        g_allocations.fetch_add(1, std::memory_order_relaxed);
}

long minorFaults()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_minflt;
}

} // namespace

extern "C" {

void *malloc(size_t size)
{
    count();
    return __libc_malloc(size);
}

void *calloc(size_t count_, size_t size)
{
    count();
    return __libc_calloc(count_, size);
}

void *realloc(void *p, size_t size)
{
    count();
    return __libc_realloc(p, size);
}

void free(void *p)
{
    __libc_free(p);
}
}

namespace drivewiz::bench {

HeapCount::HeapCount() : m_faults(minorFaults())
{
    g_allocations = 0;
    g_counting = true;
}

HeapCount::~HeapCount()
{
    g_counting = false;
}

long HeapCount::allocations() const
{
    return g_allocations.load();
}

long HeapCount::faults() const
{
    return minorFaults() - m_faults;
}

long pageFaults()
{
    return minorFaults();
}

} // namespace drivewiz::bench
