// Commands that answer yes or no, or with one string. Each uses the one-shot operation made for it.
#include <memory>

#include "tools/tessaport/commands/Commands.h"
#include "tools/tessaport/items/ItemPaths.h"
#include "tools/tessaport/items/OneCall.h"
#include "tools/tessaport/output/Items.h"
#include "tools/tessaport/output/Json.h"
#include "tools/tessaport/text/Text.h"

namespace Quorvex::Velmora::Tool
{
namespace
{

using namespace TessaportAPI;

void answer(Context& context, const std::string& question, bool yes)
{
    if (context.options.json)
        context.output.line(toLine({{question, yes}}));
    else
        context.output.line(std::vector<Span>{{yes ? "yes" : "no", yes ? Colour::Good : Colour::Bad}});
}

ExitCode codeForAnswer(bool yes, ExitCode no = ExitCode::Failure) { return yes ? ExitCode::Ok : no; }

ExitCode canAddFile(Context& context, const std::string& folder)
{
    const bool can = QvNativeTessaportAPI::canAddFile(nullptr, toQVString(ItemPaths(context).of(folder)));
    if (!can) {
        // A folder that does not exist gets another answer than one that takes no files.
        const std::string reason = context.lastLoggedError();
        static_cast<void>(requireInOneCall(context, folder));
        if (!reason.empty())
            return context.reportStaticFailure("'" + folder + "'");
    }
    answer(context, "canAddFile", can);
    return codeForAnswer(can);
}

ExitCode isOffline(Context& context)
{
    const bool offline = QvNativeTessaportAPI::isOffline(nullptr);
    answer(context, "offline", offline);
    return codeForAnswer(offline);
}

ExitCode areInWorkspace(Context& context, const std::vector<std::string>& paths)
{
    ExitCode code = ExitCode::Ok;
    const auto list = context.options.json ? std::make_unique<JsonList>(context.output) : nullptr;
    ItemPaths localPaths(context);
    for (const std::string& path : paths) {
        bool inWorkspace = false;
        const QVString absolute = toQVString(localPaths.of(path));
        if (QvNativeTessaportAPI::isFileInWorkspace(nullptr, absolute, inWorkspace) != QVCode::Success)
            return context.reportStaticFailure("'" + path + "'");
        if (list != nullptr)
            list->add({{"path", path}, {"inWorkspace", inWorkspace}});
        else
            context.output.line((inWorkspace ? "yes  " : "no   ") + path);
        if (!inWorkspace)
            code = ExitCode::Failure;
    }
    return code;
}

ExitCode exists(Context& context, const std::string& path)
{
    const bool isThere = findInOneCall(context, path).has_value();
    answer(context, "exists", isThere);
    return codeForAnswer(isThere, ExitCode::NotFound);
}

ExitCode showFullPath(Context& context, const std::string& path)
{
    const std::string full = toUtf8(toQVString(QvNativeTessaportAPI::toTrueFullPath(toWide(toQVString(path)))));
    context.output.line(context.options.json ? toLine({{"path", path}, {"fullPath", full}}) : full);
    return ExitCode::Ok;
}

ExitCode check(Context& context)
{
    if (!QvNativeTessaportAPI::discover(nullptr))
        return context.reportStaticFailure("the sync application cannot be reached");
    if (!QvNativeTessaportAPI::canAccessDriveData(nullptr))
        return context.reportStaticFailure("the drives cannot be read");
    if (context.options.json)
        context.output.line(toLine({{"driveDataAccessible", true}}));
    else
        context.output.line("The sync application answers, and its drives can be read.");
    return ExitCode::Ok;
}

void addPathQuestion(const CommandLine& line, const char* name, const char* description, const char* example,
    const char* pathName, ExitCode (*ask)(Context&, const std::string&))
{
    const auto path = std::make_shared<std::string>();
    addCommand(line, name, description, example, [path, ask](Context& context) { return ask(context, *path); })
        .addOption("path", *path, "A path with either slash, or DRIVE/PATH")
        .valueName(pathName)
        .required();
}

} // namespace

void addQuestionCommands(const CommandLine& line)
{
    addPathQuestion(line, "can-add-file", "Say whether a folder takes new files (0: yes, 1: no)",
        "tessaport can-add-file FOLDER", "FOLDER", canAddFile);
    addPathQuestion(line, "exists", "Say whether there is an item at a path (0: yes, 3: no)", "tessaport exists PATH",
        "PATH", exists);
    addPathQuestion(line, "full-path", "Show the absolute, normalised form of a path, as .NET returns it",
        "tessaport full-path ../plans", "PATH", showFullPath);
    addCommand(line, "offline", "Say whether a drive is offline (0: yes, 1: no)", "tessaport offline", isOffline);
    addCommand(line, "check", "Say whether the drives can be read", "tessaport check", check);
    auto [command, paths] = addCommand<std::vector<std::string>>(line, "in-workspace",
        "Say which local files are in a workspace (0: all of them, 1: not all)", "tessaport in-workspace PATH PATH",
        areInWorkspace);
    command.addPaths(paths, "Local files, with either slash").required();
}

} // namespace Quorvex::Velmora::Tool
