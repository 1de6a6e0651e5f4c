#include "tools/tessaport/app/Errors.h"
#include "tools/tessaport/commands/Commands.h"
#include "tools/tessaport/home/ServiceFile.h"
#include "tools/tessaport/installation/AssemblyFile.h"
#include "tools/tessaport/installation/DotnetFinder.h"
#include "tools/tessaport/installation/FileVersion.h"
#include "tools/tessaport/items/Reasons.h"
#include "tools/tessaport/output/Items.h"
#include "tools/tessaport/output/Json.h"
#include "tools/tessaport/platform/Platform.h"
#include "tools/tessaport/text/Paths.h"
#include "tools/tessaport/text/Text.h"

namespace fs = std::filesystem;

namespace Quorvex::Velmora::Tool
{
namespace
{

constexpr unsigned OldestDotnet = 8;

struct Finding {
    std::string subject;
    bool good;
    std::string version;
    std::string detail;
    std::string remedy; ///< Empty if there is nothing to do; that of a good finding is a warning.
};

Finding good(std::string subject, std::string version, std::string detail)
{
    return {std::move(subject), true, std::move(version), std::move(detail), ""};
}

Finding bad(std::string subject, std::string detail, std::string remedy)
{
    return {std::move(subject), false, "", std::move(detail), std::move(remedy)};
}

Finding lookAtTool() { return good("Tool", VELMORA_TOOL_VERSION, toText(Platform::executableFile())); }

fs::path libraryFile() { return Platform::loadedLibrary("VelmoraTessaport"); }

// On Linux the version is in the name of the file that the loaded name links to, on Windows in the file itself.
std::string versionOf(const fs::path& library)
{
    std::error_code error;
    const std::string real = toText(fs::canonical(library, error).filename());
    const std::size_t suffix = real.find(".so.");
    return suffix == std::string::npos ? fileVersion(library).value_or("") : real.substr(suffix + 4);
}

Finding lookAtLibrary() { return good("Library", versionOf(libraryFile()), toText(libraryFile())); }

Finding lookAtAssembly(const std::string& subject, const fs::path& file, const std::string& remedy)
{
    std::error_code error;
    if (!fs::is_regular_file(file, error))
        return bad(subject, "there is no " + toText(file), remedy);
    if (const std::string damage = damageOf(file); !damage.empty())
        return bad(subject, toText(file) + ' ' + damage, remedy);
    return good(subject, fileVersion(file).value_or(""), toText(file));
}

// The folders that belong to the library, beside it.
fs::path libraryParts() { return libraryFile().parent_path() / "velmora"; }

// A bridge of another release may still fit, and the library refuses one that does not.
Finding lookAtBridge()
{
    Finding finding = lookAtAssembly("Bridge", libraryParts() / "bridge" / "Velmora.Bridge.dll",
        "install the library again: its managed parts belong into the folder velmora/bridge beside it");
    const std::string release = versionOf(libraryFile());
    if (finding.good && finding.version.rfind(release, 0) != 0)
        return bad("Bridge", finding.detail + " has version " + finding.version + ", but the library has " + release,
            "install the library and its folder velmora/bridge from one release");
    return finding;
}

Finding lookAtApi(const Context& context)
{
    return lookAtAssembly("API", context.apiFolder() / "Quorvex.Tessaport.API.dll",
        "name the folder of the sync application's assembly with --api-folder, or install the local service again");
}

struct DotnetSearch {
    std::vector<fs::path> roots;
    std::string remedy; ///< For a search that finds nothing.
};

// As the library searches.
DotnetSearch dotnetSearch(const Context& context)
{
    const std::string install =
        "install the .NET runtime " + std::to_string(OldestDotnet) + " or newer, or name its folder with --dotnet-root";
    if (!context.options.dotnetRoot.empty())
        return {{toPath(absolutePath(context.options.dotnetRoot))}, install};
    const fs::path shipped = libraryParts() / "dotnet";
    std::error_code error;
    if (fs::exists(fs::symlink_status(shipped, error)))
        return {{shipped},
            "install the library again with this folder, or remove the folder to use the .NET runtime of this machine"};
    return {Platform::usualDotnetRoots(), install};
}

std::string listed(const std::vector<std::string>& texts)
{
    std::string all;
    for (const std::string& text : texts)
        all += (all.empty() ? "" : ", ") + text;
    return all;
}

Finding lookAtDotnetInstallations(const Context& context)
{
    const auto [roots, remedy] = dotnetSearch(context);
    std::vector<std::string> looked;
    for (const fs::path& root : roots) {
        looked.push_back(toText(root));
        const DotnetInstallation found = lookAtDotnet(root);
        if (found.hosts.empty())
            continue;
        if (found.runtimes.empty() || !isAtLeast(found.runtimes.back(), OldestDotnet))
            return bad(".NET",
                toText(root) + " has no runtime " + std::to_string(OldestDotnet) + " or newer, only " +
                    (found.runtimes.empty() ? "none" : listed(found.runtimes)),
                remedy);
        return good(".NET", listed(found.runtimes), toText(root));
    }
    return bad(".NET", "no host/fxr in " + listed(looked), remedy);
}

std::string remedyFor(ExitCode code)
{
    switch (code) {
    case ExitCode::Ok:
        return "";
    case ExitCode::NotInstalled:
        return "make a home with 'tessaport drive add' or 'tessaport demo', or name another one with --home";
    case ExitCode::NotRunning:
        return "start the sync application; the local sync service with 'tessaport service start'";
    case ExitCode::UpdateNeeded:
        return "update the sync application; for the local sync service 'tessaport service start' is enough";
    default:
        return "correct what the message names";
    }
}

// Whoever writes the drives decides which folders are read and written. Containers, a group's home and some file
// systems show another owner for good reasons, so this is no failure.
std::string remedyForHomeOfOthers(const Home& home)
{
    for (const fs::path& path : {home.folder(), home.drivesFile(), home.serviceFile(), home.folder() / "state"}) {
        if (const std::string others = Platform::othersWhoMayChange(path); !others.empty())
            return "'" + toText(path) + "' can be changed by " + others +
                   ", who can so have the service read and write any of your files; unless you want that, change its "
                   "owner or permissions, or name a home of your own with --home";
    }
    return "";
}

// Only the local sync service has a home.
Finding lookAtHome()
{
    const Home home = Home::locate();
    const ServiceStateName* const state = ServiceFile(home).state();
    if (state == nullptr)
        return bad("Home", toText(home.serviceFile()) + " names no state", "run 'tessaport service start'");
    return {"Home", state->code == ExitCode::Ok, state->name, toText(home.folder()),
        state->code == ExitCode::Ok ? remedyForHomeOfOthers(home) : remedyFor(state->code)};
}

// The folder that a runtime is loaded from is named after its version.
Finding startRuntime(Context& context)
{
    context.connection();
    const fs::path folder = Platform::loadedLibrary("coreclr").parent_path();
    return good("Runtime", toText(folder.filename()), toText(folder));
}

Finding askService(Context& context)
{
    context.connection().discover();
    return good("Service", toUtf8(context.connection().getVersion()), "answers requests");
}

/// What the sync application could not tidy up in its drives, if it says so.
Finding lookAtDrives(Context& context)
{
    std::size_t count = 0;
    for (const TessaportAPI::Drive& drive : context.connection().getDrives()) {
        const PropertyTexts texts(context, {drive.root}, {"UpkeepError"});
        if (const std::string failure = texts.of(drive.root, "UpkeepError"); !failure.empty())
            return bad("Drives", toUtf8(drive.name) + ": " + failure, "correct what the message names");
        ++count;
    }
    return good("Drives", std::to_string(count), "can be used");
}

class Examination
{
public:
    /// Adds one finding; an exception is a bad one.
    template <class Look>
    bool examine(const std::string& subject, Look look)
    {
        try {
            findings.push_back(look());
        } catch (...) {
            const Explanation explanation = explainCurrentException();
            findings.push_back(bad(subject, explanation.text, remedyFor(explanation.code)));
            code = explanation.code;
        }
        if (!findings.back().good && code == ExitCode::Ok)
            code = ExitCode::Failure;
        return findings.back().good;
    }

    std::vector<Finding> findings;
    ExitCode code = ExitCode::Ok;
};

Examination examineAll(Context& context)
{
    Examination examination;
    examination.examine("Tool", lookAtTool);
    examination.examine("Library", lookAtLibrary);
    examination.examine("Bridge", lookAtBridge);
    const bool apiFound = examination.examine("API", [&context] { return lookAtApi(context); });
    examination.examine(".NET", [&context] { return lookAtDotnetInstallations(context); });
    if (context.options.apiFolder.empty())
        examination.examine("Home", lookAtHome);
    if (!apiFound)
        examination.examine("Runtime",
            [] { return bad("Runtime", "not started, as the API cannot be used", "correct the API first"); });
    else if (examination.examine("Runtime", [&context] { return startRuntime(context); }) &&
             examination.examine("Service", [&context] { return askService(context); }))
        examination.examine("Drives", [&context] { return lookAtDrives(context); });
    return examination;
}

void printAsJson(Output& output, const std::vector<Finding>& findings)
{
    JsonList list(output);
    for (const Finding& finding : findings)
        list.add({{"subject", finding.subject}, {"good", finding.good}, {"version", finding.version},
            {"detail", finding.detail}, {"remedy", finding.remedy}});
    list.close();
}

void printAsText(Output& output, const std::vector<Finding>& findings)
{
    Table table;
    for (const Finding& finding : findings)
        table.row({finding.good ? Cell("ok", Colour::Good) : Cell("BAD", Colour::Bad), finding.subject,
            finding.version.empty() ? "-" : finding.version, finding.detail});
    table.print(output);
    for (const Finding& finding : findings) {
        if (!finding.remedy.empty())
            output.line("To do for " + finding.subject + ": " + finding.remedy);
    }
}

ExitCode doctor(Context& context)
{
    const Examination examination = examineAll(context);
    if (context.options.json)
        printAsJson(context.output, examination.findings);
    else
        printAsText(context.output, examination.findings);
    return examination.code;
}

} // namespace

void addDoctorCommand(const CommandLine& line)
{
    addCommand(line, "doctor", "Show what was found of the installation, and what is wrong with it",
        "tessaport doctor\n"
        "tessaport --dotnet-root /opt/dotnet doctor",
        doctor);
}

} // namespace Quorvex::Velmora::Tool
