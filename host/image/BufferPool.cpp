#include "host/image/BufferPool.h"

#include <algorithm>
#include <cstdlib>
#include <list>
#include <mutex>

#include <sys/mman.h>

namespace ombrelune {

namespace {

constexpr std::size_t kGrain = 4096; // sizes are rounded up to this, so near sizes share buffers
constexpr std::size_t kHugeFrom = 4 * 1024 * 1024; // from here on ask for huge pages

struct Pool {
    struct Free {
        std::byte* buffer;
        std::size_t size;
    };
    std::mutex lock;
    std::list<Free> free; // oldest first
    std::size_t held = 0; // bytes of the free ones
    PoolUse use;
    std::size_t limit = std::size_t{2} << 30;

    void Shrink()
    {
        while (held > 0 && held + use.now > limit) {
            held -= free.front().size;
            std::free(free.front().buffer);
            free.pop_front();
        }
    }
    void Took(std::size_t size)
    {
        use.now += size;
        use.peak = std::max(use.peak, use.now);
        Shrink();
    }
};

// Never destroyed: pictures in static objects may come back after everything else is gone.
Pool& ThePool()
{
    static auto& pool = *new Pool;
    return pool;
}

} // namespace

void ReturnToPool::operator()(std::byte* buffer) const
{
    Pool& pool = ThePool();
    std::lock_guard guard(pool.lock);
    pool.free.push_back({buffer, size});
    pool.held += size;
    pool.use.now -= size;
    pool.Shrink();
}

PooledBuffer TakeBuffer(std::size_t size)
{
    if (size == 0) return {};
    size = (size + kGrain - 1) / kGrain * kGrain;
    Pool& pool = ThePool();
    {
        std::lock_guard find(pool.lock);
        for (auto it = pool.free.rbegin(); it != pool.free.rend(); ++it) {
            if (it->size != size) continue;
            std::byte* const buffer = it->buffer;
            pool.held -= size;
            pool.free.erase(std::next(it).base());
            pool.Took(size);
            return PooledBuffer(buffer, ReturnToPool{size});
        }
    }
    bool const huge = size >= kHugeFrom;
    void* memory = nullptr;
    if (posix_memalign(&memory, huge ? std::size_t{2} << 20 : kGrain, size) != 0) return {};
    if (huge) madvise(memory, size, MADV_HUGEPAGE);
    std::lock_guard guard(pool.lock);
    pool.Took(size);
    return PooledBuffer(static_cast<std::byte*>(memory), ReturnToPool{size});
}

PoolUse BuffersInUse()
{
    Pool& pool = ThePool();
    std::lock_guard guard(pool.lock);
    return pool.use;
}

void SetPoolLimit(std::size_t bytes)
{
    Pool& pool = ThePool();
    std::lock_guard guard(pool.lock);
    pool.limit = bytes;
    pool.Shrink();
}

} // namespace ombrelune
