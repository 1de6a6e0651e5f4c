#include "Notice.h"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <utility>

namespace DriveWindow
{

Notice::Notice() : layout(new QGridLayout(this)), what(addLine("what")), remedy(addLine("remedy"))
{
    setObjectName("notice");
    setFrameShape(QFrame::StyledPanel);
    QFont bold = what->font();
    bold.setBold(true);
    what->setFont(bold);
    layout->setColumnStretch(0, 1);
    auto* retry = new QPushButton("Try again");
    retry->setObjectName("retry");
    layout->addWidget(retry, 1, 1);
    auto* dismiss = new QPushButton("Close");
    layout->addWidget(dismiss, 2, 1);
    connect(dismiss, &QPushButton::clicked, this, &QWidget::hide);
    connect(retry, &QPushButton::clicked, this, [this] {
        hide();
        if (again)
            std::exchange(again, nullptr)();
    });
    hide();
}

QLabel* Notice::addLine(const char* name)
{
    auto* label = new QLabel;
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    // A long word must not widen the window.
    label->setMinimumWidth(100);
    layout->addWidget(label, layout->rowCount(), 0);
    return label;
}

void Notice::show(const Failure& failure, std::function<void()> tryAgain)
{
    what->setText(failure.what);
    remedy->setText(failure.remedy);
    again = std::move(tryAgain);
    QFrame::show();
}

} // namespace DriveWindow
