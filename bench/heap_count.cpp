#include "bench/heap_count.h"

#include <cerrno>
#include <cstddef>

namespace {

long s_requests = 0;

} // namespace

namespace amperly {

long heapRequests()
{
    return s_requests;
}

} // namespace amperly

// The C library's allocator under its second name. Programs may define the first one themselves,
// and then every library's calls come here.
extern "C" {

void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);

void* malloc(std::size_t size)
{
    ++s_requests;
    return __libc_malloc(size);
}

void* calloc(std::size_t count, std::size_t size)
{
    ++s_requests;
    return __libc_calloc(count, size);
}

void* realloc(void* block, std::size_t size)
{
    ++s_requests;
    return __libc_realloc(block, size);
}

void* aligned_alloc(std::size_t alignment, std::size_t size)
{
    ++s_requests;
    return __libc_memalign(alignment, size);
}

int posix_memalign(void** block, std::size_t alignment, std::size_t size)
{
    ++s_requests;
    *block = __libc_memalign(alignment, size);
    return *block == nullptr ? ENOMEM : 0;
}
}
