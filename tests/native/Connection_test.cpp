// Connections: how they are opened, copied and assigned, and what each request passes on and caches.
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <typeinfo>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <velmora/native/ItemCache.h>
#include <velmora/native/QvNativeTessaportAPI.h>
#include "tests/support/BridgeTest.h"

namespace Quorvex::Velmora::TestSupport
{
namespace
{

using namespace TessaportAPI;

HWND window(std::intptr_t value) { return reinterpret_cast<HWND>(value); }

class Connection : public BridgeTest
{
protected:
    Connection() { (void)service.takeCalls(); }

    static bool isCached(int number)
    {
        return findCachedItem(L"D:\\Drive\\Folder\\item " + std::to_wstring(number) + L".txt") != nullptr;
    }

    // Returns the number of the service object behind a connection.
    int serviceOf(QvNativeTessaportAPI& connection)
    {
        (void)service.takeCalls();
        connection.discover();
        return service.takeCall("Discover")["service"];
    }
};

TEST_F(Connection, WithoutAWindowPassesNone)
{
    const QvNativeTessaportAPI connection;

    EXPECT_EQ(service.takeCall("TessaportService")["window"], nullptr);
}

TEST_F(Connection, WithAWindowPassesItOn)
{
    const QvNativeTessaportAPI connection(window(0xABCD));

    EXPECT_EQ(service.takeCall("TessaportService")["window"], 0xABCD);
}

TEST_F(Connection, WithANullWindowPassesNone)
{
    const QvNativeTessaportAPI connection(nullptr);

    EXPECT_EQ(service.takeCall("TessaportService")["window"], nullptr);
}

TEST_F(Connection, CopyIsANewConnectionWithoutAWindow)
{
    QvNativeTessaportAPI source(window(0xABCD));
    const int serviceOfSource = serviceOf(source);

    QvNativeTessaportAPI copy(source);

    EXPECT_EQ(service.takeCall("TessaportService")["window"], nullptr);
    EXPECT_NE(serviceOf(copy), serviceOfSource);
}

TEST_F(Connection, CopyOutlivesItsSource)
{
    auto source = std::make_unique<QvNativeTessaportAPI>(window(0xABCD));
    QvNativeTessaportAPI copy(*source);

    source.reset();

    EXPECT_EQ(copy.getVersion(), QVString(L"3.1.4"));
}

TEST_F(Connection, ReleasesItsServiceWhenDestroyed)
{
    auto connection = std::make_unique<QvNativeTessaportAPI>();
    const int number = serviceOf(*connection);
    EXPECT_THAT(service.collect().services, ::testing::Contains(number));

    connection.reset();

    EXPECT_THAT(service.collect().services, ::testing::Not(::testing::Contains(number)));
}

TEST_F(Connection, SharesTheServiceOfTheConnectionAssignedToIt)
{
    auto source = std::make_unique<QvNativeTessaportAPI>();
    QvNativeTessaportAPI target;
    const int serviceOfSource = serviceOf(*source);
    handlesKept = 1;

    EXPECT_EQ(&(target = *source), &target);

    EXPECT_EQ(serviceOf(target), serviceOfSource);
    source.reset();
    EXPECT_EQ(serviceOf(target), serviceOfSource);
}

TEST_F(Connection, KeepsItsPreviousServiceOpenAfterAnAssignment)
{
    QvNativeTessaportAPI source;
    {
        QvNativeTessaportAPI target;
        const int former = serviceOf(target);
        handlesKept = 1;
        target = source;
        EXPECT_THAT(service.collect().services, ::testing::Contains(former));
    }
    EXPECT_EQ(service.collect().services.size(), 3U);
}

TEST_F(Connection, IsUnchangedBySelfAssignment)
{
    QvNativeTessaportAPI connection;
    const int number = serviceOf(connection);
    QvNativeTessaportAPI& same = connection;

    connection = same;

    EXPECT_EQ(serviceOf(connection), number);
}

// Each request once: which member it calls, and whether the items that it reports are in the cache afterwards.
struct Forwarded {
    const char* member;
    Json answer;
    bool caches;
    std::function<Json(QvNativeTessaportAPI&, const Item&, const Command&)> run;
    // The arguments that the service must have received, by name.
    Json arguments;
};

void PrintTo(const Forwarded& request, std::ostream* stream) { *stream << request.member; }

std::string nameOf(const ::testing::TestParamInfo<Forwarded>& info) { return info.param.member; }

CommandContext contextOfItem(const Item& item)
{
    CommandContext context;
    context.itemId = item.id;
    return context;
}

class ForwardedRequest : public Connection, public ::testing::WithParamInterface<Forwarded>
{
protected:
    Item folder = itemOf(900);
    Command command = commandOf(901);
    QvNativeTessaportAPI connection;
};

TEST_P(ForwardedRequest, AsksTheServiceAndCachesReportedItems)
{
    service.answer(GetParam().member, GetParam().answer);
    (void)service.takeCalls();

    const Json result = GetParam().run(connection, folder, command);

    const Json call = service.takeCall(GetParam().member);
    for (const auto& [name, value] : GetParam().arguments.items())
        EXPECT_EQ(call[name], value) << name;
    EXPECT_TRUE(result);
    EXPECT_EQ(isCached(1), GetParam().caches);
    EXPECT_FALSE(isCached(900));
}

TEST_P(ForwardedRequest, PropagatesExceptionsAndLeavesTheCacheUnchanged)
{
    service.fail(GetParam().member, failure("TessaportForcedUpdateException", L"update first"));

    try {
        (void)GetParam().run(connection, folder, command);
        FAIL() << "nothing was thrown";
    } catch (const ApiException& e) {
        EXPECT_EQ(typeid(e), typeid(TessaportForcedUpdateException));
        EXPECT_STREQ(e.getErrorMessage(), L"update first");
    }

    EXPECT_FALSE(isCached(1));
    EXPECT_TRUE(log.take().empty());
}

Json items() { return Json::array({item(1)}); }
Json driveWithRoot()
{
    Json json = drive(1, DriveType, L"D:\\Drive");
    json["root"] = item(1);
    return Json::array({json});
}

INSTANTIATE_TEST_SUITE_P(Each, ForwardedRequest,
    ::testing::Values(
        Forwarded{"Discover", nullptr, false,
            [](auto& api, auto&&...) {
                api.discover();
                return true;
            },
            {}},
        Forwarded{"GetVersion", "9", false,
            [](auto& api, auto&&...) { return std::as_const(api).getVersion() == QVString(L"9"); }, {}},
        Forwarded{
            "GetDrives", driveWithRoot(), true, [](auto& api, auto&&...) { return api.getDrives().GetSize() == 1; }, {}},
        Forwarded{"GetFolderContents", items(), true,
            [](auto& api, const Item& item, auto&&) { return api.getFolderContents(item).GetSize() == 1; },
            {{"folder", 900}}},
        Forwarded{"GetChildFolders", items(), true,
            [](auto& api, const Item& item, auto&&) { return api.getChildFolders(item).GetSize() == 1; },
            {{"folder", 900}}},
        Forwarded{"GetOrCreateFolder", item(1), true,
            [](auto& api, const Item& item, auto&&) { return api.getOrCreateFolder(item, L"a/b").isFolder; },
            {{"parent", 900}, {"name", "a\\b"}}},
        Forwarded{"AreFilesInWorkspace", {{"flags", Json::array({Json::array({"C:\\a", true})})}}, false,
            [](auto& api, auto&&...) { return api.isFileInWorkspace(L"C:/a"); }, {{"paths", Json::array({"C:\\a"})}}},
        Forwarded{"CanAddFiles", true, false,
            [](auto& api, const Item& item, auto&&) { return api.canAddFiles(item, texts({L"C:/a"})); },
            {{"folder", 900}, {"paths", Json::array({"C:\\a"})}}},
        Forwarded{"AddFiles", outcome(true, items(), items(), items()), false,
            [](auto& api, const Item& item, auto&&) { return api.addFiles(item, texts({L"C:/a"})).isSuccess; },
            {{"folder", 900}, {"paths", Json::array({"C:\\a"})}}},
        Forwarded{"SyncFiles", outcome(true, items(), items(), items()), false,
            [](auto& api, const Item& item, auto&&) { return api.syncFiles(bufferOf<Item>({item})).isSuccess; },
            {{"ids", Json::array({900})}}},
        Forwarded{"DeleteItems", outcome(true, items(), items(), items()), false,
            [](auto& api, const Item& item, auto&&) {
                return api.deleteFilesOrFolders(bufferOf<Item>({item})).isSuccess;
            },
            {{"ids", Json::array({900})}}},
        Forwarded{"GetItemsByRelativePaths", items(), false,
            [](auto& api, auto&&...) {
                return api.getItemsByRelativePaths(QVUUID(DriveId), texts({L"a/b"})).GetSize() == 1;
            },
            {{"driveId", DriveId}, {"paths", Json::array({"a\\b"})}}},
        Forwarded{"GetItemsByWorkspacePaths", Json::array({workspacePathResult(item(1), L"C:\\a", 1)}), true,
            [](auto& api, auto&&...) { return api.getItemsByWorkspacePaths(texts({L"C:/a"})).GetSize() == 1; },
            {{"paths", Json::array({"C:\\a"})}}},
        Forwarded{"FileClosedWithinRunningProcess", nullptr, false,
            [](auto& api, auto&&...) {
                api.fileClosedWithinRunningProcess(12, L"C:/a");
                return true;
            },
            {{"processId", 12}, {"path", "C:\\a"}}},
        Forwarded{"GetPropertyDefinitions", Json::array({{{"id", "P"}, {"displayName", "p"}}}), false,
            [](auto& api, auto&&...) { return api.getPropertyDefinitions(QVUUID(DriveId)).GetSize() == 1; },
            {{"driveId", DriveId}}},
        Forwarded{"GetProperties", propertyValues(Json::array({propertyValue(L"P", 1)})), false,
            [](auto& api, const Item& item, auto&&) {
                return api.getStringPropertyValues(bufferOf<ItemId>({item.id}), texts({L"P/Q"})).GetSize() == 1;
            },
            {{"ids", Json::array({900})}, {"properties", Json::array({"P/Q"})}}},
        Forwarded{"GetCommands", Json::array({command(1)}), false,
            [](auto& api, const Item& item, auto&&) { return api.getCommands(contextOfItem(item)).GetSize() == 1; },
            {{"item", 900}, {"items", Json::array()}, {"window", 0}}},
        Forwarded{"ExecuteCommand", outcome(true, items(), items(), items()), false,
            [](auto& api, const Item& item, const Command& command) {
                return api.executeCommand(command, contextOfItem(item)).isSuccess;
            },
            {{"command", 901}, {"item", 900}}},
        Forwarded{"GetPermanentIds", Json::array({permanentIdResult(1, "p", 1)}), false,
            [](auto& api, const Item& item, auto&&) {
                return api.getPermanentIds(bufferOf<ItemId>({item.id})).GetSize() == 1;
            },
            {{"ids", Json::array({900})}}},
        Forwarded{"GetItemsByPermanentIds", Json::array({itemOfPermanentIdResult(item(1), "p", 1)}), true,
            [](auto& api, auto&&...) { return api.getItemsByPermanentIds(texts({L"p/1"})).GetSize() == 1; },
            {{"permanentIds", Json::array({"p/1"})}}}),
    nameOf);

} // namespace
} // namespace Quorvex::Velmora::TestSupport
