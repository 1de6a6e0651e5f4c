#include "Requests.h"

#include <mutex>

namespace DriveWindow
{

// The request thread may still be in the poster when the window is gone.
struct Requests::Mailbox {
    std::mutex mutex;
    QObject* receiver;

    void post(std::function<void()> call)
    {
        const std::lock_guard lock(mutex);
        if (receiver != nullptr)
            QMetaObject::invokeMethod(receiver, std::move(call), Qt::QueuedConnection);
    }
};

// On Windows the first argument of the queue is reinterpret_cast<HWND>(window->winId()), so that the sync application
// shows its dialogs above the window.
Requests::Requests(ReportFailure onFailure, ReportWaiting onWaiting)
    : reportFailure(std::move(onFailure)),
      reportWaiting(std::move(onWaiting)),
      mailbox(std::make_shared<Mailbox>()),
      queue(nullptr, [mailbox = mailbox](std::function<void()> call) { mailbox->post(std::move(call)); })
{
    mailbox->receiver = this;
    timer.setInterval(500);
    connect(&timer, &QTimer::timeout, this, [this] { tick(); });
}

Requests::~Requests()
{
    const std::lock_guard lock(mailbox->mutex);
    mailbox->receiver = nullptr;
}

void Requests::begin()
{
    if (unanswered++ == 0)
        sinceAnswer.start();
    timer.start();
}

void Requests::end()
{
    sinceAnswer.start();
    if (--unanswered == 0) {
        timer.stop();
        reportWaiting(-1);
    }
}

void Requests::tick() { reportWaiting(static_cast<int>(sinceAnswer.elapsed() / 1000)); }

} // namespace DriveWindow
