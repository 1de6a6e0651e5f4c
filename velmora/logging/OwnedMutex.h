#pragma once

#include <atomic>
#include <mutex>
#include <system_error>
#include <thread>

namespace Quorvex::Velmora::Logging
{

/// A mutex that throws std::system_error if the thread that holds it locks it again. std::mutex is not required to
/// notice that.
class OwnedMutex
{
public:
    void lock()
    {
        if (owner.load(std::memory_order_relaxed) == std::this_thread::get_id())
            throw std::system_error(std::make_error_code(std::errc::resource_deadlock_would_occur));
        mutex.lock();
        owner.store(std::this_thread::get_id(), std::memory_order_relaxed);
    }

    void unlock()
    {
        owner.store(std::thread::id(), std::memory_order_relaxed);
        mutex.unlock();
    }

private:
    std::mutex mutex;
    std::atomic<std::thread::id> owner{std::thread::id()};
};

} // namespace Quorvex::Velmora::Logging
