#include "Job.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <algorithm>

namespace DriveWindow
{
namespace
{

constexpr std::size_t BatchSize = 20;

} // namespace

struct Job::Work {
    QString doing;
    std::size_t count;
    Step step;
    std::size_t handled;
    Outcome outcome;
};

Job::Job(Requests& windowRequests, Finished onFinished) : requests(windowRequests), finished(std::move(onFinished))
{
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins({});
    layout->addWidget(label = new QLabel);
    label->setTextFormat(Qt::PlainText);
    layout->addWidget(bar = new QProgressBar);
    auto* stop = new QPushButton("Stop");
    stop->setObjectName("stop");
    layout->addWidget(stop);
    connect(stop, &QPushButton::clicked, this, [this] { stopped = true; });
    hide();
}

void Job::start(const QString& doing, std::size_t count, Step step)
{
    proceed(std::make_shared<Work>(Work{doing, count, std::move(step), 0, {}}));
}

void Job::proceed(const std::shared_ptr<Work>& work)
{
    if (isBusy())
        return;
    stopped = false;
    label->setText(work->doing);
    bar->setMaximum(static_cast<int>(work->count));
    show();
    next(work);
}

void Job::next(const std::shared_ptr<Work>& work)
{
    bar->setValue(static_cast<int>(work->handled));
    if (stopped || work->handled == work->count) {
        hide();
        finished(work->doing, work->outcome, stopped);
        return;
    }
    const std::size_t end = std::min(work->handled + BatchSize, work->count);
    requests.ask(
        work->doing, [work, end](Tessaport& tessaport) { return work->step(tessaport, work->handled, end); },
        [this, work, end](const Outcome& part) {
            work->outcome.add(part);
            work->handled = end;
            next(work);
        },
        [this] { hide(); }, [this, work] { proceed(work); });
}

} // namespace DriveWindow
