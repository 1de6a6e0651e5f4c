#include "EveryRequest.h"

#include "../support/Buffers.h"

namespace Quorvex::Velmora::TestSupport
{
namespace
{

using Bridge = Tessaport::QvManagedTessaportService;

PackedReply itemList() { return ReplyBuilder().item(1).item(2).item(3).build(3); }

PackedReply outcomes()
{
    return ReplyBuilder().number(1).number(1).item(1).number(0).number(2).item(2).item(3).build(1);
}

PackedReply commandList()
{
    ReplyBuilder builder;
    for (const std::uint32_t imageSize : {0U, 4U})
        builder.text(u"Command").text(u"command.id").number(1).number(0).number(1).number(0).number(imageSize).handle();
    return builder.build(2);
}

PackedReply driveList()
{
    ReplyBuilder builder;
    for (int i = 1; i <= 2; ++i)
        builder.text(u"Quorvex.DataSourceType.Drive").number(1).uuid().text(u"Drive").text(u"D:\\Drive").item(i);
    return builder.build(2);
}

PackedReply permanentIdResults()
{
    return ReplyBuilder().number(1).handle().text(u"pid").number(2).nullHandle().text(u"").build(2);
}

// Results of lookups of items, by whatever key.
PackedReply foundItems()
{
    return ReplyBuilder().number(1).number(1).item(1).text(u"key").number(2).number(0).text(u"gone").build(2);
}

PackedReply definitions()
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

PackedReply values() { return ReplyBuilder().text(u"rel").uuid().text(u"P").text(u"value of it").build(1); }

std::vector<RequestCase> made()
{
    using Inputs = const RequestInputs&;
    const PackedReply flag = ReplyBuilder().number(1).build(1);
    const PackedReply version = ReplyBuilder().text(u"12.5.1234.5678 (final)").build(1);
    const PackedReply folder = ReplyBuilder().item(1).build(1);
    const PackedReply nothing = ReplyBuilder().build(0);
    return {
        {"discover", nothing, false, [](Bridge& b, Inputs) { b.discover(); }},
        {"getVersion", version, true, [](Bridge& b, Inputs) { (void)b.getVersion(); }},
        {"getDrives", driveList(), true, [](Bridge& b, Inputs) { (void)b.getDrives(); }},
        {"getChildFolders", itemList(), true, [](Bridge& b, Inputs in) { (void)b.getChildFolders(in.item.id); }},
        {"getFolderContents", itemList(), true, [](Bridge& b, Inputs in) { (void)b.getFolderContents(in.item.id); }},
        {"addFiles", outcomes(), true, [](Bridge& b, Inputs in) { (void)b.addFiles(in.item.id, in.texts); }},
        {"getOrCreateFolder", folder, true,
            [](Bridge& b, Inputs in) { (void)b.getOrCreateFolder(in.item.id, *in.texts[0]); }},
        {"canAddFiles", flag, true, [](Bridge& b, Inputs in) { (void)b.canAddFiles(in.item.id, in.texts); }},
        {"isFileInWorkspace", flag, true, [](Bridge& b, Inputs in) { (void)b.isFileInWorkspace(*in.texts[0]); }},
        {"syncFiles", outcomes(), true, [](Bridge& b, Inputs in) { (void)b.syncFiles(in.items); }},
        {"deleteFilesOrFolders", outcomes(), true,
            [](Bridge& b, Inputs in) { (void)b.deleteFilesOrFolders(in.items); }},
        {"getItemsByWorkspacePaths", foundItems(), true,
            [](Bridge& b, Inputs in) { (void)b.getItemsByWorkspacePaths(in.texts); }},
        {"getItemsByRelativePaths", itemList(), true,
            [](Bridge& b, Inputs in) { (void)b.getItemsByRelativePaths({}, in.texts); }},
        {"fileClosedWithinRunningProcess", nothing, false,
            [](Bridge& b, Inputs in) { b.fileClosedWithinRunningProcess(1, *in.texts[0]); }},
        {"getPropertyDefinitions", definitions(), true, [](Bridge& b, Inputs) { (void)b.getPropertyDefinitions({}); }},
        {"getStringPropertyValues", values(), true,
            [](Bridge& b, Inputs in) { (void)b.getStringPropertyValues(in.ids, in.texts); }},
        {"getCommands", commandList(), true, [](Bridge& b, Inputs in) { (void)b.getCommands(in.context); }},
        {"executeCommand", outcomes(), true,
            [](Bridge& b, Inputs in) { (void)b.executeCommand(in.command, in.context); }},
        {"getPermanentIds", permanentIdResults(), true, [](Bridge& b, Inputs in) { (void)b.getPermanentIds(in.ids); }},
        {"getItemsByPermanentIds", foundItems(), true,
            [](Bridge& b, Inputs in) { (void)b.getItemsByPermanentIds(in.texts); }},
    };
}

} // namespace

RequestInputs::RequestInputs(FakeEntryPoints& table, Bridge& bridge)
    : texts(TestSupport::texts({L"a/b/c and some more", L"d"}))
{
    table.replyWith(itemList());
    item = *bridge.getItemsByRelativePaths({}, {})[0];
    items.Append(item);
    ids.Append(item.id);
    context.itemId = item.id;
    context.itemIds.Append(item.id);
    table.replyWith(commandList());
    command = *bridge.getCommands(context)[1];
}

const std::vector<RequestCase>& everyRequest()
{
    static const std::vector<RequestCase> requests = made();
    return requests;
}

} // namespace Quorvex::Velmora::TestSupport
