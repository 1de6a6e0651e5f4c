// A mutex that reports a second lock by its own thread.
#pragma once

#include <atomic>
#include <mutex>
#include <system_error>
#include <thread>

namespace Quorvex::Velmora::Logging
{

/// Not every platform's std::mutex notices that its holder waits for itself; this one throws there.
class OwnedMutex
{
public:
    void lock()
    {
        if (m_owner.load(std::memory_order_relaxed) == std::this_thread::get_id())
            throw std::system_error(std::make_error_code(std::errc::resource_deadlock_would_occur));
        m_mutex.lock();
        m_owner.store(std::this_thread::get_id(), std::memory_order_relaxed);
    }

    void unlock()
    {
        m_owner.store(std::thread::id(), std::memory_order_relaxed);
        m_mutex.unlock();
    }

private:
    std::mutex m_mutex;
    std::atomic<std::thread::id> m_owner{std::thread::id()};
};

} // namespace Quorvex::Velmora::Logging
