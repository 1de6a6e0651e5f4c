// The recipe of a model for Qt's views.
#include <QAbstractListModel>
#include <cstdint>
#include <functional>
#include <future>
#include <string>
#include <utility>

#include <velmora/native/RequestQueue.h>
#include "examples/window/Text.h"
#include "tests/window/ScriptedWindow.h"

namespace Quorvex::Velmora::WindowTest
{
namespace
{

using namespace TessaportAPI;
using DriveWindow::postToThisThread;
using DriveWindow::toQString;

// The names of the items in a folder, for a view.
class FolderContents : public QAbstractListModel
{
public:
    // Shows another folder once it has been listed. Until then, and if that fails, the model keeps what it has.
    void show(const Item& folder, const std::function<void(const ApiException&)>& failed)
    {
        const auto request = [folder](QvNativeTessaportAPI& tessaport) { return tessaport.getFolderContents(folder); };
        queue.ask(request, [this, failed, number = ++latest](std::future<QVBuffer<Item>> answer) {
            if (number != latest)
                return; // The user has chosen another folder meanwhile.
            try {
                replace(answer.get());
            } catch (const ApiException& failure) {
                failed(failure);
            }
        });
    }

    int rowCount(const QModelIndex& parent = {}) const override
    {
        return parent.isValid() ? 0 : static_cast<int>(items.GetSize());
    }

    QVariant data(const QModelIndex& index, int role) const override
    {
        if (!index.isValid() || role != Qt::DisplayRole)
            return {};
        return toQString(items[static_cast<std::uint32_t>(index.row())]->name);
    }

private:
    void replace(QVBuffer<Item> listed)
    {
        beginResetModel();
        items = std::move(listed);
        endResetModel();
    }

    QVBuffer<Item> items;
    unsigned latest = 0;
    // The last member: once it is destroyed, no answer arrives.
    RequestQueue queue{nullptr, postToThisThread()};
};

class FolderContentsModel : public ScriptedWindow
{
protected:
    FolderContentsModel() { root.id = QvNativeTessaportAPI().getDrives()[0]->root.id; }

    void show()
    {
        model.show(root, [this](const ApiException& failure) { message = failure.getErrorMessage(); });
    }

    [[nodiscard]] QString names() const
    {
        QStringList found;
        for (int row = 0; row < model.rowCount(); ++row)
            found += model.index(row).data().toString();
        return found.join(' ');
    }

    Item root;
    FolderContents model;
    std::wstring message;
};

TEST_F(FolderContentsModel, HasTheItemsOnceTheyAreListed)
{
    show();

    EXPECT_EQ(names(), "");
    EXPECT_TRUE(waitFor([&] { return names() == "a.txt b.txt"; })) << names().toStdString();
}

TEST_F(FolderContentsModel, KeepsWhatItHasAndSaysWhyAListingFailed)
{
    show();
    ASSERT_TRUE(waitFor([&] { return names() == "a.txt b.txt"; }));
    service.fail("GetFolderContents", TestSupport::failure("InvalidOperationException", L"no"));

    show();

    EXPECT_TRUE(waitFor([&] { return message == L"no"; }));
    EXPECT_EQ(names(), "a.txt b.txt");
}

TEST_F(FolderContentsModel, IgnoresAnAnswerThatIsLate)
{
    service.answerInTurn("GetFolderContents", {Json::object({{"value", Json::array({fileNamed(11, "early")})}}),
                                                  Json::object({{"value", Json::array({fileNamed(12, "late")})}})});
    int resets = 0;
    QObject::connect(&model, &FolderContents::modelReset, [&resets] { ++resets; });

    show();
    show();

    EXPECT_TRUE(waitFor([&] { return names() == "late"; })) << names().toStdString();
    EXPECT_EQ(resets, 1);
}

} // namespace
} // namespace Quorvex::Velmora::WindowTest
