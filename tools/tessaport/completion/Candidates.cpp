#include "tools/tessaport/completion/Candidates.h"

#include <map>
#include <set>

#include "tools/tessaport/completion/Position.h"
#include "tools/tessaport/home/Faults.h"
#include "tools/tessaport/text/Text.h"

namespace Quorvex::Velmora::Tool
{
namespace
{

using namespace TessaportAPI;

using Candidates = std::vector<Candidate>;

Candidates commandsIn(const CLI::App& app)
{
    Candidates candidates;
    for (const CLI::App* command : app.get_subcommands([](const CLI::App* c) { return !c->get_group().empty(); }))
        candidates.push_back({command->get_name(), command->get_description()});
    return candidates;
}

Candidates optionsOf(const CLI::App& command)
{
    Candidates candidates;
    for (const CLI::App* owner = &command; owner != nullptr; owner = owner->get_parent()) {
        for (const CLI::Option* option : owner->get_options()) {
            if (owner != &command && option == owner->get_help_ptr())
                continue;
            for (const std::string& name : option->get_lnames())
                candidates.push_back({"--" + name, option->get_description()});
            for (const std::string& name : option->get_snames())
                candidates.push_back({'-' + name, option->get_description()});
        }
    }
    return candidates;
}

Candidates files(Context&) { return {{AnyFile, ""}}; }

Candidates folders(Context&) { return {{AnyFolder, ""}}; }

Candidates shells(Context&) { return {{"bash", ""}, {"zsh", ""}, {"fish", ""}}; }

Candidates states(Context&)
{
    Candidates candidates;
    for (const ServiceStateName& state : ServiceStates)
        candidates.push_back({state.name, state.meaning});
    return candidates;
}

Candidates yesOrNo(Context&) { return {{"yes", ""}, {"no", ""}}; }

Candidates requests(Context&)
{
    Candidates candidates;
    for (const RequestName& request : RequestNames) {
        candidates.push_back({request.name, request.meaning});
        if (request.alias != nullptr)
            candidates.push_back({request.alias, request.meaning});
    }
    return candidates;
}

Candidates failures(Context&)
{
    Candidates candidates;
    for (const FailureKind& kind : failureKinds())
        candidates.push_back({kind.name, kind.meaning});
    return candidates;
}

Candidates drives(Context& context)
{
    Candidates candidates;
    for (const Drive& drive : context.connection().getDrives())
        candidates.push_back({toUtf8(drive.name), toUtf8(drive.driveType)});
    return candidates;
}

/// Files, and the drives that a path may begin with.
Candidates paths(Context& context)
{
    Candidates candidates = files(context);
    try {
        for (const Candidate& drive : drives(context))
            candidates.push_back({drive.word + '/', drive.description});
    } catch (const std::exception&) {
        // Files are completed without the sync application.
        return candidates;
    }
    return candidates;
}

Candidates colours(Context&) { return {{"auto", ""}, {"always", ""}, {"never", ""}}; }

Candidates driveTypes(Context& context)
{
    std::set<std::string> types;
    for (const Drive& drive : context.connection().getDrives())
        types.insert(toUtf8(drive.driveType));
    Candidates candidates;
    for (const std::string& type : types)
        candidates.push_back({type, ""});
    return candidates;
}

Candidates properties(Context& context)
{
    std::map<std::string, std::string> names;
    for (const Drive& drive : context.connection().getDrives()) {
        for (const PropertyDefinition& definition : context.connection().getPropertyDefinitions(drive.id))
            names[toUtf8(definition.id)] = toUtf8(definition.displayName);
    }
    Candidates candidates;
    for (const auto& [id, name] : names)
        candidates.push_back({id, name});
    return candidates;
}

// Which commands there are depends on the items, which are typed later. A file on each drive stands for them.
Candidates commandsOfItems(Context& context)
{
    std::map<std::string, std::string> names;
    for (const Drive& drive : context.connection().getDrives()) {
        CommandContext items;
        items.itemId = drive.root.id;
        for (const Item& item : context.connection().getFolderContents(drive.root)) {
            if (!item.isFolder)
                items.itemId = item.id;
        }
        for (const Command& command : context.connection().getCommands(items))
            names[toUtf8(command.id)] = toUtf8(command.name);
    }
    Candidates candidates;
    for (const auto& [id, name] : names)
        candidates.push_back({id, name});
    return candidates;
}

using Source = Candidates (*)(Context&);

/// By the names that values have in the help.
const std::map<std::string, Source>& sources()
{
    static const std::map<std::string, Source> all{{"PATH", paths}, {"WHEN", colours}, {"FILE", files},
        {"FILE... FOLDER", files}, {"FOLDER", folders}, {"DIR", folders}, {"SHELL", shells}, {"STATE", states},
        {"REQUEST", requests}, {"KIND", failures}, {"DRIVE", drives}, {"TYPE", driveTypes}, {"PROPERTY", properties},
        {"ACTION", commandsOfItems}, {"YES|NO", yesOrNo}};
    return all;
}

Candidates valuesOf(Context& context, const CLI::App& app, const Position& position)
{
    const std::string type = position.value->get_type_name();
    // The words of `help` are those of a command line of their own.
    if (type == "COMMAND")
        return commandsIn(*positionIn(app,
            [&] {
                std::vector<std::string> words = position.path;
                words.emplace_back();
                return words;
            }())
                               .command);
    const auto source = sources().find(type);
    if (source == sources().end())
        return {};
    try {
        return source->second(context);
    } catch (const std::exception&) {
        return {}; // There is no place for a message while a line is being typed.
    }
}

Candidates startingWith(const std::string& typed, const Candidates& all)
{
    Candidates candidates;
    for (const Candidate& candidate : all) {
        if (candidate.word[0] == ':' || candidate.word.compare(0, typed.size(), typed) == 0)
            candidates.push_back(candidate);
    }
    return candidates;
}

// The sync application that the line is about.
void applyOptions(Context& context, const std::map<std::string, std::string>& options)
{
    const auto apply = [&options](const char* name, std::string& target) {
        if (const auto found = options.find(name); found != options.end())
            target = found->second;
    };
    apply("home", context.options.home);
    apply("api-folder", context.options.apiFolder);
    apply("dotnet-root", context.options.dotnetRoot);
    context.prepare();
}

} // namespace

Candidates candidatesFor(Context& context, const CLI::App& app, const std::vector<std::string>& words)
{
    const Position position = positionIn(app, words);
    if (!position.word.empty() && position.word[0] == '-' && position.takesOptions)
        return startingWith(position.word, optionsOf(*position.command));
    applyOptions(context, position.options);
    Candidates candidates;
    if (position.value != nullptr)
        candidates = valuesOf(context, app, position);
    // A command that groups others may take arguments itself.
    if (position.value == nullptr || (position.value->get_positional() && position.path.empty())) {
        const Candidates commands = commandsIn(*position.command);
        candidates.insert(candidates.end(), commands.begin(), commands.end());
    }
    if (candidates.empty() && position.word.empty() && position.takesOptions)
        candidates = optionsOf(*position.command);
    return startingWith(position.word, candidates);
}

} // namespace Quorvex::Velmora::Tool
