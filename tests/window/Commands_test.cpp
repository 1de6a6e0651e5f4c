// The menu of commands.
#include <QAction>
#include <QMenu>

#include "tests/window/LocalWindow.h"

namespace Quorvex::Velmora::WindowTest
{
namespace
{

class Commands : public LocalWindow
{
protected:
    QAction* commandNamed(const QString& name)
    {
        for (QAction* action : openMenu()) {
            if (action->text() == name)
                return action;
        }
        throw std::logic_error("There is no command " + name.toStdString());
    }
};

TEST_F(Commands, HaveIconsGroupsAndADefault)
{
    openFirstDrive();
    select("README.txt");

    QAction* sync = commandNamed("Sync");

    EXPECT_FALSE(sync->icon().isNull());
    EXPECT_TRUE(sync->isEnabled());
    EXPECT_EQ(part<QMenu>("commands").defaultAction(), sync);
    int separators = 0;
    for (QAction* action : part<QMenu>("commands").actions())
        separators += action->isSeparator() ? 1 : 0;
    EXPECT_GT(separators, 0);
    EXPECT_EQ(messages(), "");
}

TEST_F(Commands, AreRunAndCheckedAfterwards)
{
    openFirstDrive();
    select("README.txt");
    EXPECT_FALSE(commandNamed("Lock")->isChecked());

    commandNamed("Lock")->trigger();

    EXPECT_TRUE(waitForState("README.txt", "In sync, locked")) << noticeText().toStdString();
    EXPECT_TRUE(waitForMessage("Run the command “Lock”: "));
    select("README.txt");
    EXPECT_TRUE(commandNamed("Lock")->isChecked());
}

TEST_F(Commands, AreThoseOfTheFolderWithoutASelection)
{
    openFirstDrive();

    EXPECT_TRUE(commandNamed("Sync")->isEnabled());
}

} // namespace
} // namespace Quorvex::Velmora::WindowTest
