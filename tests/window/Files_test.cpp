// Opening, adding and syncing files.
#include <QApplication>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QMimeData>

#include <velmora/api/Interop.h>
#include "tests/window/LocalWindow.h"

namespace Quorvex::Velmora::WindowTest
{
namespace
{

class Files : public LocalWindow
{
protected:
    /// Drops something on the list, as the desktop does.
    void drop(const QList<QUrl>& urls)
    {
        QMimeData data;
        data.setUrls(urls);
        QDragEnterEvent enter({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&*window, &enter);
        ASSERT_TRUE(enter.isAccepted());
        QDropEvent dropped({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&*window, &dropped);
    }

    /// A file outside all drives.
    fs::path outside(const std::string& name, const std::string& content)
    {
        fs::create_directories(demo.path() / "outside");
        writeText(demo.path() / "outside" / fs::u8path(name), content);
        return demo.path() / "outside" / fs::u8path(name);
    }

    static QUrl urlOf(const fs::path& file) { return QUrl::fromLocalFile(QString::fromStdString(file.u8string())); }
};

TEST_F(Files, AreOpenedWithTheirProgram)
{
    openFirstDrive();

    emit part<QTableView>("list").activated(rowOf("README.txt"));

    ASSERT_EQ(opened.size(), 1U);
    EXPECT_EQ(fs::u8path(opened[0].toLocalFile().toStdString()), demo.here("README.txt"));
}

TEST_F(Files, WithoutAProgramAreReported)
{
    programsOpen = false;
    openFirstDrive();

    emit part<QTableView>("list").activated(rowOf("README.txt"));

    EXPECT_TRUE(waitForMessage("No program has opened “README.txt”."));
}

TEST_F(Files, OnTheServerOnlyAreNotOpened)
{
    openFirstDrive();
    emit part<QTableView>("list").activated(rowOf("survey"));
    ASSERT_TRUE(waitForRow("2024-05-01.csv"));

    emit part<QTableView>("list").activated(rowOf("2024-05-01.csv"));

    EXPECT_TRUE(opened.empty());
    EXPECT_TRUE(waitForMessage("“2024-05-01.csv” is only on the server. Sync it, then open it."));
}

TEST_F(Files, AreAddedWhenTheyAreDropped)
{
    openFirstDrive();

    drop({urlOf(outside("größe.txt", "dropped"))});

    EXPECT_TRUE(waitForState("größe.txt", "In sync")) << noticeText().toStdString();
    EXPECT_EQ(readText(demo.here("größe.txt")), "dropped");
    EXPECT_EQ(readText(demo.onServer("größe.txt")), "dropped");
    EXPECT_TRUE(messages().contains("Add files to “Harbour Project”: 0 updated, 1 created"));
}

TEST_F(Files, AreAddedByTheDialog)
{
    openFirstDrive();
    chosenFile = QString::fromStdString(outside("chosen.txt", "chosen").u8string());

    trigger("Add files…");

    EXPECT_TRUE(waitForState("chosen.txt", "In sync"));
}

TEST_F(Files, ReplaceOthersOnlyIfTheUserAgrees)
{
    const std::string before = readText(demo.here("README.txt"));
    openFirstDrive();
    const QUrl file = urlOf(outside("README.txt", "another one"));

    answer = false;
    drop({file});
    ASSERT_TRUE(waitFor([this] { return !questions.isEmpty(); }));
    EXPECT_EQ(questions, QStringList("Replace “README.txt” in “Harbour Project”?"));
    EXPECT_EQ(readText(demo.here("README.txt")), before);

    answer = true;
    drop({file});
    EXPECT_TRUE(waitForMessage("Add files"));
    EXPECT_EQ(readText(demo.here("README.txt")), "another one");
}

TEST_F(Files, ReplaceNoneUnaskedThatCameAfterTheListWasRead)
{
    openFirstDrive();
    const QUrl file = urlOf(outside("late.txt", "dropped"));
    writeText(demo.here("late.txt"), "came later");

    answer = false;
    drop({file});

    ASSERT_TRUE(waitFor([this] { return !questions.isEmpty(); }));
    EXPECT_EQ(readText(demo.here("late.txt")), "came later");
}

TEST_F(Files, FromElsewhereAreReported)
{
    openFirstDrive();

    drop({QUrl("https://example.com/a.txt")});

    EXPECT_TRUE(waitForMessage("“https://example.com/a.txt” is no local file. Save it first, then add it."));
}

TEST_F(Files, ThatCannotBeAddedAreReportedWithTheReason)
{
    openFirstDrive();
    const fs::path missing = outside("missing.txt", "");
    fs::remove(missing);

    drop({urlOf(missing)});

    EXPECT_TRUE(waitForNotice("Cannot add files to “Harbour Project” completely.")) << noticeText().toStdString();
    EXPECT_TRUE(messages().contains("missing.txt")) << messages().toStdString();
}

TEST_F(Files, AreSyncedWithTheFolder)
{
    openFirstDrive();
    ASSERT_FALSE(fs::exists(demo.here("survey/2024-05-01.csv")));

    trigger("Sync");

    EXPECT_TRUE(waitForMessage("Sync the folder “Harbour Project”: ")) << noticeText().toStdString();
    EXPECT_TRUE(fs::exists(demo.here("survey/2024-05-01.csv")));
    EXPECT_TRUE(fs::exists(demo.onServer("survey/notes.txt")));
    EXPECT_EQ(noticeText(), "");
}

TEST_F(Files, ThatAreSelectedAreSyncedAlone)
{
    writeText(demo.here("one.txt"), "1");
    writeText(demo.here("two.txt"), "2");
    openFirstDrive();
    select("one.txt");

    trigger("Sync");

    EXPECT_TRUE(waitForState("one.txt", "In sync"));
    EXPECT_TRUE(messages().contains("Sync “one.txt”: "));
    EXPECT_FALSE(fs::exists(demo.onServer("two.txt")));
}

} // namespace
} // namespace Quorvex::Velmora::WindowTest
