#include <algorithm>
#include <mutex>
#include <set>
#include <string>
#include <thread>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

#ifndef _WIN32
#include <sys/wait.h>
#include <unistd.h>
#endif

#include <velmora/api/UuidAccess.h>
#include "velmora/api/QVUUID.h"

using namespace Quorvex::Velmora::Common;

static_assert(std::is_void_v<decltype(std::declval<QVUUID&>() = std::declval<const QVUUID&>())>);
static_assert(std::is_convertible_v<const char*, QVUUID>);
static_assert(std::is_nothrow_default_constructible_v<QVUUID> && std::is_nothrow_copy_constructible_v<QVUUID>);

namespace
{

constexpr const char* Sample = "01234567-89ab-cdef-0123-456789abcdef";
constexpr const char* AllZero = "00000000-0000-0000-0000-000000000000";

std::string textOf(const QVUUID& id) { return id.getString().c_str(); }

std::vector<std::string> fresh(int count)
{
    std::vector<std::string> texts;
    texts.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
        texts.push_back(textOf(QVUUID()));
    return texts;
}

} // namespace

TEST(QVUUID, IsANewIdentifierByDefault)
{
    std::set<std::string> seen;

    for (int i = 0; i < 100'000; ++i)
        EXPECT_TRUE(seen.insert(textOf(QVUUID())).second);
}

TEST(QVUUID, MakesVersion4Identifiers)
{
    for (int i = 0; i < 1000; ++i) {
        const QVUUID id;
        const std::string text = textOf(id);

        ASSERT_EQ(text.size(), 36U);
        EXPECT_EQ(text[14], '4');
        EXPECT_NE(std::string("89ab").find(text[19]), std::string::npos) << text;
        EXPECT_FALSE(id.isNil());
    }
}

TEST(QVUUID, MakesEveryFreeBitZeroAndOne)
{
    std::array<std::uint8_t, 16> everSet{};
    std::array<std::uint8_t, 16> everClear{};

    for (int i = 0; i < 1000; ++i) {
        const QVUUID id;
        for (std::size_t k = 0; k < 16; ++k) {
            everSet[k] = static_cast<std::uint8_t>(everSet[k] | UuidAccess::bytes(id)[k]);
            everClear[k] = static_cast<std::uint8_t>(everClear[k] | ~UuidAccess::bytes(id)[k]);
        }
    }

    for (std::size_t k = 0; k < 16; ++k) {
        EXPECT_EQ(everSet[k], k == 6 ? 0x4F : k == 8 ? 0xBF : 0xFF) << k;
        EXPECT_EQ(everClear[k], k == 6 ? 0xBF : k == 8 ? 0x7F : 0xFF) << k;
    }
}

TEST(QVUUID, DiffersOnEveryThread)
{
    std::mutex mutex;
    std::set<std::string> seen;
    constexpr int Threads = 32;
    std::vector<std::thread> threads;
    threads.reserve(Threads);

    for (int i = 0; i < Threads; ++i) {
        threads.emplace_back([&] {
            const std::vector<std::string> own = fresh(100);
            const std::lock_guard lock(mutex);
            seen.insert(own.begin(), own.end());
        });
    }
    for (std::thread& thread : threads)
        thread.join();

    EXPECT_EQ(seen.size(), 100U * Threads);
}

#ifndef _WIN32
TEST(QVUUID, DiffersInAForkedChildAndItsSiblings)
{
    (void)QVUUID(); // This thread's generator is seeded before the first fork.
    std::set<std::string> seen;
    for (int child = 0; child < 4; ++child) {
        int ends[2];
        ASSERT_EQ(pipe(ends), 0);
        const pid_t process = fork();
        ASSERT_GE(process, 0);
        if (process == 0) {
            std::string all;
            for (const std::string& text : fresh(8))
                all += text;
            const bool written = write(ends[1], all.data(), all.size()) == static_cast<ssize_t>(all.size());
            _exit(written ? 0 : 1);
        }
        close(ends[1]);
        char text[36];
        for (int i = 0; i < 8; ++i) {
            ASSERT_EQ(read(ends[0], text, sizeof text), 36);
            EXPECT_TRUE(seen.insert(std::string(text, sizeof text)).second);
        }
        close(ends[0]);
        int status = 0;
        ASSERT_EQ(waitpid(process, &status, 0), process);
        EXPECT_EQ(status, 0);
    }

    for (const std::string& text : fresh(8))
        EXPECT_TRUE(seen.insert(text).second);
}
#endif

TEST(QVUUID, ParsesAndReturnsTheTextForm)
{
    const QVUUID id(Sample);

    EXPECT_EQ(textOf(id), Sample);
    EXPECT_EQ(id.getWString(), L"01234567-89ab-cdef-0123-456789abcdef");
    EXPECT_FALSE(id.isNil());
}

TEST(QVUUID, ParsesUpperCaseAndBraces)
{
    EXPECT_TRUE(QVUUID("01234567-89AB-CDEF-0123-456789ABCDEF") == QVUUID(Sample));
    EXPECT_TRUE(QVUUID("{01234567-89ab-cdef-0123-456789abcdef}") == QVUUID(Sample));
}

TEST(QVUUID, IsNilForTheAllZeroIdentifier)
{
    const QVUUID id(AllZero);

    EXPECT_TRUE(id.isNil());
    EXPECT_EQ(textOf(id), AllZero);
    EXPECT_TRUE(UuidAccess::isValid(id));
}

class NoIdentifier : public testing::TestWithParam<const char*>
{
};

TEST_P(NoIdentifier, MakesANilIdentifierWithoutATextForm)
{
    const QVUUID id(GetParam());

    EXPECT_TRUE(id.isNil());
    EXPECT_EQ(textOf(id), "");
    EXPECT_EQ(id.getWString(), L"");
    EXPECT_FALSE(UuidAccess::isValid(id));
}

INSTANTIATE_TEST_SUITE_P(QVUUID, NoIdentifier,
    testing::Values(nullptr, "", "x", "0123456789abcdef0123456789abcdef", "01234567-89ab-cdef-0123-456789abcde",
        "01234567-89ab-cdef-0123-456789abcdef0", "01234567-89ab-cdef-0123-456789abcdeg",
        "01234567089ab-cdef-0123-456789abcdef", "{01234567-89ab-cdef-0123-456789abcdef",
        "(01234567-89ab-cdef-0123-456789abcdef)", " 01234567-89ab-cdef-0123-456789abcdef"));

TEST(QVUUID, CopiesItsValueAndItsValidity)
{
    const QVUUID source(Sample);
    QVUUID target;
    const QVUUID copy(source);
    target = source;

    EXPECT_TRUE(copy == source);
    EXPECT_EQ(textOf(target), Sample);

    target = QVUUID("no identifier");
    EXPECT_EQ(textOf(target), "");
    EXPECT_TRUE(target != source);
}
