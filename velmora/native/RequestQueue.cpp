#include "velmora/native/RequestQueue.h"

#include <exception>
#include <utility>

#include <velmora/native/RequestThread.h>

namespace Quorvex::Velmora::TessaportAPI
{

RequestDropped::RequestDropped()
    : std::runtime_error("The request was dropped before it began. Ask for it again if its answer is still needed.")
{
}

RequestDropped::RequestDropped(const RequestDropped& other) noexcept = default;
RequestDropped& RequestDropped::operator=(const RequestDropped& other) noexcept = default;
RequestDropped::~RequestDropped() = default;

RequestEntry::~RequestEntry() = default;

RequestQueue::RequestQueue(HWND hwnd, Post post)
    : connection(std::make_shared<RequestConnection>(hwnd, std::move(post)))
{
    // Made here, because the destructor cannot report that memory is out.
    (void)RequestThread::ofProcess();
}

RequestQueue::~RequestQueue()
{
    connection->gate->close();
    (void)RequestThread::ofProcess().dropWaiting(*connection);
    RequestThread::ofProcess().doFirst(*connection, connection->closing);
}

void RequestQueue::add(std::unique_ptr<RequestEntry> entry)
{
    try {
        RequestThread::ofProcess().add(*connection, entry);
    } catch (...) {
        // A promise that is destroyed without an answer needs memory, and may not throw.
        entry->fail(std::current_exception());
        throw;
    }
}

void RequestQueue::dropWaiting()
{
    // A Done that runs inside the poster may destroy this queue.
    const std::shared_ptr<RequestConnection> kept = connection;
    RequestThread::Jobs dropped = RequestThread::ofProcess().dropWaiting(*kept);
    if (!kept->post) {
        dropped.remove_if([](const RequestJob& job) { return !job.entry->hasDone(); });
        RequestThread::ofProcess().doFirst(*kept, dropped);
        return;
    }
    for (RequestJob& job : dropped)
        kept->callDone(std::move(job.entry));
}

std::size_t RequestQueue::waiting() const { return RequestThread::ofProcess().countWaiting(*connection); }

} // namespace Quorvex::Velmora::TessaportAPI
