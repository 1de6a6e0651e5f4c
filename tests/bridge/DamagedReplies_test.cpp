// Replies that do not hold what their lengths promise. The sanitizers report any read beyond the end of one.
#include <cstdint>
#include <string>
#include <typeinfo>

#include <gtest/gtest.h>

#include <velmora/api/Exceptions.h>
#include <velmora/bridge/ExceptionTranslation.h>
#include <velmora/bridge/FullPath.h>
#include "tests/bridge/EveryRequest.h"

namespace Quorvex::Velmora::TestSupport
{
namespace
{

using namespace TessaportAPI;
using Common::QVBuffer;
using Bridge = Tessaport::QvManagedTessaportService;

std::string nameOf(const ::testing::TestParamInfo<RequestCase>& info) { return info.param.name; }

class DamagedReply : public ::testing::TestWithParam<RequestCase>
{
protected:
    // Returns whether the request succeeded; it may only fail with ApiException.
    bool isRead()
    {
        const std::int64_t handles = table.liveHandles();
        bool succeeded = false;
        try {
            GetParam().run(bridge, inputs);
            succeeded = true;
        } catch (const ApiException& e) {
            EXPECT_EQ(typeid(e), typeid(ApiException));
            EXPECT_STRNE(e.what(), "");
        }
        EXPECT_EQ(table.liveHandles(), handles) << "handles were left behind";
        EXPECT_EQ(table.liveReplies(), 0) << "a reply was left behind";
        EXPECT_EQ(table.wrongReleases(), 0);
        return succeeded;
    }

    const PackedReply& whole() const { return GetParam().reply; }

    FakeEntryPoints table;
    Bridge bridge;
    RequestInputs inputs{table, bridge};
};

TEST_P(DamagedReply, WithoutDamageIsRead)
{
    table.replyWith(whole());

    EXPECT_TRUE(isRead());
}

TEST_P(DamagedReply, CutShortAtAnyByteIsAnApiException)
{
    for (std::size_t size = 0; size < whole().bytes.size(); ++size) {
        table.replyWith(whole().cutTo(size));
        EXPECT_EQ(isRead(), !GetParam().readsReply) << size << " of " << whole().bytes.size() << " bytes";
    }
}

TEST_P(DamagedReply, WithAnyWordChangedIsReadOrAnApiException)
{
    const std::uint32_t odd[] = {0, 1, 2, 3, 4, 7, 8, 16, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF, 0xFFFFFFFE, 0x10000};
    for (std::size_t offset = 0; offset + 4 <= whole().handlesOffset; offset += 4) {
        for (const std::uint32_t value : odd) {
            table.replyWith(whole().withWordAt(offset, value));
            (void)isRead();
        }
        for (const std::uint32_t step : {1U, ~0U}) {
            table.replyWith(whole().withWordAt(offset, whole().wordAt(offset) + step));
            (void)isRead();
        }
    }
}

TEST_P(DamagedReply, WithAWrongOffsetOfItsHandlesIsAnApiException)
{
    if (!GetParam().readsReply)
        return;
    const auto size = static_cast<std::uint32_t>(whole().bytes.size());
    for (const std::uint32_t place : {0U, 8U, 12U, 17U, 20U, size + 8, size + 1, 0xFFFFFFF8U}) {
        table.replyWith(whole().withWordAt(8, place));
        EXPECT_FALSE(isRead()) << place;
    }
    table.replyWith(whole().withWordAt(12, 1));
    EXPECT_FALSE(isRead());
    table.replyWith(whole().withWordAt(12, 0xFFFFFFFF));
    EXPECT_FALSE(isRead());
}

TEST_P(DamagedReply, WithFewerHandlesThanItsRecordsNeedIsAnApiException)
{
    const std::uint32_t count = whole().wordAt(4);
    for (std::uint32_t fewer = 0; fewer < count; ++fewer) {
        table.replyWith(whole().withWordAt(4, fewer));
        EXPECT_FALSE(isRead()) << fewer;
    }
}

TEST_P(DamagedReply, WithMoreHandlesThanItHasRoomForIsAnApiException)
{
    if (!GetParam().readsReply)
        return;
    for (const std::uint32_t more : {whole().wordAt(4) + 1, 0x20000000U, 0x80000000U, 0xFFFFFFFFU}) {
        table.replyWith(whole().withWordAt(4, more));
        EXPECT_FALSE(isRead()) << more;
    }
}

TEST_P(DamagedReply, AtAnUnalignedAddressIsAnApiException)
{
    for (const std::size_t shift : {1U, 2U, 4U, 7U}) {
        table.replyWith(whole(), shift);
        EXPECT_EQ(isRead(), !GetParam().readsReply) << shift;
    }
}

TEST_P(DamagedReply, WithoutDataIsAnApiException)
{
    table.replyWithNothing();

    EXPECT_EQ(isRead(), !GetParam().readsReply);
}

TEST_P(DamagedReply, LeavesTheConnectionUsable)
{
    table.replyWith(whole().cutTo(20));
    (void)isRead();

    table.replyWith(whole());
    EXPECT_TRUE(isRead());
}

INSTANTIATE_TEST_SUITE_P(Of, DamagedReply, ::testing::ValuesIn(everyRequest()), nameOf);

class DamagedList : public ::testing::Test
{
protected:
    FakeEntryPoints table;
    Bridge bridge;
};

// A trusted count would reserve room for four billion records.
TEST_F(DamagedList, WithAHugeCountFailsWithoutReservingMemoryForIt)
{
    table.replyWith(ReplyBuilder().item(1).build(0xFFFFFFFF));

    EXPECT_THROW((void)bridge.getItemsByRelativePaths({}, {}), ApiException);
}

TEST_F(DamagedList, WithAHugeCountInACommandResultFails)
{
    table.replyWith(ReplyBuilder().number(1).number(0xFFFFFFFF).item(1).build(1));

    EXPECT_THROW((void)bridge.syncFiles({}), ApiException);
}

TEST_F(DamagedList, ThatCountsFewerRecordsThanItHoldsReleasesTheOtherHandles)
{
    table.replyWith(ReplyBuilder().item(1).item(2).item(3).build(1));
    const std::int64_t handles = table.liveHandles();
    {
        const auto items = bridge.getItemsByRelativePaths({}, {});
        EXPECT_EQ(items.GetSize(), 1U);
        EXPECT_EQ(table.liveHandles(), handles + 1);
    }
    EXPECT_EQ(table.liveHandles(), handles);
    EXPECT_EQ(table.wrongReleases(), 0);
}

TEST_F(DamagedList, WithStringLengthsWhoseSumOverflowsFails)
{
    const PackedReply reply = ReplyBuilder().item(1).build(1);
    PackedReply changed = reply.withWordAt(40, 0xFFFFFFFF).withWordAt(44, 0xFFFFFFFF).withWordAt(48, 0xFFFFFFFF);
    table.replyWith(changed);

    EXPECT_THROW((void)bridge.getItemsByRelativePaths({}, {}), ApiException);
}

class Pieces : public DamagedList
{
protected:
    const PackedReply first = ReplyBuilder().item(1).item(2).build(2);
    const PackedReply second = ReplyBuilder().item(3).item(4).item(5).build(3);
    const PackedReply last = ReplyBuilder().item(6).build(1);

    QVBuffer<Item> list() { return bridge.getItemsByRelativePaths({}, {}); }

    void expectNothingLeft(std::int64_t handlesBefore)
    {
        EXPECT_EQ(table.liveHandles(), handlesBefore);
        EXPECT_EQ(table.liveReplies(), 0);
        EXPECT_EQ(table.wrongReleases(), 0);
    }
};

TEST_F(Pieces, FormOneListInOrderWhateverCountWasAnnounced)
{
    const std::int64_t handles = table.liveHandles();
    const std::uint64_t announcements[] = {0, 1, 5, 6, 7, 1'000'000'000'000, UINT64_MAX};
    for (const std::uint64_t announced : announcements) {
        table.replyInPieces({first, second, last}, announced);

        const QVBuffer<Item> items = list();

        ASSERT_EQ(items.GetSize(), 6U);
        for (std::uint32_t i = 0; i < 6; ++i)
            EXPECT_EQ(items[i]->lastModifiedDate, 1'700'000'001 + i);
        EXPECT_EQ(table.liveHandles(), handles + 6);
    }
    expectNothingLeft(handles);
}

TEST_F(Pieces, MayBeEmpty)
{
    const PackedReply empty = ReplyBuilder().build(0);
    table.replyInPieces({empty, first, empty, empty});

    EXPECT_EQ(list().GetSize(), 2U);
}

TEST_F(Pieces, CutShortAnywhereFailTheRequest)
{
    const std::int64_t handles = table.liveHandles();
    for (std::size_t size = 0; size < second.bytes.size(); ++size) {
        table.replyInPieces({first, second.cutTo(size), last});
        EXPECT_THROW((void)list(), ApiException) << size;
        expectNothingLeft(handles);
    }
    for (std::size_t size = 0; size < last.bytes.size(); ++size) {
        table.replyInPieces({first, second, last.cutTo(size)});
        EXPECT_THROW((void)list(), ApiException) << size;
        expectNothingLeft(handles);
    }
}

TEST_F(Pieces, ThatAreDamagedFailTheRequestWithThatMessage)
{
    table.replyInPieces({first, second.cutTo(20), last});

    try {
        (void)list();
        FAIL() << "nothing was thrown";
    } catch (const ApiException& e) {
        EXPECT_NE(std::string(e.what()).find("damaged"), std::string::npos) << e.what();
    }
}

TEST_F(Pieces, BeforeAFailureAreDiscarded)
{
    const std::int64_t handles = table.liveHandles();
    table.replyInPieces({first, second, message(u"half way")});
    table.failWith(2);

    EXPECT_THROW((void)list(), TessaportForcedUpdateException);

    expectNothingLeft(handles);
}

// Each piece of a result is a result of its own.
class PiecesOfAResult : public Pieces
{
protected:
    const PackedReply head = ReplyBuilder().number(1).number(1).item(1).number(0).number(0).build(1);
    const PackedReply middle = ReplyBuilder().number(1).number(1).item(2).number(2).item(3).item(4).number(0).build(1);
    const PackedReply tail = ReplyBuilder().number(1).number(0).number(0).number(1).item(5).build(1);
};

TEST_F(PiecesOfAResult, FormItsListsInOrder)
{
    const std::int64_t handles = table.liveHandles();
    table.replyInPieces({head, middle, tail});
    {
        const CommandResult result = bridge.syncFiles({});

        EXPECT_TRUE(result.isSuccess);
        ASSERT_EQ(result.itemsCreated.GetSize(), 2U);
        ASSERT_EQ(result.itemsDeleted.GetSize(), 2U);
        ASSERT_EQ(result.itemsUpdated.GetSize(), 1U);
        EXPECT_EQ(result.itemsCreated[1]->lastModifiedDate, 1'700'000'002);
        EXPECT_EQ(result.itemsDeleted[0]->lastModifiedDate, 1'700'000'003);
        EXPECT_EQ(result.itemsUpdated[0]->lastModifiedDate, 1'700'000'005);
        EXPECT_EQ(table.liveHandles(), handles + 5);
    }
    expectNothingLeft(handles);
}

TEST_F(PiecesOfAResult, CutShortAnywhereFailTheRequest)
{
    const std::int64_t handles = table.liveHandles();
    for (std::size_t size = 0; size < middle.bytes.size(); ++size) {
        table.replyInPieces({head, middle.cutTo(size), tail});
        EXPECT_THROW((void)bridge.syncFiles({}), ApiException) << size;
    }
    expectNothingLeft(handles);
}

class FailedRequest : public DamagedList
{
protected:
    void expectMessage(const wchar_t* expected)
    {
        try {
            bridge.discover();
            FAIL() << "nothing was thrown";
        } catch (const ApiException& e) {
            EXPECT_STREQ(e.getErrorMessage(), expected);
        }
        EXPECT_EQ(table.liveReplies(), 0);
    }
};

TEST_F(FailedRequest, HasTheMessageOfItsReply)
{
    table.replyWith(message(u"off"));
    table.failWith(3);

    EXPECT_THROW(bridge.discover(), TessaportNotRunningException);
    expectMessage(L"off");
}

TEST_F(FailedRequest, WithoutAReplyHasAnEmptyMessage)
{
    table.replyWithNothing();
    table.failWith(3);

    EXPECT_THROW(bridge.discover(), TessaportNotRunningException);
    expectMessage(L"");
}

TEST_F(FailedRequest, WithADamagedMessageIsAnApiException)
{
    const PackedReply whole = message(u"message");
    for (std::size_t size = 0; size < whole.bytes.size(); ++size) {
        table.replyWith(whole.cutTo(size));
        table.failWith(3);
        EXPECT_THROW(bridge.discover(), ApiException) << size;
        EXPECT_EQ(table.liveReplies(), 0);
    }
}

TEST_F(FailedRequest, WithAnUnknownRowIsAnApiException)
{
    for (const std::int32_t row : {-1, 7, INT32_MIN, INT32_MAX}) {
        table.replyWith(message(u"odd"));
        table.failWith(row);
        expectMessage(L"odd");
    }
}

TEST_F(DamagedList, InPlaceOfANewServiceIsAnApiException)
{
    const std::int64_t handles = table.liveHandles();
    const PackedReply whole = ReplyBuilder().handle().build(1);
    for (std::size_t size = 0; size < whole.bytes.size(); ++size) {
        table.replyTo(Tessaport::VelmoraRequest::CreateService, whole.cutTo(size));
        EXPECT_THROW(Bridge(), ApiException) << size;
        EXPECT_EQ(table.liveReplies(), 0);
        EXPECT_EQ(table.liveHandles(), handles);
    }
}

TEST_F(FailedRequest, ToCreateAServiceLeavesNothingBehind)
{
    const std::int64_t handles = table.liveHandles();
    table.replyWith(message(u"no"));
    table.failWith(4);

    EXPECT_THROW(Bridge(), TessaportNotInstalledException);
    EXPECT_THROW(Bridge(reinterpret_cast<HWND>(std::intptr_t{1})), TessaportNotInstalledException);

    EXPECT_EQ(table.liveHandles(), handles);
    EXPECT_EQ(table.liveReplies(), 0);
}

TEST_F(DamagedList, InPlaceOfAFullPathIsAnApiException)
{
    const PackedReply whole = ReplyBuilder().string(u"/a/b").build(1);
    for (std::size_t size = 0; size < whole.bytes.size(); ++size) {
        table.replyWith(whole.cutTo(size));
        EXPECT_THROW(Tessaport::runWhileHandlingExceptions([] { (void)Tessaport::getFullPath(L"b"); }), ApiException);
    }
    table.replyWith(whole);
    EXPECT_EQ(Tessaport::getFullPath(L"b"), L"/a/b");
    EXPECT_EQ(table.liveReplies(), 0);
}

} // namespace
} // namespace Quorvex::Velmora::TestSupport
