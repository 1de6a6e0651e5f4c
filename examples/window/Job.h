#pragma once

#include <QWidget>
#include <cstddef>
#include <functional>
#include <memory>

#include "Requests.h"
#include "Service.h"

class QLabel;
class QProgressBar;

namespace DriveWindow
{

/// A long piece of work in many short requests, with a progress bar and a button that stops it after the current one.
/// If a request fails, the work ends there until the user tries again. Visible while it is busy.
class Job : public QWidget
{
public:
    /// Handles the things from `first` up to `end`, on the request thread.
    using Step = std::function<Outcome(Tessaport& tessaport, std::size_t first, std::size_t end)>;
    using Finished = std::function<void(const QString& doing, const Outcome& outcome, bool stopped)>;

    Job(Requests& windowRequests, Finished onFinished);

    [[nodiscard]] bool isBusy() const { return !isHidden(); }

    /// Starts to handle things.
    ///
    /// @param doing  such as "sync the folder “plans”".
    void start(const QString& doing, std::size_t count, Step step);

private:
    struct Work;

    void proceed(const std::shared_ptr<Work>& work);
    void next(const std::shared_ptr<Work>& work);

    Requests& requests;
    Finished finished;
    QLabel* label;
    QProgressBar* bar;
    bool stopped = false;
};

} // namespace DriveWindow
