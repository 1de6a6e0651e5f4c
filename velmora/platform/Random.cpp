#include "velmora/platform/Random.h"

#include <atomic>
#include <chrono>
#include <random>

#ifndef _WIN32
#include <pthread.h>
#endif

namespace Quorvex::Velmora::Common
{
namespace
{

// Incremented in every forked child. A generator that was seeded under another number is the parent's.
std::atomic<std::uint32_t> forkCount{1};

#ifndef _WIN32
[[maybe_unused]] const int forkHandler =
    pthread_atfork(nullptr, nullptr, [] { forkCount.fetch_add(1, std::memory_order_relaxed); });
#endif

constexpr std::uint64_t rotatedLeft(std::uint64_t value, int bits) noexcept
{
    return (value << bits) | (value >> (64 - bits));
}

std::uint64_t splitMix(std::uint64_t& state) noexcept
{
    std::uint64_t z = (state += 0x9E3779B97F4A7C15);
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EB;
    return z ^ (z >> 31);
}

// xoshiro256++: two nanoseconds for each value, one generator for each thread.
struct Generator {
    std::uint64_t state[4];
    std::uint32_t seededAt;

    void seed(std::uint32_t fork) noexcept
    {
        for (std::uint64_t& word : state)
            word = entropy();
        seededAt = fork;
    }

    std::uint64_t next() noexcept
    {
        const std::uint64_t result = rotatedLeft(state[0] + state[3], 23) + state[0];
        const std::uint64_t shifted = state[1] << 17;
        state[2] ^= state[0];
        state[3] ^= state[1];
        state[1] ^= state[2];
        state[0] ^= state[3];
        state[2] ^= shifted;
        state[3] = rotatedLeft(state[3], 45);
        return result;
    }

private:
    std::uint64_t entropy() noexcept
    {
        // Mixed with the clock and the address: without a random device the system may return the same value every
        // time.
        std::uint64_t mixed = static_cast<std::uint64_t>(std::chrono::steady_clock::now().time_since_epoch().count()) ^
                              reinterpret_cast<std::uintptr_t>(this);
        try {
            std::random_device device;
            mixed ^= (static_cast<std::uint64_t>(device()) << 32) | device();
        } catch (...) {
        }
        return splitMix(mixed);
    }
};

thread_local Generator generator{{0, 0, 0, 0}, 0};

} // namespace

std::array<std::uint64_t, 2> randomBits() noexcept
{
    Generator& own = generator;
    const std::uint32_t fork = forkCount.load(std::memory_order_relaxed);
    if (own.seededAt != fork)
        own.seed(fork);
    return {own.next(), own.next()};
}

} // namespace Quorvex::Velmora::Common
