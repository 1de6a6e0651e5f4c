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

using TestSupport::expectSlots;

template <class... Classes>
constexpr bool haveVirtualDestructors = (std::has_virtual_destructor_v<Classes> && ...);
static_assert(haveVirtualDestructors<QVIOSource, QVSerialSink, QVSerialSource, QVKeyValueSink, QVKeyValueFormatter,
    QVKeyValueSource>);

TEST(SlotOrder, FollowsTheContractInQVIOSource)
{
    expectSlots(2, &QVIOSource::tell, &QVIOSource::seek, &QVIOSource::read, &QVIOSource::failed, &QVIOSource::size);
}

TEST(SlotOrder, FollowsTheContractInQVSerialSink)
{
    expectSlots(2, &QVSerialSink::writeUInt32, &QVSerialSink::writeDouble, &QVSerialSink::writeString,
        &QVSerialSink::writeBool, &QVSerialSink::writeBytes);
}

TEST(SlotOrder, FollowsTheContractInQVSerialSource)
{
    expectSlots(2, &QVSerialSource::readUInt32, &QVSerialSource::readDouble, &QVSerialSource::readString,
        &QVSerialSource::readBool, &QVSerialSource::readBytes);
}

TEST(SlotOrder, FollowsTheContractInQVKeyValueSinkAndFormatter)
{
    expectSlots(2, &QVKeyValueSink::prepare, &QVKeyValueSink::putUInt32, &QVKeyValueSink::putDouble,
        &QVKeyValueSink::putString, &QVKeyValueSink::putBool, &QVKeyValueSink::putUInt64, &QVKeyValueSink::finish,
        &QVKeyValueFormatter::beginRecord, &QVKeyValueFormatter::endRecord);
}

TEST(SlotOrder, FollowsTheContractInQVKeyValueSource)
{
    expectSlots(2, &QVKeyValueSource::queryFlag, &QVKeyValueSource::getUInt32, &QVKeyValueSource::getDouble,
        &QVKeyValueSource::getString, &QVKeyValueSource::getBool, &QVKeyValueSource::getUInt64);
}

} // namespace
} // namespace Quorvex::Velmora::IO
