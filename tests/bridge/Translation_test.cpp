// The native exceptions for those that the sync application throws.
#include <string>
#include <typeinfo>

#include <gtest/gtest.h>

#include <velmora/api/Exceptions.h>
#include <velmora/bridge/ExceptionTranslation.h>
#include <velmora/native/QvNativeTessaportAPI.h>
#include "tests/support/ScriptedTest.h"

namespace Quorvex::Velmora::TestSupport
{
namespace
{

using namespace TessaportAPI;

struct Row {
    const char* managed;
    const std::type_info* native;
};

std::string nameOf(const ::testing::TestParamInfo<Row>& info) { return info.param.managed; }

class ExceptionTranslationRow : public ScriptedTest, public ::testing::WithParamInterface<Row>
{
};

TEST_P(ExceptionTranslationRow, ThrowsTheNativeExceptionWithTheManagedMessage)
{
    QvNativeTessaportAPI connection;
    service.fail("Discover", failure(GetParam().managed, L"Das L\xE4uft nicht \x4E2D \"quoted\"\n"));

    try {
        connection.discover();
        FAIL() << "nothing was thrown";
    } catch (const ApiException& e) {
        EXPECT_EQ(typeid(e), *GetParam().native);
        EXPECT_STREQ(e.getErrorMessage(), L"Das L\xE4uft nicht \x4E2D \"quoted\"\n");
        EXPECT_STREQ(e.what(), "Das L\xC3\xA4uft nicht \xE4\xB8\xAD \"quoted\"\n");
    }
}

INSTANTIATE_TEST_SUITE_P(EveryKind, ExceptionTranslationRow,
    ::testing::Values(Row{"TessaportApiRequiresUpdateException", &typeid(TessaportApiRequiresUpdateException)},
        Row{"TessaportForcedUpdateException", &typeid(TessaportForcedUpdateException)},
        Row{"TessaportNotRunningException", &typeid(TessaportNotRunningException)},
        Row{"TessaportNotInstalledException", &typeid(TessaportNotInstalledException)},
        Row{"TessaportRequiresUpdateException", &typeid(TessaportRequiresUpdateException)},
        Row{"DerivedApiRequiresUpdateException", &typeid(TessaportApiRequiresUpdateException)},
        Row{"DerivedForcedUpdateException", &typeid(TessaportForcedUpdateException)},
        Row{"DerivedNotRunningException", &typeid(TessaportNotRunningException)},
        Row{"DerivedNotInstalledException", &typeid(TessaportNotInstalledException)},
        Row{"DerivedRequiresUpdateException", &typeid(TessaportRequiresUpdateException)},
        Row{"ArgumentException", &typeid(ApiException)}, Row{"InvalidOperationException", &typeid(ApiException)},
        Row{"TimeoutException", &typeid(ApiException)}, Row{"Exception", &typeid(ApiException)},
        Row{"OutOfMemoryException", &typeid(ApiException)}, Row{"FileNotFoundException", &typeid(ApiException)},
        Row{"KeyNotFoundException", &typeid(ApiException)}, Row{"TypeLoadException", &typeid(ApiException)}),
    nameOf);

class ExceptionTranslation : public ScriptedTest
{
protected:
    // The message with which a request fails when the service throws this.
    std::wstring messageOf(const Json& failure)
    {
        service.fail("Discover", failure);
        try {
            connection.discover();
        } catch (const ApiException& e) {
            return e.getErrorMessage();
        }
        return L"nothing was thrown";
    }

    QvNativeTessaportAPI connection;
};

// In the scripted service this type derives from TessaportRequiresUpdateException, so that both rows fit.
TEST_F(ExceptionTranslation, ReportsTheFirstMatchingRowForADerivedException)
{
    service.fail("Discover", failure("TessaportApiRequiresUpdateException", L"newer"));

    EXPECT_THROW(connection.discover(), TessaportApiRequiresUpdateException);
}

TEST_F(ExceptionTranslation, IsCaughtAsStandardException)
{
    service.fail("Discover", failure("TessaportNotRunningException", L"off"));

    EXPECT_THROW(connection.discover(), std::exception);
}

TEST_F(ExceptionTranslation, LeavesTheConnectionUsable)
{
    service.answer("GetVersion", "7.1");
    (void)messageOf(failure("TessaportNotRunningException", L"off"));

    EXPECT_EQ(connection.getVersion(), QVString(L"7.1"));
}

TEST_F(ExceptionTranslation, KeepsAnEmptyMessageEmpty)
{
    EXPECT_EQ(messageOf(failure("TessaportForcedUpdateException", L"")), L"");
}

TEST_F(ExceptionTranslation, KeepsAHugeMessageComplete)
{
    const std::wstring huge(3'000'000, L'\x263A');

    EXPECT_EQ(messageOf(failure("InvalidOperationException", huge)), huge);
}

TEST_F(ExceptionTranslation, KeepsCharactersBeyondTheBasicPlane)
{
    EXPECT_EQ(messageOf(failure("InvalidOperationException", L"\U0001F600 \U0010FFFF")), L"\U0001F600 \U0010FFFF");
}

TEST_F(ExceptionTranslation, KeepsUnpairedSurrogatesInTheWideMessage)
{
    EXPECT_EQ(messageOf(failure("InvalidOperationException", L"\xD800 x \xDFFF")), L"\xD800 x \xDFFF");
}

TEST_F(ExceptionTranslation, GivesBadConversionForAMessageWithoutANarrowForm)
{
    service.fail("Discover", failure("InvalidOperationException", L"\xD800"));

    try {
        connection.discover();
        FAIL() << "nothing was thrown";
    } catch (const ApiException& e) {
        EXPECT_STREQ(e.what(), "bad conversion");
    }
}

TEST_F(ExceptionTranslation, EndsAMessageAtItsFirstZeroCharacter)
{
    EXPECT_EQ(messageOf(failure("InvalidOperationException", std::wstring_view(L"ab\0cd", 5))), L"ab");
}

TEST_F(ExceptionTranslation, CarriesTheMessageOfTheOuterExceptionOnly)
{
    Json outer = failure("InvalidOperationException", L"outer");
    outer["inner"] = failure("TimeoutException", L"inner");

    EXPECT_EQ(messageOf(outer), L"outer");
}

// Hosts decide by the kind, so a message that cannot be read must not hide it.
TEST_F(ExceptionTranslation, KeepsTheKindOfAnExceptionWhoseMessageCannotBeRead)
{
    service.fail("Discover", failure("UnreadableMessageException", L"unused"));

    EXPECT_THROW(connection.discover(), TessaportNotRunningException);
}

TEST_F(ExceptionTranslation, TreatsANullMessageAsAnEmptyOne)
{
    EXPECT_EQ(messageOf(failure("NullMessageException", L"unused")), L"");
}

TEST_F(ExceptionTranslation, ReportsAFailedConstructorAndLeavesNoService)
{
    service.fail("TessaportService", failure("TessaportNotInstalledException", L"absent"));
    const std::int64_t handles = countHandles();

    EXPECT_THROW(QvNativeTessaportAPI(), TessaportNotInstalledException);
    EXPECT_THROW(QvNativeTessaportAPI(reinterpret_cast<HWND>(std::intptr_t{7})), TessaportNotInstalledException);

    EXPECT_EQ(countHandles(), handles);
}

TEST_F(ExceptionTranslation, ConnectsOnceTheServiceCanBeMade)
{
    service.fail("TessaportService", failure("TessaportNotInstalledException", L"absent"));
    EXPECT_THROW(QvNativeTessaportAPI(), TessaportNotInstalledException);

    service.reset();

    EXPECT_EQ(QvNativeTessaportAPI().getVersion(), QVString(L"3.1.4"));
}

TEST(RunWhileHandlingExceptions, RunsTheOperationOnceAndReturns)
{
    int runs = 0;

    Tessaport::runWhileHandlingExceptions([&] { ++runs; });

    EXPECT_EQ(runs, 1);
}

TEST(RunWhileHandlingExceptions, DestroysTheOperationWhenAnExceptionLeaves)
{
    const auto held = std::make_shared<int>(0);

    EXPECT_THROW(Tessaport::runWhileHandlingExceptions([held] { throw Tessaport::ManagedFailure(3, L"off"); }),
        TessaportNotRunningException);

    EXPECT_EQ(held.use_count(), 1);
}

TEST(RunWhileHandlingExceptions, TurnsANativeExceptionIntoApiExceptionWithItsText)
{
    try {
        Tessaport::runWhileHandlingExceptions([] { throw std::length_error("too l\xC3\xB6ng"); });
        FAIL() << "nothing was thrown";
    } catch (const ApiException& e) {
        EXPECT_EQ(typeid(e), typeid(ApiException));
        EXPECT_STREQ(e.getErrorMessage(), L"too l\xF6ng");
    }
}

TEST(RunWhileHandlingExceptions, TreatsAnUnknownRowAsTheLastOne)
{
    for (const std::int32_t row : {-1, 0, 7, 1'000'000}) {
        try {
            Tessaport::runWhileHandlingExceptions([=] { throw Tessaport::ManagedFailure(row, L"text"); });
            FAIL() << "nothing was thrown";
        } catch (const ApiException& e) {
            EXPECT_EQ(typeid(e), typeid(ApiException));
            EXPECT_STREQ(e.getErrorMessage(), L"text");
        }
    }
}

TEST(ThrowHelpers, ThrowTheExceptionOfTheirNameWithSoManyCharacters)
{
    using Helper = void (*)(const wchar_t*, std::size_t);
    const struct {
        Helper helper;
        const std::type_info* type;
    } helpers[] = {
        {Tessaport::throwTessaportApiRequiresUpdateException, &typeid(TessaportApiRequiresUpdateException)},
        {Tessaport::throwTessaportForcedUpdateException, &typeid(TessaportForcedUpdateException)},
        {Tessaport::throwTessaportNotRunningException, &typeid(TessaportNotRunningException)},
        {Tessaport::throwTessaportNotInstalledException, &typeid(TessaportNotInstalledException)},
        {Tessaport::throwTessaportRequiresUpdateException, &typeid(TessaportRequiresUpdateException)},
        {Tessaport::throwApiException, &typeid(ApiException)},
    };
    for (const auto& [helper, type] : helpers) {
        try {
            helper(L"message", 4);
            FAIL() << "nothing was thrown";
        } catch (const ApiException& e) {
            EXPECT_EQ(typeid(e), *type);
            EXPECT_STREQ(e.getErrorMessage(), L"mess");
        }
    }
}

} // namespace
} // namespace Quorvex::Velmora::TestSupport
