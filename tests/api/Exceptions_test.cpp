#include "velmora/api/Exceptions.h"

#include <cstdlib>
#include <cwchar>
#include <exception>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>

#include <gtest/gtest.h>

using namespace Quorvex::Velmora::TessaportAPI;

static_assert(std::is_base_of_v<std::exception, ApiException>);
static_assert(std::is_base_of_v<ApiException, ApiExpectedException>);
static_assert(std::is_base_of_v<ApiExpectedException, HttpException>);
static_assert(std::has_virtual_destructor_v<HttpException>);

namespace
{

// Gives access to protected members.
class Inside : public ApiException
{
public:
    using ApiException::ApiException;
    using ApiException::copyInfo;
    using ApiException::givenLength;
};

std::wstring codeOf(const ApiExpectedException& e) { return e.getErrorCode(); }

std::wstring messageOf(const ApiException& e) { return e.getErrorMessage(); }

} // namespace

TEST(ApiException, KeepsNoMoreCharactersThanTheGivenLength)
{
    const ApiException e(L"abcdef", 3);

    EXPECT_STREQ(e.getErrorMessage(), L"abc");
    EXPECT_STREQ(e.what(), "abc");
}

TEST(ApiException, StopsAtTheTerminatorOfAShorterText)
{
    const Inside e(L"abc", 9);

    EXPECT_STREQ(e.getErrorMessage(), L"abc");
    EXPECT_EQ(e.givenLength(), 9U);
}

TEST(ApiException, HasNoMessageIfMadeFromNull)
{
    const Inside e(nullptr, 5);

    EXPECT_EQ(e.getErrorMessage(), nullptr);
    EXPECT_STREQ(e.what(), "");
    EXPECT_EQ(e.givenLength(), 0U);
    EXPECT_EQ(ApiException(e).getErrorMessage(), nullptr);
}

TEST(ApiException, HasAnEmptyMessageByDefault)
{
    const ApiException e;

    EXPECT_STREQ(e.getErrorMessage(), L"");
    EXPECT_STREQ(e.what(), "");
}

TEST(ApiException, ACopyHasTheMessageAndLength0)
{
    const Inside source(L"abc", 3);
    const Inside copy(source);

    EXPECT_STREQ(copy.getErrorMessage(), L"abc");
    EXPECT_NE(copy.getErrorMessage(), source.getErrorMessage());
    EXPECT_EQ(copy.givenLength(), 0U);
    EXPECT_STREQ(Inside(copy).getErrorMessage(), L"");
}

TEST(ApiException, AMoveCopiesAndLeavesTheSourceUnchanged)
{
    Inside source(L"abc", 3);
    const Inside moved(std::move(source));

    EXPECT_STREQ(moved.getErrorMessage(), L"abc");
    EXPECT_EQ(moved.givenLength(), 0U);
    EXPECT_STREQ(source.getErrorMessage(), L"abc");
}

TEST(ApiException, AnAssignmentSharesTheMessageAndCopiesTheLength)
{
    Inside target(L"former", 6);
    {
        const Inside source(L"abc", 3);
        target = source;
        EXPECT_EQ(target.getErrorMessage(), source.getErrorMessage());
    }
    EXPECT_STREQ(target.getErrorMessage(), L"abc");
    EXPECT_STREQ(target.what(), "abc");
    EXPECT_EQ(target.givenLength(), 3U);

    target = Inside(L"moved", 5);
    EXPECT_STREQ(target.what(), "moved");
}

TEST(ApiException, ReturnsTheNarrowFormOfItsNewMessageAfterAnAssignment)
{
    ApiException target(L"former", 6);
    EXPECT_STREQ(target.what(), "former");

    target = ApiException(L"abc", 3);

    EXPECT_STREQ(target.what(), "abc");
}

TEST(ApiException, IsUnchangedBySelfAssignment)
{
    Inside e(L"abc", 3);
    Inside& same = e;

    e = same;
    e = std::move(same);

    EXPECT_STREQ(e.getErrorMessage(), L"abc");
    EXPECT_EQ(e.givenLength(), 3U);
}

TEST(ApiException, ReturnsItsMessageAsUtf8)
{
    const std::wstring message = L"\xE9\x4E2D";

    EXPECT_STREQ(ApiException(message.c_str(), message.size()).what(), "\xC3\xA9\xE4\xB8\xAD");
}

TEST(ApiException, ReturnsBadConversionForAMessageWithoutAUtf8Form)
{
    const wchar_t unpaired[] = {L'a', static_cast<wchar_t>(0xD800), L'b', L'\0'};
    const ApiException e(unpaired, 3);

    EXPECT_STREQ(e.what(), "bad conversion");
    EXPECT_EQ(messageOf(e), unpaired);
}

TEST(ApiException, KeepsTheNarrowFormInPlace)
{
    const ApiException e(L"abc", 3);

    EXPECT_EQ(e.what(), e.what());
}

TEST(ApiException, ThrowsBadAllocForALengthBeyondAllMemory)
{
    EXPECT_THROW(ApiException(L"abc", SIZE_MAX), std::bad_alloc);
    EXPECT_THROW(ApiException(L"abc", SIZE_MAX / sizeof(wchar_t)), std::bad_alloc);
}

TEST(ApiException, CopyInfoReturnsAStringToBeFreed)
{
    Inside e;
    const wchar_t* source = L"abcdef";
    wchar_t* target = nullptr;

    e.copyInfo(source, target, 4);
    const std::unique_ptr<wchar_t, decltype(&std::free)> owner(target, &std::free);
    const wchar_t* none = nullptr;
    wchar_t* cleared = target;
    e.copyInfo(none, cleared, 4);

    EXPECT_STREQ(target, L"abcd");
    EXPECT_EQ(cleared, nullptr);
}

TEST(ApiExpectedException, CutsItsCodeToTheLengthOfTheMessage)
{
    EXPECT_STREQ(HttpException(L"Not found", L"404", 9).getErrorCode(), L"404");
    EXPECT_STREQ(HttpException(L"No", L"Service", 2).getErrorCode(), L"Se");
    EXPECT_EQ(HttpException(L"No", nullptr, 2).getErrorCode(), nullptr);
    EXPECT_STREQ(HttpException().getErrorCode(), L"");
    EXPECT_STREQ(ApiExpectedException().getErrorMessage(), L"");
}

TEST(ApiExpectedException, KeepsTheCodeOfAnExceptionWithoutAMessage)
{
    const ApiExpectedException e(nullptr, L"404", 3);

    EXPECT_EQ(e.getErrorMessage(), nullptr);
    EXPECT_STREQ(e.getErrorCode(), L"404");
}

TEST(ApiExpectedException, ACopyHasAnEmptyMessageAndTheCode)
{
    const HttpException source(L"Not found", L"0123456789", 9);
    const HttpException copy(source);
    HttpException moving(L"Not found", L"0123456789", 9);
    const HttpException moved(std::move(moving));

    EXPECT_STREQ(copy.getErrorMessage(), L"");
    EXPECT_EQ(codeOf(copy), L"012345678");
    EXPECT_STREQ(moved.getErrorMessage(), L"");
    EXPECT_EQ(codeOf(moved), L"012345678");
}

TEST(ApiExpectedException, AnAssignmentCopiesMessageAndCode)
{
    HttpException target(L"former", L"1", 6);
    {
        const HttpException source(L"Not found", L"404", 9);
        target = source;
    }
    EXPECT_EQ(messageOf(target), L"Not found");
    EXPECT_EQ(codeOf(target), L"404");
    // The length was copied too: a copy still has the complete code.
    EXPECT_EQ(codeOf(HttpException(target)), L"404");
}

template <class Exception>
class SyncApplicationException : public testing::Test
{
};

using SyncApplicationExceptions = testing::Types<TessaportNotInstalledException, TessaportNotRunningException,
    TessaportRequiresUpdateException, TessaportApiRequiresUpdateException, TessaportForcedUpdateException>;
TYPED_TEST_SUITE(SyncApplicationException, SyncApplicationExceptions);

TYPED_TEST(SyncApplicationException, IsCaughtAsItselfAsApiExceptionAndAsStdException)
{
    EXPECT_THROW(throw TypeParam(L"abc", 3), TypeParam);
    EXPECT_THROW(throw TypeParam(L"abc", 3), ApiException);
    try {
        throw TypeParam(L"abcdef", 3);
    } catch (const std::exception& e) {
        EXPECT_STREQ(e.what(), "abc");
    }
}

TYPED_TEST(SyncApplicationException, CopiesAndAssignsAsItsBase)
{
    const TypeParam source(L"abc", 3);
    TypeParam target;
    const TypeParam copy(source);
    TypeParam moving(source);
    const TypeParam moved(std::move(moving));
    target = source;

    EXPECT_STREQ(TypeParam().getErrorMessage(), L"");
    EXPECT_STREQ(copy.getErrorMessage(), L"abc");
    EXPECT_STREQ(moved.what(), "");
    EXPECT_EQ(target.getErrorMessage(), source.getErrorMessage());
    target = TypeParam(L"moved", 5);
    EXPECT_STREQ(target.what(), "moved");
}
