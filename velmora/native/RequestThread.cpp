#include "velmora/native/RequestThread.h"

#include <exception>
#include <thread>
#include <utility>

#include <velmora/bridge/boundary/ProcessExit.h>

namespace Quorvex::Velmora::TessaportAPI
{

RequestConnection::RequestConnection(HWND window, RequestQueue::Post post) : window(window), post(std::move(post))
{
    RequestThread::Turns made;
    made.emplace(0, this);
    turn = made.extract(made.begin());
    closing.emplace_back();
}

void RequestConnection::makeRequest(RequestEntry& entry) noexcept
{
    try {
        if (tessaport == nullptr)
            tessaport = std::make_unique<QvNativeTessaportAPI>(window);
    } catch (...) {
        entry.fail(std::current_exception());
        return;
    }
    entry.run(*tessaport);
}

void RequestConnection::callDone(std::unique_ptr<RequestEntry> entry) const noexcept
{
    if (!entry->hasDone() || !gate->isOpen())
        return;
    try {
        if (!post) {
            entry->callDone();
            return;
        }
        // The posted function does not own the connection: a poster may keep it for long, or own it itself.
        post([gate = gate, entry = std::shared_ptr<RequestEntry>(std::move(entry))] {
            if (gate->isOpen())
                entry->callDone();
        });
    } catch (...) {
        // Neither a poster nor a Done may end the thread.
    }
}

RequestThread& RequestThread::ofProcess()
{
    static auto* const thread = new RequestThread;
    return *thread;
}

void RequestThread::add(RequestConnection& connection, std::unique_ptr<RequestEntry>& entry)
{
    Jobs made(1);
    const std::unique_lock lock = lockSoon();
    start();
    made.front().entry = std::move(entry);
    made.front().number = ++lastNumber;
    const bool isFirst = connection.waiting.empty();
    connection.waiting.splice(connection.waiting.end(), made);
    if (isFirst)
        giveTurn(connection);
    wake();
}

void RequestThread::doFirst(RequestConnection& connection, Jobs& jobs) noexcept
{
    const std::unique_lock lock = lockSoon();
    // Without a thread no request was ever asked for.
    if (!isStarted)
        return;
    for (RequestJob& job : jobs)
        job.connection = connection.shared_from_this();
    chores.splice(chores.end(), jobs);
    wake();
}

RequestThread::Jobs RequestThread::dropWaiting(RequestConnection& connection) noexcept
{
    Jobs waiting = takeWaiting(connection);
    for (const RequestJob& job : waiting)
        job.entry->fail(dropped);
    return waiting;
}

RequestThread::Jobs RequestThread::takeWaiting(RequestConnection& connection) noexcept
{
    Jobs taken;
    const std::unique_lock lock = lockSoon();
    if (!connection.waiting.empty()) {
        connection.turn = turns.extract(connection.waiting.front().number);
        taken.swap(connection.waiting);
    }
    return taken;
}

std::size_t RequestThread::countWaiting(const RequestConnection& connection)
{
    const std::unique_lock lock = lockSoon();
    return connection.waiting.size();
}

// The mutex is held for a fraction of the time that it takes to wait for it.
std::unique_lock<std::mutex> RequestThread::lockSoon()
{
    constexpr int Attempts = 100;
    std::unique_lock lock(mutex, std::try_to_lock);
    for (int i = 0; i < Attempts && !lock.owns_lock(); ++i)
        (void)lock.try_lock();
    if (!lock.owns_lock())
        lock.lock();
    return lock;
}

void RequestThread::start()
{
    if (isStarted)
        return;
    Tessaport::prepareForProcessExit();
    std::thread([this] { work(); }).detach();
    isStarted = true;
}

void RequestThread::wake() noexcept
{
    hasNews.store(true, std::memory_order_release);
    if (std::exchange(isIdle, false))
        added.notify_one();
}

// Putting a thread to sleep and waking it costs more than most requests, so it looks a little longer first.
void RequestThread::awaitNews(std::unique_lock<std::mutex>& lock)
{
    constexpr int Looks = 50;
    if (!chores.empty() || !turns.empty())
        return;
    hasNews.store(false, std::memory_order_relaxed);
    lock.unlock();
    for (int i = 0; i < Looks && !hasNews.load(std::memory_order_acquire); ++i)
        std::this_thread::yield();
    lock.lock();
}

void RequestThread::work()
{
    for (;;) {
        std::unique_lock lock = lockSoon();
        awaitNews(lock);
        added.wait(lock, [this] {
            isIdle = (chores.empty() && turns.empty()) || Tessaport::isProcessExiting();
            return !isIdle;
        });
        Jobs taken;
        const bool isRequest = chores.empty();
        if (isRequest)
            taken = takeRequest();
        else
            taken.splice(taken.end(), chores, chores.begin());
        lock.unlock();

        RequestJob& job = taken.front();
        if (job.entry == nullptr) {
            job.connection->tessaport.reset();
            continue;
        }
        if (isRequest)
            job.connection->makeRequest(*job.entry);
        if (!Tessaport::isProcessExiting())
            job.connection->callDone(std::move(job.entry));
    }
}

RequestThread::Jobs RequestThread::takeRequest() noexcept
{
    const auto first = turns.begin();
    RequestConnection& connection = *first->second;
    Jobs taken;
    taken.splice(taken.end(), connection.waiting, connection.waiting.begin());
    taken.front().connection = connection.shared_from_this();
    connection.turn = turns.extract(first);
    if (!connection.waiting.empty())
        giveTurn(connection);
    return taken;
}

void RequestThread::giveTurn(RequestConnection& connection) noexcept
{
    connection.turn.key() = connection.waiting.front().number;
    turns.insert(std::move(connection.turn));
}

} // namespace Quorvex::Velmora::TessaportAPI
