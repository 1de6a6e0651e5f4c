#pragma once

#include <QWidget>
#include <cstddef>
#include <functional>

#include "Requests.h"
#include "Service.h"

class QLabel;
class QProgressBar;

namespace DriveWindow
{

/// A long piece of work in many short requests, with a progress bar and a button that stops it after the current one.
/// If a request fails, the work ends there until the user tries again.
class Job : public QWidget
{
public:
    /// Handles the things from `first` up to `end`, on the request thread.
    using Step = std::function<Outcome(Tessaport& tessaport, std::size_t first, std::size_t end)>;
    using Finished = std::function<void(const QString& doing, const Outcome& outcome, bool stopped)>;

    Job(Requests& windowRequests, Finished finished);

    [[nodiscard]] bool isBusy() const { return busy; }

    /// Starts to handle things.
    ///
    /// @param doing  such as "sync the folder “plans”".
    void start(const QString& doing, std::size_t count, Step step);

private:
    void next();
    void resume(unsigned ofJob);
    void setBusy(bool isNow);

    Requests& requests;
    Finished finished;
    QLabel* label;
    QProgressBar* bar;
    bool busy = false;
    unsigned number = 0; // Of the latest job.
    bool stopped = false;
    QString doing;
    std::size_t handled = 0;
    std::size_t count = 0;
    Step step;
    Outcome outcome;
};

} // namespace DriveWindow
