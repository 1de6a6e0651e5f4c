#pragma once

#include <QFrame>
#include <functional>

#include "Failure.h"

class QLabel;
class QTextBrowser;

namespace DriveWindow
{

/// The failure of a request, inside the window, with a button that tries again.
class Notice : public QFrame
{
public:
    explicit Notice(QWidget* parent = nullptr);

    void show(const Failure& failure, std::function<void()> tryAgain);

private:
    QLabel* what;
    QLabel* remedy;
    std::function<void()> again;
};

} // namespace DriveWindow
