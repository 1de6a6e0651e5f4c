// What tests of the window share: a window without a screen, and the desktop that it believes to be on.
#pragma once

#include <QStringList>
#include <QTableView>
#include <QTimer>
#include <QUrl>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "examples/window/Window.h"

namespace Quorvex::Velmora::WindowTest
{

/// Makes the application of the process, with Qt's platform "offscreen", unless it exists.
void startApplication();

/// Gives the parts of a window, which tests look for, names of their objects.
void nameParts(DriveWindow::Window& window);

/// Lets the window work until the condition holds. Returns false if it does not within 20 s.
[[nodiscard]] bool waitFor(const std::function<bool()>& condition);

class WindowTest : public testing::Test
{
protected:
    WindowTest();

    void openWindow();

    /// A part of the window, by the name of its object.
    template <class Part>
    [[nodiscard]] Part& part(const char* name)
    {
        Part* found = window->findChild<Part*>(name);
        if (found == nullptr)
            throw std::logic_error(std::string("The window has no part ") + name);
        return *found;
    }

    /// What the list shows in a column, in its order.
    [[nodiscard]] QStringList column(int column);
    /// The row that shows an item; fails the test if no row does.
    [[nodiscard]] QModelIndex rowOf(const QString& name);
    void select(const QString& name);
    /// Clicks an action of the tool bar.
    void trigger(const QString& action);
    /// The failure that the window shows now; empty without one.
    [[nodiscard]] QString noticeText();
    [[nodiscard]] QString messages();
    /// Opens the menu of commands and returns its entries once they have been read.
    [[nodiscard]] QList<QAction*> openMenu();

    [[nodiscard]] bool waitForRow(const QString& name);
    [[nodiscard]] bool waitForNotice(const QString& part);
    [[nodiscard]] bool waitForMessage(const QString& part);
    /// Waits until an item has a state in the list.
    [[nodiscard]] bool waitForState(const QString& name, const QString& state);

    std::vector<QUrl> opened;
    bool programsOpen = true;
    /// What the user does in dialogs.
    QString chosenFile;
    bool answer = true;
    /// What dialogs have asked.
    QStringList questions;
    std::optional<DriveWindow::Window> window;

private:
    void answerDialog();

    QTimer dialogTimer;
};

} // namespace Quorvex::Velmora::WindowTest
