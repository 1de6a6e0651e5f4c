/// @file
/// Requests on a thread of their own.
#pragma once

#include <cstddef>
#include <exception>
#include <functional>
#include <future>
#include <memory>
#include <optional>
#include <stdexcept>
#include <type_traits>
#include <utility>

#include <velmora/native/QvNativeTessaportAPI.h>
#include <velmora/platform/Export.h>
#include <velmora/platform/WindowHandle.h>

namespace Quorvex::Velmora::TessaportAPI
{

/// What the future of a request throws when the request was dropped before it began.
class VELMORA_API RequestDropped : public std::runtime_error
{
public:
    /// @name Made by the queue, copied as every exception
    /// @{

    /// Sets the message, which is always the same.
    RequestDropped();
    RequestDropped(const RequestDropped& other) noexcept;
    RequestDropped& operator=(const RequestDropped& other) noexcept;
    ~RequestDropped() override;

    /// @}
};

/// @cond
struct RequestConnection;

/// A request that waits or runs, with its answer and its Done. For RequestQueue only.
class VELMORA_API RequestEntry
{
public:
    RequestEntry() = default;
    RequestEntry(const RequestEntry&) = delete;
    RequestEntry& operator=(const RequestEntry&) = delete;
    virtual ~RequestEntry();

    virtual void run(QvNativeTessaportAPI& tessaport) noexcept = 0;
    /// Answers with an exception in place of the request.
    virtual void fail(const std::exception_ptr& reason) noexcept = 0;
    [[nodiscard]] virtual bool hasDone() const noexcept { return false; }
    /// Does nothing when called again.
    virtual void callDone() {}
};
/// @endcond

/// Makes requests one after the other on another thread, so that any thread may ask for them and a window never waits.
///
/// @code
/// RequestQueue queue(hwnd, [](std::function<void()> call) { runOnWindowThread(std::move(call)); });
/// queue.ask([folder](QvNativeTessaportAPI& tessaport) { return tessaport.getFolderContents(folder); },
///     [](std::future<QVBuffer<Item>> answer) { show(answer.get()); });
/// @endcode
///
/// All queues of the process share one thread and one order: a thread's requests run in the order in which it asked for
/// them, whichever queues it used. A process that uses queues makes every call of QvNativeTessaportAPI through them,
/// one-shot operations and changes of the item cache included, because the class is not thread-safe.
///
/// The first request of a queue opens its connection. If that fails, the request fails with the exception, and the next
/// one tries again. A request may ask for another one, but must not wait for its answer. The time to wait for an answer
/// is limited with `wait_for` on its future; a request that has begun cannot be cancelled.
///
/// Once the process ends, no request begins, and one that runs is not waited for. On Windows requests may begin until
/// the libraries of the process are detached, so a host that has objects which requests use in globals calls
/// dropWaiting() first.
///
/// All members may be called on any thread, and several at the same time, except that the destructor must be the last.
class VELMORA_API RequestQueue
{
public:
    /// Has a function run on a thread of the host, usually the one of its window.
    ///
    /// It is called on the request thread and in dropWaiting(), perhaps on both at the same time and, on the request
    /// thread, perhaps still while the queue is destroyed. If it throws, the exception is dropped and the function is
    /// not called again. It is destroyed with the connection, on the request thread. The function that it gets may be
    /// copied, and does nothing once its queue is destroyed or after its first run.
    using Post = std::function<void(std::function<void()>)>;

    /// Makes a queue, which opens no connection yet.
    ///
    /// @param hwnd  the window above which the sync application may show dialogs; null means no window.
    /// @param post  runs each Done; without it they run on the request thread.
    explicit RequestQueue(HWND hwnd = nullptr, Post post = {});
    RequestQueue(const RequestQueue&) = delete;
    RequestQueue& operator=(const RequestQueue&) = delete;

    /// Drops the requests that have not begun, as dropWaiting() does, and waits for nothing.
    ///
    /// No Done begins after this has returned, not even one that was posted before; one that runs on another thread is
    /// not waited for. A request that runs continues to its end, and its future gets the answer. Then the connection is
    /// closed on the request thread. A queue may be destroyed in a request or a Done of its own.
    ~RequestQueue();

    /// Asks for a request.
    ///
    /// @param request  called once, as `request(QvNativeTessaportAPI&)`. May be move-only. It is destroyed before the
    ///                 answer is there.
    /// @return the answer, or the exception that the request threw; RequestDropped if the request was dropped. Its
    ///         destructor waits for nothing.
    /// @throws std::bad_alloc, or std::system_error if the request thread cannot be started. Nothing is asked for then.
    template <class Request>
    auto ask(Request request) -> std::future<std::invoke_result_t<Request&, QvNativeTessaportAPI&>>
    {
        auto entry = std::make_unique<AnsweredEntry<Request>>(std::move(request));
        auto answer = entry->getFuture();
        add(std::move(entry));
        return answer;
    }

    /// Asks for a request, and for a call with its answer.
    ///
    /// @param request  as for the other overload.
    /// @param done     called once through the queue's Post, as `done(std::future<Answer>)` with a future that is
    /// ready.
    ///                 May be move-only. What it throws propagates from the function that was posted; without a Post it
    ///                 is dropped. If memory runs out before it can be posted, it is not called.
    /// @throws std::bad_alloc, or std::system_error, as the other overload does.
    template <class Request, class Done>
    void ask(Request request, Done done)
    {
        add(std::make_unique<DoneEntry<Request, Done>>(std::move(request), std::move(done)));
    }

    /// Drops this queue's requests that have not begun.
    ///
    /// Their futures are ready when this returns, also while another request runs, and throw RequestDropped. Each Done
    /// has been handed to the Post by then; without one it runs on the request thread.
    void dropWaiting();

    /// Returns the number of this queue's requests that have not begun.
    [[nodiscard]] std::size_t waiting() const;

private:
    /// @cond
    template <class Request>
    class AnsweredEntry;
    template <class Request, class Done>
    class DoneEntry;
    /// @endcond

    void add(std::unique_ptr<RequestEntry> entry);

    std::shared_ptr<RequestConnection> connection;
};

/// @cond
template <class Request>
class RequestQueue::AnsweredEntry : public RequestEntry
{
public:
    using Answer = std::invoke_result_t<Request&, QvNativeTessaportAPI&>;

    explicit AnsweredEntry(Request&& request) : request(std::move(request)) {}

    [[nodiscard]] std::future<Answer> getFuture() { return promise.get_future(); }

    void run(QvNativeTessaportAPI& tessaport) noexcept override
    {
        try {
            answer(tessaport);
        } catch (...) {
            fail(std::current_exception());
        }
    }

    void fail(const std::exception_ptr& reason) noexcept override
    {
        request.reset();
        promise.set_exception(reason);
    }

private:
    // The request is destroyed first: whoever waits for the answer may own what the request refers to.
    void answer(QvNativeTessaportAPI& tessaport)
    {
        if constexpr (std::is_void_v<Answer>) {
            std::invoke(*request, tessaport);
            request.reset();
            promise.set_value();
        } else {
            Answer given = std::invoke(*request, tessaport);
            request.reset();
            promise.set_value(std::forward<Answer>(given));
        }
    }

    std::optional<Request> request;
    std::promise<Answer> promise;
};

template <class Request, class Done>
class RequestQueue::DoneEntry final : public AnsweredEntry<Request>
{
public:
    DoneEntry(Request&& request, Done&& done) : AnsweredEntry<Request>(std::move(request)), done(std::move(done)) {}

    [[nodiscard]] bool hasDone() const noexcept override { return true; }

    void callDone() override
    {
        if (!done)
            return;
        Done called = std::move(*done);
        done.reset();
        std::invoke(called, this->getFuture());
    }

private:
    std::optional<Done> done;
};
/// @endcond

} // namespace Quorvex::Velmora::TessaportAPI
