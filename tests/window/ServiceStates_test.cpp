// The window while the sync application cannot be used, and afterwards.
#include <QPushButton>
#include <QTest>
#include <QTreeView>

#include "tests/window/LocalWindow.h"

namespace Quorvex::Velmora::WindowTest
{
namespace
{

struct State {
    const char* name;
    const char* why;
    const char* remedy;
};

void PrintTo(const State& state, std::ostream* stream) { *stream << state.name; }

class ServiceStates : public LocalWindow, public testing::WithParamInterface<State>
{
};

TEST_P(ServiceStates, AreShownInTheWindowUntilARetrySucceeds)
{
    demo.setState(GetParam().name);
    openWindow();
    ASSERT_TRUE(waitForNotice("Cannot list the drives: "));
    EXPECT_TRUE(noticeText().contains(GetParam().why)) << noticeText().toStdString();
    EXPECT_TRUE(noticeText().contains(GetParam().remedy)) << noticeText().toStdString();
    EXPECT_EQ(part<QTreeView>("tree").model()->rowCount(), 0);

    demo.setState("running");
    QTest::mouseClick(&part<QPushButton>("retry"), Qt::LeftButton);

    EXPECT_TRUE(waitForRow("README.txt"));
    EXPECT_EQ(noticeText(), "");
}

TEST_P(ServiceStates, ThatBeginLaterKeepWhatIsShown)
{
    openFirstDrive();
    demo.setState(GetParam().name);

    trigger("Refresh");

    ASSERT_TRUE(waitForNotice("Cannot list the folder “Harbour Project”: "));
    EXPECT_TRUE(noticeText().contains(GetParam().why));
    EXPECT_TRUE(column(0).contains("README.txt"));
}

INSTANTIATE_TEST_SUITE_P(Window, ServiceStates,
    testing::Values(State{"not-running", "Tessaport is not running.", "Start Tessaport, then try again."},
        State{"requires-update", "this version of Tessaport is too old.", "Update Tessaport, then try again."},
        State{"forced-update", "an update of Tessaport is waiting", "Let Tessaport install its update"},
        State{"api-requires-update", "do not fit together", "Update both of them"},
        State{"nonsense", "Tessaport reports a failure.", "Try again."}),
    [](const auto& info) {
        QString name = info.param.name;
        return name.remove('-').toStdString();
    });

TEST_F(LocalWindow, SaysThatTheSyncApplicationIsNotInstalled)
{
    fs::remove(demo.path() / "service.json");

    openWindow();

    ASSERT_TRUE(waitForNotice("Tessaport is not installed."));
    EXPECT_TRUE(noticeText().contains("Install Tessaport, then try again."));
}

TEST_F(LocalWindow, SaysThatThereAreNoDrives)
{
    writeText(demo.path() / "drives.json", "[]");

    openWindow();

    EXPECT_TRUE(waitForNotice("There are no drives."));
}

} // namespace
} // namespace Quorvex::Velmora::WindowTest
