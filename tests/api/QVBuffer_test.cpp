#include "velmora/api/QVBuffer.h"

#include <cstddef>
#include <cstdint>
#include <new>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include <velmora/api/QVCode.h>
#include <velmora/api/QVString.h>

using namespace Quorvex::Velmora::Common;

static_assert(static_cast<int>(QVCode::Success) == 100 && static_cast<int>(QVCode::Failure) == 101);
static_assert(sizeof(QVCode) == 4);
static_assert(std::is_same_v<decltype(std::declval<QVBuffer<int>&>()[0U]), int*>);
static_assert(std::is_same_v<decltype(std::declval<const QVBuffer<int>&>()[0U]), const int*>);
static_assert(std::is_same_v<decltype(std::declval<const QVBuffer<int>&>().GetSize()), std::uint32_t>);
static_assert(std::is_nothrow_move_constructible_v<QVBuffer<int>> && std::is_nothrow_move_assignable_v<QVBuffer<int>>);

namespace
{

// Counts constructions and copies of elements, and makes a copy fail on request.
struct Tracked {
    static inline int alive = 0;
    static inline int constructed = 0;
    static inline int copied = 0;
    static inline int copiesUntilFailure = -1;

    static void reset()
    {
        constructed = copied = 0;
        copiesUntilFailure = -1;
    }

    Tracked()
    {
        ++alive;
        ++constructed;
    }
    Tracked(int value) : Tracked() { this->value = value; }
    Tracked(const Tracked& other) : value(other.value)
    {
        countCopy();
        ++alive;
    }
    // Fails halfway, after the value was copied.
    Tracked& operator=(const Tracked& other)
    {
        value = other.value;
        countCopy();
        return *this;
    }
    ~Tracked() { --alive; }

    static void countCopy()
    {
        if (copiesUntilFailure == 0)
            throw std::bad_alloc();
        if (copiesUntilFailure > 0)
            --copiesUntilFailure;
        ++copied;
    }

    int value = -1;
};

template <class T>
std::vector<T> valuesOf(const QVBuffer<T>& buffer)
{
    return std::vector<T>(buffer.begin(), buffer.end());
}

std::vector<int> numbersOf(const QVBuffer<Tracked>& buffer)
{
    std::vector<int> numbers;
    for (const Tracked& element : buffer)
        numbers.push_back(element.value);
    return numbers;
}

template <class T = int>
QVBuffer<T> numbered(int count)
{
    QVBuffer<T> buffer;
    for (int i = 0; i < count; ++i)
        buffer.Append(static_cast<T>(i));
    return buffer;
}

// From outside, the capacity is visible as the number of elements that can be appended before the addresses change.
std::vector<std::uint32_t> sizesAtWhichElementsMove(int appended)
{
    std::vector<std::uint32_t> sizes;
    QVBuffer<int> buffer;
    const int* place = nullptr;
    for (int i = 0; i < appended; ++i) {
        buffer.Append(i);
        if (buffer[0] != place)
            sizes.push_back(buffer.GetSize());
        place = buffer[0];
    }
    return sizes;
}

} // namespace

TEST(QVBuffer, IsEmptyByDefault)
{
    QVBuffer<int> buffer;

    EXPECT_EQ(buffer.GetSize(), 0U);
    EXPECT_EQ(buffer[0], nullptr);
    EXPECT_EQ(buffer.begin(), buffer.end());
}

TEST(QVBuffer, ReturnsNullForAnIndexNotLessThanTheSize)
{
    QVBuffer<int> buffer = numbered(3); // Capacity 4.

    EXPECT_EQ(*buffer[2], 2);
    EXPECT_EQ(buffer[3], nullptr);
    EXPECT_EQ(buffer[4], nullptr);
    EXPECT_EQ(buffer[0xFFFFFFFFU], nullptr);
    EXPECT_EQ(std::as_const(buffer)[3], nullptr);
}

TEST(QVBuffer, AppendsAfterItsElements) { EXPECT_EQ(valuesOf(numbered(5)), (std::vector<int>{0, 1, 2, 3, 4})); }

TEST(QVBuffer, DoublesItsCapacity)
{
    EXPECT_EQ(sizesAtWhichElementsMove(40), (std::vector<std::uint32_t>{1, 2, 3, 5, 9, 17, 33}));
}

TEST(QVBuffer, HasCapacity4AfterTheThirdElementAndKeepsTheFirstTwo)
{
    Tracked::reset();
    {
        const QVBuffer<Tracked> buffer = numbered<Tracked>(3);

        EXPECT_EQ(numbersOf(buffer), (std::vector<int>{0, 1, 2}));
        EXPECT_EQ(Tracked::alive, 4); // Every element up to the capacity is alive.
    }
    EXPECT_EQ(Tracked::alive, 0);
}

TEST(QVBuffer, AppendsOneOfItsOwnElements)
{
    QVBuffer<QVString> buffer;
    buffer.Append(L"first");
    for (int i = 0; i < 9; ++i)
        buffer.Append(*buffer[0]);

    for (const QVString& text : buffer)
        EXPECT_STREQ(text.w_str(), L"first");
}

TEST(QVBuffer, ReservesWithoutChangingItsSize)
{
    Tracked::reset();
    QVBuffer<Tracked> buffer = numbered<Tracked>(2);

    buffer.Reserve(10);
    const Tracked* const place = buffer[0];
    buffer.Reserve(5);
    for (int i = 2; i < 10; ++i)
        buffer.Append(i);

    EXPECT_EQ(buffer[0], place);
    EXPECT_EQ(Tracked::alive, 10);
    EXPECT_EQ(numbersOf(buffer), (std::vector<int>{0, 1, 2, 3, 4, 5, 6, 7, 8, 9}));
}

TEST(QVBuffer, MovesWithoutTouchingItsElements)
{
    QVBuffer<Tracked> source = numbered<Tracked>(3);
    const Tracked* const place = source[0];
    Tracked::reset();

    QVBuffer<Tracked> target(std::move(source));
    QVBuffer<Tracked> assigned = numbered<Tracked>(1);
    Tracked::reset();
    assigned = std::move(target);

    EXPECT_EQ(assigned[0], place);
    EXPECT_EQ(Tracked::copied + Tracked::constructed, 0);
    EXPECT_EQ(source.GetSize(), 0U);
    EXPECT_EQ(source[0], nullptr);
    EXPECT_EQ(target.GetSize(), 0U);
    EXPECT_EQ(Tracked::alive, 4); // The target's previous elements were destroyed.
}

TEST(QVBuffer, CanBeReusedAfterAMove)
{
    QVBuffer<int> source = numbered(3);
    const QVBuffer<int> target(std::move(source));

    source.Append(7);

    EXPECT_EQ(valuesOf(source), std::vector<int>{7});
}

TEST(QVBuffer, IsUnchangedBySelfAssignment)
{
    QVBuffer<int> buffer = numbered(3);
    QVBuffer<int>& same = buffer;

    buffer = std::move(same);
    EXPECT_EQ(&(buffer = std::as_const(same)), &buffer);

    EXPECT_EQ(valuesOf(buffer), (std::vector<int>{0, 1, 2}));
}

TEST(QVBuffer, CopiesElementByElement)
{
    const QVBuffer<QVString> source = [] {
        QVBuffer<QVString> made;
        made.Append(L"one");
        made.Append(L"two");
        return made;
    }();
    QVBuffer<QVString> copy(source);
    QVBuffer<QVString> assigned;
    assigned.Append(L"former");

    assigned = source;
    *copy[0] = L"changed";

    EXPECT_STREQ(source[0]->w_str(), L"one");
    EXPECT_STREQ(assigned[1]->w_str(), L"two");
    EXPECT_EQ(assigned.GetSize(), 2U);
}

TEST(QVBuffer, CopiesNoSpareCapacity)
{
    const QVBuffer<Tracked> source = numbered<Tracked>(5);
    const int aliveBefore = Tracked::alive;

    const QVBuffer<Tracked> copy(source);
    QVBuffer<Tracked> assigned;
    assigned = source;

    EXPECT_EQ(Tracked::alive - aliveBefore, 2 * 5);
    EXPECT_EQ(numbersOf(assigned), (std::vector<int>{0, 1, 2, 3, 4}));
}

TEST(QVBuffer, GrowsWithTheFirstElementAppendedToACopy)
{
    const QVBuffer<int> source = numbered(5); // Capacity 8.
    QVBuffer<int> copy(source);
    const int* const place = copy[0];

    copy.Append(5);

    EXPECT_NE(copy[0], place);
    EXPECT_EQ(valuesOf(copy), (std::vector<int>{0, 1, 2, 3, 4, 5}));
}

TEST(QVBuffer, KeepsNoArrayWhenAnEmptyOneIsCopied)
{
    QVBuffer<Tracked> source;
    source.Reserve(8);
    const int aliveBefore = Tracked::alive;

    const QVBuffer<Tracked> copy(source);

    EXPECT_EQ(Tracked::alive, aliveBefore);
    EXPECT_EQ(copy.begin(), nullptr);
}

TEST(QVBuffer, DefaultConstructsTheElementsBeyondTheSize)
{
    QVBuffer<Tracked> buffer = numbered<Tracked>(3);

    EXPECT_EQ(buffer.Append().value, -1);
}

TEST(QVBuffer, HandsOutADefaultElementAfterAFailedAppend)
{
    constexpr int MostCopies = 10;
    for (const int size : {0, 3, 4}) { // Without an array, with room for one more, full.
        for (int failingCopy = 0; failingCopy < MostCopies; ++failingCopy) {
            QVBuffer<Tracked> buffer = numbered<Tracked>(size);
            const Tracked element(77);
            Tracked::copiesUntilFailure = failingCopy;
            bool failed = false;
            try {
                buffer.Append(element);
            } catch (const std::bad_alloc&) {
                failed = true;
            }
            Tracked::reset();
            if (!failed)
                break;

            EXPECT_EQ(buffer.GetSize(), static_cast<std::uint32_t>(size));
            EXPECT_EQ(buffer.Append().value, -1) << "size " << size << ", copy " << failingCopy;
            ASSERT_LT(failingCopy + 1, MostCopies);
        }
    }
    EXPECT_EQ(Tracked::alive, 0);
}

TEST(QVBuffer, HasNoElementsAndNoArrayAfterItsDestruction)
{
    using Buffer = QVBuffer<std::uint64_t>;
    alignas(Buffer) static unsigned char storage[sizeof(Buffer)];
    auto* const buffer = new (storage) Buffer(numbered<std::uint64_t>(3));

    buffer->~Buffer();

    // Volatile, because the compiler may assume that no one reads a destroyed object.
    const volatile unsigned char* const bytes = storage;
    for (std::size_t i = 0; i < sizeof(Buffer); ++i)
        EXPECT_EQ(bytes[i], 0) << i;
}

TEST(QVBuffer, IsUnchangedWhenAnElementCannotBeCopied)
{
    for (int failingCopy = 0; failingCopy < 5; ++failingCopy) {
        QVBuffer<Tracked> buffer = numbered<Tracked>(4);
        const Tracked element(4);
        Tracked::copiesUntilFailure = failingCopy;

        EXPECT_THROW(buffer.Append(element), std::bad_alloc) << failingCopy;
        EXPECT_THROW(QVBuffer<Tracked>(numbered<Tracked>(0)) = buffer, std::bad_alloc);

        Tracked::reset();
        EXPECT_EQ(numbersOf(buffer), (std::vector<int>{0, 1, 2, 3}));
    }
    EXPECT_EQ(Tracked::alive, 0);
}
