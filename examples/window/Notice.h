#pragma once

#include <QFrame>
#include <functional>

#include "Failure.h"

class QGridLayout;
class QLabel;

namespace DriveWindow
{

/// The failure of a request, inside the window, with a button that tries again.
class Notice : public QFrame
{
public:
    Notice();

    void show(const Failure& failure, std::function<void()> tryAgain);

private:
    QLabel* addLine(const char* name);

    QGridLayout* layout;
    QLabel* what;
    QLabel* remedy;
    std::function<void()> again;
};

} // namespace DriveWindow
