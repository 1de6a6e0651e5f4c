#include "velmora/api/QVLog.h"

#include <memory>
#include <mutex>
#include <utility>

namespace Quorvex::Velmora::Common
{
namespace
{

struct CurrentSink {
    std::mutex mutex;
    std::shared_ptr<const QVLog::Sink> sink;
};

// Leaked on purpose: destructors that run while the process ends may still write lines.
CurrentSink& currentSink()
{
    static auto* const current = new CurrentSink;
    return *current;
}

} // namespace

QVLog* QVLog::getLogFile()
{
    static auto* const log = new QVLog;
    return log;
}

void QVLog::addMessage(const QVString& line, bool flag)
{
    std::shared_ptr<const Sink> sink;
    {
        const std::lock_guard lock(currentSink().mutex);
        sink = currentSink().sink;
    }
    if (sink == nullptr)
        return;
    try {
        (*sink)(line, flag);
    } catch (...) {
    }
}

void QVLog::setSink(Sink sink)
{
    auto replacement = sink ? std::make_shared<const Sink>(std::move(sink)) : nullptr;
    const std::lock_guard lock(currentSink().mutex);
    currentSink().sink.swap(replacement);
}

} // namespace Quorvex::Velmora::Common
