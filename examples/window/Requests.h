#pragma once

#include <QObject>
#include <QString>
#include <exception>
#include <functional>
#include <memory>
#include <utility>

#include <velmora/native/RequestQueue.h>

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

/// What a person is told about a request that failed. All of it is plain text.
struct Failure {
    QString what;    ///< What failed, and why.
    QString remedy;  ///< What to do.
    QString message; ///< The words of the sync application, perhaps with web addresses; may be empty.
};

/// Describes the exception that is being handled.
///
/// @param doing  what the request was for, such as "list the folder “plans”".
[[nodiscard]] Failure describe(const std::exception& exception, const QString& doing);

/// Makes the window's requests through one queue, and reports every failure to one place. For the thread of the window
/// only.
class Requests
{
public:
    using Call = std::function<void()>;
    /// @param again  repeats the request.
    using ReportFailure = std::function<void(const Failure& failure, const Call& again)>;

    explicit Requests(ReportFailure onFailure) : reportFailure(std::move(onFailure)) {}

    /// Asks for a request.
    ///
    /// @param doing    what it is for, such as "list the drives"; part of the sentence that reports its failure.
    /// @param request  runs on the request thread, with the connection.
    /// @param done     gets the answer, on the window's thread.
    /// @param failed   called first if it fails.
    template <class Request, class Done>
    void ask(
        const QString& doing, Request request, Done done, Call failed = [] {})
    {
        queue.ask(request, [=](auto answer) {
            try {
                done(answer.get());
            } catch (const std::exception& exception) {
                failed();
                reportFailure(describe(exception, doing), [=] { ask(doing, request, done, failed); });
            }
        });
    }

private:
    ReportFailure reportFailure;
    // The last member: its destructor drops what waits, and no answer arrives after it.
    // On Windows its first argument is reinterpret_cast<HWND>(window->winId()), so that the sync application shows its
    // dialogs above the window.
    Quorvex::Velmora::TessaportAPI::RequestQueue queue{nullptr, postToThisThread()};
};

} // namespace DriveWindow
