#include "tests/support/SampleReplies.h"

namespace Quorvex::Velmora::TestSupport::SampleReplies
{

PackedReply nothing() { return ReplyBuilder().build(0); }

PackedReply flag() { return ReplyBuilder().number(1).build(1); }

PackedReply version() { return ReplyBuilder().text(u"12.5.1234.5678 (final)").build(1); }

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
        builder.text(u"Quorvex.DataSourceType.Drive").number(1).uuid().text(u"Drive").text(u"D:\\Drive").item(i);
    return builder.build(2);
}

PackedReply commands()
{
    ReplyBuilder builder;
    for (const std::uint32_t imageSize : {0U, 4U})
        builder.text(u"Command").text(u"command.id").number(1).number(0).number(1).number(0).number(imageSize).handle();
    return builder.build(2);
}

PackedReply foundItems()
{
    ReplyBuilder builder;
    for (int i = 1; i <= 2; ++i)
        builder.number(1).number(1).item(i).text(u"key");
    return builder.number(2).number(0).text(u"gone").build(3);
}

PackedReply permanentIds()
{
    return ReplyBuilder().number(1).handle().text(u"permanent").number(2).nullHandle().text(u"").build(2);
}

PackedReply propertyDefinitions()
{
    return ReplyBuilder()
        .text(u"Size")
        .text(u"size")
        .number(1)
        .number(2)
        .text(u"T")
        .text(u"t")
        .number(3)
        .number(4)
        .build(2);
}

PackedReply propertyValues()
{
    return ReplyBuilder().text(u"rel").uuid().text(u"SourceObjectId").text(u"urn:of a certain length").build(1);
}

PackedReply fullPath() { return ReplyBuilder().text(u"/a/path/of/a/certain/length").build(1); }

} // namespace Quorvex::Velmora::TestSupport::SampleReplies
