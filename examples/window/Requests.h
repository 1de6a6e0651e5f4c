// The window's requests: made on another thread, answered on the window's.
#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>
#include <exception>
#include <functional>
#include <future>
#include <memory>
#include <utility>

#include <velmora/native/RequestQueue.h>
#include "Failure.h"
#include "Text.h"

namespace DriveWindow
{

/// Makes requests through one queue, and reports every failure to one place. For the thread of the window only.
class Requests : public QObject
{
public:
    using Again = std::function<void()>;
    /// @param again  repeats the request.
    using ReportFailure = std::function<void(const Failure& failure, Again again)>;
    /// @param seconds  how long the current request has waited for its answer; negative if no request waits.
    using ReportWaiting = std::function<void(int seconds)>;

    Requests(ReportFailure reportFailure, ReportWaiting reportWaiting);
    ~Requests() override;

    /// Asks for a request.
    ///
    /// @param doing    what it is for, such as "list the drives"; part of the sentence that reports its failure.
    /// @param request  runs on the request thread, as `request(Api::QvNativeTessaportAPI&)`.
    /// @param done     gets the answer, on the window's thread.
    /// @param again    repeats the request; offered to the user if it fails.
    /// @param failed   called first if it fails.
    template <class Request, class Done>
    void ask(
        const QString& doing, Request request, Done done, Again again, std::function<void()> failed = [] {})
    {
        begin();
        queue.ask(std::move(request), [this, doing, done = std::move(done), again, failed](auto answer) mutable {
            end();
            try {
                done(answer.get());
            } catch (...) {
                failed();
                reportFailure(describe(std::current_exception(), doing), again);
            }
        });
    }

private:
    struct Mailbox;

    void begin();
    void end();
    void tick();

    ReportFailure reportFailure;
    ReportWaiting reportWaiting;
    int unanswered = 0;
    QElapsedTimer sinceAnswer;
    QTimer timer;
    std::shared_ptr<Mailbox> mailbox;
    // The last member: its destructor drops what waits, and no answer arrives after it.
    Api::RequestQueue queue;
};

} // namespace DriveWindow
