// The thread that makes the requests of all queues. Internal.
#pragma once

#include <atomic>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <list>
#include <map>
#include <memory>
#include <mutex>

#include <velmora/native/RequestQueue.h>

namespace Quorvex::Velmora::TessaportAPI
{

/// Whether a queue still exists. Outlives it in the functions that were posted.
class RequestGate
{
public:
    [[nodiscard]] bool isOpen() const noexcept { return open.load(std::memory_order_acquire); }
    void close() noexcept { open.store(false, std::memory_order_release); }

private:
    std::atomic<bool> open{true};
};

/// Something to do on the request thread: with an entry, make its request or call its Done; without one, close the
/// connection.
struct RequestJob {
    std::unique_ptr<RequestEntry> entry;
    /// Null while a request waits: the connection owns it then.
    std::shared_ptr<RequestConnection> connection;
    /// Its place in the order of all queues.
    std::uint64_t number = 0;
};

/// The request thread. Leaked on purpose: it runs until the process ends, whatever is destroyed meanwhile.
class RequestThread
{
public:
    using Jobs = std::list<RequestJob>;
    /// The queues with waiting requests, by the number of the first of them.
    using Turns = std::map<std::uint64_t, RequestConnection*>;

    [[nodiscard]] static RequestThread& ofProcess();

    /// Starts the thread if it does not run yet. Takes nothing if it throws.
    void add(RequestConnection& connection, std::unique_ptr<RequestEntry>& entry);

    /// Does jobs of a queue before the next request begins, none of which makes a request.
    void doFirst(RequestConnection& connection, Jobs& jobs) noexcept;

    /// Takes the requests of a queue that have not begun, and answers each with RequestDropped.
    [[nodiscard]] Jobs dropWaiting(RequestConnection& connection) noexcept;
    [[nodiscard]] std::size_t countWaiting(const RequestConnection& connection);

private:
    [[nodiscard]] std::unique_lock<std::mutex> lockSoon();
    void start();
    [[noreturn]] void work();
    void wake() noexcept;
    void awaitNews(std::unique_lock<std::mutex>& lock);
    [[nodiscard]] Jobs takeWaiting(RequestConnection& connection) noexcept;
    [[nodiscard]] Jobs takeRequest() noexcept;
    void giveTurn(RequestConnection& connection) noexcept;

    // Made in advance, because a destructor cannot report that memory is out.
    const std::exception_ptr dropped = std::make_exception_ptr(RequestDropped());
    std::mutex mutex;
    std::condition_variable added;
    Turns turns;
    /// Everything but requests, which it precedes.
    Jobs chores;
    std::uint64_t lastNumber = 0;
    bool isStarted = false;
    /// True while the thread waits and no one has woken it.
    bool isIdle = false;
    /// Something to do was added since the thread found nothing.
    std::atomic<bool> hasNews{false};
};

/// What the requests of one queue share. Outlives the queue until its last request has ended.
struct RequestConnection : std::enable_shared_from_this<RequestConnection> {
    RequestConnection(HWND window, RequestQueue::Post post);

    void makeRequest(RequestEntry& entry) noexcept;
    /// Calls the Done of an answered entry through the poster, if the queue still exists.
    void callDone(std::unique_ptr<RequestEntry> entry) const noexcept;

    HWND window;
    const RequestQueue::Post post;
    const std::shared_ptr<RequestGate> gate = std::make_shared<RequestGate>();
    /// Only the request thread uses it.
    std::unique_ptr<QvNativeTessaportAPI> tessaport;

    /// @name Guarded by the thread's mutex
    /// @{
    RequestThread::Jobs waiting;
    /// The place among the turns while no request waits.
    RequestThread::Turns::node_type turn;
    /// The job that closes this connection, made in advance for the destructor.
    RequestThread::Jobs closing;
    /// @}
};

} // namespace Quorvex::Velmora::TessaportAPI
