#include "tests/support/SampleReplies.h"

namespace Quorvex::Velmora::TestSupport::SampleReplies
{

PackedReply nothing() { return ReplyBuilder().build(0); }

PackedReply flag() { return ReplyBuilder().number(1).build(1); }

PackedReply version() { return ReplyBuilder().string(u"12.5.1234.5678 (final)").build(1); }

PackedReply items(int count)
{
    ReplyBuilder builder;
    for (int i = 1; i <= count; ++i)
        builder.item(i);
    return builder.build(static_cast<std::uint32_t>(count));
}

PackedReply outcome()
{
    return ReplyBuilder().number(1).number(1).item(1).number(0).number(2).item(2).item(3).build(1);
}

PackedReply drives()
{
    ReplyBuilder builder;
    for (int i = 1; i <= 2; ++i)
        builder.string(u"Quorvex.DataSourceType.Drive").number(1).uuid().string(u"Drive").string(u"D:\\Drive").item(i);
    return builder.build(2);
}

PackedReply commands()
{
    ReplyBuilder builder;
    for (const std::uint32_t imageSize : {0U, 4U})
        builder.string(u"Command")
            .string(u"command.id")
            .number(1)
            .number(0)
            .number(1)
            .number(0)
            .number(imageSize)
            .handle();
    return builder.build(2);
}

PackedReply foundItems()
{
    ReplyBuilder builder;
    for (int i = 1; i <= 2; ++i)
        builder.number(1).number(1).item(i).string(u"key");
    return builder.number(2).number(0).string(u"gone").build(3);
}

PackedReply permanentIds()
{
    return ReplyBuilder().number(1).handle().string(u"permanent").number(2).nullHandle().string(u"").build(2);
}

PackedReply propertyDefinitions()
{
    return ReplyBuilder()
        .string(u"Size")
        .string(u"size")
        .number(1)
        .number(2)
        .string(u"T")
        .string(u"t")
        .number(3)
        .number(4)
        .build(2);
}

PackedReply propertyValues()
{
    return ReplyBuilder().string(u"rel").uuid().string(u"SourceObjectId").string(u"urn:of a certain length").build(1);
}

// Eight bytes, as two numbers.
PackedReply commandImage() { return ReplyBuilder().number(8).number(0x04030201).number(0x08070605).build(1); }

PackedReply fullPath() { return ReplyBuilder().string(u"/a/path/of/a/certain/length").build(1); }

} // namespace Quorvex::Velmora::TestSupport::SampleReplies
