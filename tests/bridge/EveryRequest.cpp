#include "tests/bridge/EveryRequest.h"

#include <velmora/bridge/CommandImage.h>
#include "tests/support/Buffers.h"
#include "tests/support/SampleReplies.h"

namespace Quorvex::Velmora::TestSupport
{
namespace
{

using Bridge = Tessaport::QvManagedTessaportService;

std::vector<RequestCase> made()
{
    using Inputs = const RequestInputs&;
    namespace Sample = SampleReplies;
    return {
        {"discover", Sample::nothing(), false, [](Bridge& b, Inputs) { b.discover(); }},
        {"getVersion", Sample::version(), true, [](Bridge& b, Inputs) { (void)b.getVersion(); }},
        {"getDrives", Sample::drives(), true, [](Bridge& b, Inputs) { (void)b.getDrives(); }},
        {"getChildFolders", SampleReplies::items(3), true,
            [](Bridge& b, Inputs in) { (void)b.getChildFolders(in.item.id); }},
        {"getFolderContents", SampleReplies::items(3), true,
            [](Bridge& b, Inputs in) { (void)b.getFolderContents(in.item.id); }},
        {"addFiles", Sample::outcome(), true, [](Bridge& b, Inputs in) { (void)b.addFiles(in.item.id, in.texts); }},
        {"getOrCreateFolder", Sample::items(1), true,
            [](Bridge& b, Inputs in) { (void)b.getOrCreateFolder(in.item.id, *in.texts[0]); }},
        {"canAddFiles", Sample::flag(), true, [](Bridge& b, Inputs in) { (void)b.canAddFiles(in.item.id, in.texts); }},
        {"isFileInWorkspace", Sample::flag(), true,
            [](Bridge& b, Inputs in) { (void)b.isFileInWorkspace(*in.texts[0]); }},
        {"syncFiles", Sample::outcome(), true, [](Bridge& b, Inputs in) { (void)b.syncFiles(in.items); }},
        {"deleteFilesOrFolders", Sample::outcome(), true,
            [](Bridge& b, Inputs in) { (void)b.deleteFilesOrFolders(in.items); }},
        {"getItemsByWorkspacePaths", Sample::foundItems(), true,
            [](Bridge& b, Inputs in) { (void)b.getItemsByWorkspacePaths(in.texts); }},
        {"getItemsByRelativePaths", SampleReplies::items(3), true,
            [](Bridge& b, Inputs in) { (void)b.getItemsByRelativePaths({}, in.texts); }},
        {"fileClosedWithinRunningProcess", Sample::nothing(), false,
            [](Bridge& b, Inputs in) { b.fileClosedWithinRunningProcess(1, *in.texts[0]); }},
        {"getPropertyDefinitions", Sample::propertyDefinitions(), true,
            [](Bridge& b, Inputs) { (void)b.getPropertyDefinitions({}); }},
        {"getStringPropertyValues", Sample::propertyValues(), true,
            [](Bridge& b, Inputs in) { (void)b.getStringPropertyValues(in.ids, in.texts); }},
        {"getCommands", SampleReplies::commands(), true, [](Bridge& b, Inputs in) { (void)b.getCommands(in.context); }},
        {"getCommandImage", Sample::commandImage(), true,
            [](Bridge&, Inputs in) { (void)Tessaport::getCommandImage(in.command); }},
        {"executeCommand", Sample::outcome(), true,
            [](Bridge& b, Inputs in) { (void)b.executeCommand(in.command, in.context); }},
        {"getPermanentIds", Sample::permanentIds(), true,
            [](Bridge& b, Inputs in) { (void)b.getPermanentIds(in.ids); }},
        {"getItemsByPermanentIds", Sample::foundItems(), true,
            [](Bridge& b, Inputs in) { (void)b.getItemsByPermanentIds(in.texts); }},
    };
}

} // namespace

RequestInputs::RequestInputs(FakeEntryPoints& table, Bridge& bridge)
    : texts(TestSupport::texts({L"a/b/c and some more", L"d"}))
{
    table.replyWith(SampleReplies::items(3));
    item = *bridge.getItemsByRelativePaths({}, {})[0];
    items.Append(item);
    ids.Append(item.id);
    context.itemId = item.id;
    context.itemIds.Append(item.id);
    table.replyWith(SampleReplies::commands());
    command = *bridge.getCommands(context)[1];
}

const std::vector<RequestCase>& everyRequest()
{
    static const std::vector<RequestCase> requests = made();
    return requests;
}

} // namespace Quorvex::Velmora::TestSupport
