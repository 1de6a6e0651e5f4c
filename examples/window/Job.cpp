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

Job::Job(Requests& windowRequests, Finished onFinished) : requests(windowRequests), finished(std::move(onFinished))
{
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    label = new QLabel;
    label->setTextFormat(Qt::PlainText);
    bar = new QProgressBar;
    auto* stop = new QPushButton("Stop");
    stop->setObjectName("stop");
    layout->addWidget(label);
    layout->addWidget(bar);
    layout->addWidget(stop);
    connect(stop, &QPushButton::clicked, this, [this] { stopped = true; });
    hide();
}

void Job::start(const QString& work, std::size_t things, Step handle)
{
    ++number;
    stopped = false;
    doing = work;
    handled = 0;
    count = things;
    step = std::move(handle);
    outcome = {};
    label->setText(doing);
    bar->setMaximum(static_cast<int>(count));
    setBusy(true);
    next();
}

void Job::next()
{
    bar->setValue(static_cast<int>(handled));
    if (stopped || handled == count) {
        setBusy(false);
        finished(doing, outcome, stopped);
        return;
    }
    const std::size_t end = std::min(handled + BatchSize, count);
    requests.ask(
        doing, [step = step, first = handled, end](Tessaport& tessaport) { return step(tessaport, first, end); },
        [this, end](const Outcome& part) {
            outcome.add(part);
            handled = end;
            next();
        },
        [this, ofJob = number] { resume(ofJob); }, [this] { setBusy(false); });
}

void Job::resume(unsigned ofJob)
{
    if (busy || ofJob != number)
        return;
    setBusy(true);
    next();
}

void Job::setBusy(bool isNow)
{
    busy = isNow;
    setVisible(isNow);
}

} // namespace DriveWindow
