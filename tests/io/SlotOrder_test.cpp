#include <type_traits>

#include <gtest/gtest.h>

#include <velmora/io/QVIOSource.h>
#include <velmora/io/QVKeyValueFormatter.h>
#include <velmora/io/QVKeyValueSource.h>
#include <velmora/io/QVSerialSink.h>
#include <velmora/io/QVSerialSource.h>
#include "tests/support/VirtualTable.h"

namespace Quorvex::Velmora::IO
{
namespace
{

using TestSupport::slotOf;

template <class... Classes>
constexpr bool haveVirtualDestructors = (std::has_virtual_destructor_v<Classes> && ...);
static_assert(haveVirtualDestructors<QVIOSource, QVSerialSink, QVSerialSource, QVKeyValueSink, QVKeyValueFormatter,
    QVKeyValueSource>);

TEST(SlotOrder, OfTheByteSource)
{
    EXPECT_EQ(slotOf(&QVIOSource::tell), 2U);
    EXPECT_EQ(slotOf(&QVIOSource::seek), 3U);
    EXPECT_EQ(slotOf(&QVIOSource::read), 4U);
    EXPECT_EQ(slotOf(&QVIOSource::failed), 5U);
    EXPECT_EQ(slotOf(&QVIOSource::size), 6U);
}

TEST(SlotOrder, OfTheSerialSink)
{
    EXPECT_EQ(slotOf(&QVSerialSink::writeUInt32), 2U);
    EXPECT_EQ(slotOf(&QVSerialSink::writeDouble), 3U);
    EXPECT_EQ(slotOf(&QVSerialSink::writeString), 4U);
    EXPECT_EQ(slotOf(&QVSerialSink::writeBool), 5U);
    EXPECT_EQ(slotOf(&QVSerialSink::writeBytes), 6U);
}

TEST(SlotOrder, OfTheSerialSource)
{
    EXPECT_EQ(slotOf(&QVSerialSource::readUInt32), 2U);
    EXPECT_EQ(slotOf(&QVSerialSource::readDouble), 3U);
    EXPECT_EQ(slotOf(&QVSerialSource::readString), 4U);
    EXPECT_EQ(slotOf(&QVSerialSource::readBool), 5U);
    EXPECT_EQ(slotOf(&QVSerialSource::readBytes), 6U);
}

TEST(SlotOrder, OfTheKeyValueSinkAndFormatter)
{
    EXPECT_EQ(slotOf(&QVKeyValueSink::prepare), 2U);
    EXPECT_EQ(slotOf(&QVKeyValueSink::putUInt32), 3U);
    EXPECT_EQ(slotOf(&QVKeyValueSink::putDouble), 4U);
    EXPECT_EQ(slotOf(&QVKeyValueSink::putString), 5U);
    EXPECT_EQ(slotOf(&QVKeyValueSink::putBool), 6U);
    EXPECT_EQ(slotOf(&QVKeyValueSink::putUInt64), 7U);
    EXPECT_EQ(slotOf(&QVKeyValueSink::finish), 8U);
    EXPECT_EQ(slotOf(&QVKeyValueFormatter::beginRecord), 9U);
    EXPECT_EQ(slotOf(&QVKeyValueFormatter::endRecord), 10U);
}

TEST(SlotOrder, OfTheKeyValueSource)
{
    EXPECT_EQ(slotOf(&QVKeyValueSource::queryFlag), 2U);
    EXPECT_EQ(slotOf(&QVKeyValueSource::getUInt32), 3U);
    EXPECT_EQ(slotOf(&QVKeyValueSource::getDouble), 4U);
    EXPECT_EQ(slotOf(&QVKeyValueSource::getString), 5U);
    EXPECT_EQ(slotOf(&QVKeyValueSource::getBool), 6U);
    EXPECT_EQ(slotOf(&QVKeyValueSource::getUInt64), 7U);
}

} // namespace
} // namespace Quorvex::Velmora::IO
