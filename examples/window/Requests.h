#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <functional>
#include <future>
#include <memory>
#include <utility>

#include <velmora/native/RequestQueue.h>
#include "Failure.h"

namespace DriveWindow
{

/// Has calls made by the event loop of the thread that calls this.
inline Quorvex::Velmora::TessaportAPI::RequestQueue::Post postToThisThread()
{
    // The request thread may still post when the window is gone, so the receiver lives as long as the connection. It is
    // then deleted on its own thread.
    const std::shared_ptr<QObject> receiver(new QObject, [](QObject* object) { object->deleteLater(); });
    return [receiver](std::function<void()> call) {
        QMetaObject::invokeMethod(receiver.get(), std::move(call), Qt::QueuedConnection);
    };
}

/// Makes the window's requests through one queue, and reports every failure to one place. For the thread of the window
/// only.
class Requests
{
public:
    using Tessaport = Quorvex::Velmora::TessaportAPI::QvNativeTessaportAPI;
    using Again = std::function<void()>;
    /// @param again  repeats the request.
    using ReportFailure = std::function<void(const Failure& failure, Again again)>;

    explicit Requests(ReportFailure onFailure) : reportFailure(std::move(onFailure)) {}

    /// Asks for a request.
    ///
    /// @param doing    what it is for, such as "list the drives"; part of the sentence that reports its failure.
    /// @param request  runs on the request thread, as `request(Tessaport&)`.
    /// @param done     gets the answer, on the window's thread.
    /// @param failed   called first if it fails.
    /// @param again    repeats the request if the user tries again; without it, the same request is made again.
    template <class Request, class Done>
    void ask(const QString& doing, Request request, Done done, std::function<void()> failed = {}, Again again = {})
    {
        if (unanswered++ == 0)
            sinceAnswer.start();
        queue.ask(request, [=](auto answer) mutable {
            --unanswered;
            sinceAnswer.start();
            try {
                done(answer.get());
            } catch (const std::exception& exception) {
                if (failed)
                    failed();
                if (!again)
                    again = [=] { ask(doing, request, done, failed); };
                reportFailure(describe(exception, doing), again);
            }
        });
    }

    /// Destroys something on the request thread, because many records take long to destroy.
    template <class Records>
    void destroy(Records records)
    {
        (void)queue.ask([records = std::move(records)](Tessaport&) {});
    }

    /// For how long the current request has waited for its answer; 0 if no request waits.
    [[nodiscard]] qint64 secondsWithoutAnswer() const { return unanswered > 0 ? sinceAnswer.elapsed() / 1000 : 0; }

private:
    ReportFailure reportFailure;
    int unanswered = 0;
    QElapsedTimer sinceAnswer;
    // The last member: its destructor drops what waits, and no answer arrives after it.
    // On Windows its first argument is reinterpret_cast<HWND>(window->winId()), so that the sync application shows its
    // dialogs above the window.
    Quorvex::Velmora::TessaportAPI::RequestQueue queue{nullptr, postToThisThread()};
};

} // namespace DriveWindow
