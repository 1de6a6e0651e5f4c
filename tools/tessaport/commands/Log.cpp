#include <memory>

#include "tools/tessaport/commands/Commands.h"
#include "tools/tessaport/logs/LineReader.h"
#include "tools/tessaport/logs/LogRecord.h"
#include "tools/tessaport/output/Json.h"
#include "tools/tessaport/text/Text.h"

namespace Quorvex::Velmora::Tool
{
namespace
{

struct GrepOptions {
    std::string condition;
    std::string file;
};

/// Prints records and reports lines that are not records. For a file that is not a log at all, it reports only a few.
class RecordPrinter
{
public:
    RecordPrinter(Context& commandContext, std::string file)
        : context(commandContext),
          fileName(std::move(file)),
          json(commandContext.options.json ? std::make_unique<JsonList>(commandContext.output) : nullptr)
    {
    }

    void print(std::string_view line, const Json& record)
    {
        ++printed;
        if (json != nullptr)
            json->addLine(line);
        else
            context.output.line(readable(record));
    }

    void reject(std::uint64_t lineNumber)
    {
        constexpr std::uint64_t reportedAtMost = 10;
        if (++rejected <= reportedAtMost)
            context.output.message("'" + fileName + "', line " + std::to_string(lineNumber) + ": no log record");
        if (rejected == reportedAtMost)
            context.output.message("'" + fileName + "': more such lines are only counted");
    }

    void finish()
    {
        if (json != nullptr)
            json->close();
        if (rejected > 0)
            context.output.message("'" + fileName + "': " + counted(rejected, "line") + " left out");
    }

    [[nodiscard]] bool sawOnlyRecords() const { return rejected == 0; }
    [[nodiscard]] bool printedAny() const { return printed > 0; }

private:
    Context& context;
    std::string fileName;
    std::unique_ptr<JsonList> json;
    std::uint64_t printed = 0;
    std::uint64_t rejected = 0;
};

ExitCode cat(Context& context, const std::string& file)
{
    LineReader lines(file);
    RecordPrinter printer(context, file);
    for (std::string_view line; lines.next(line);) {
        if (line.empty())
            continue;
        if (const auto record = parseRecord(line))
            printer.print(line, *record);
        else
            printer.reject(lines.number());
    }
    printer.finish();
    return printer.sawOnlyRecords() ? ExitCode::Ok : ExitCode::Failure;
}

ExitCode grep(Context& context, const GrepOptions& options)
{
    const RecordFilter filter(options.condition);
    LineReader lines(options.file);
    RecordPrinter printer(context, options.file);
    for (std::string_view line; lines.next(line);) {
        if (line.empty() || !filter.mayMatch(line))
            continue;
        const auto record = parseRecord(line);
        if (!record)
            printer.reject(lines.number());
        else if (filter.matches(line))
            printer.print(line, *record);
    }
    printer.finish();
    if (!printer.sawOnlyRecords())
        return ExitCode::Failure;
    return printer.printedAny() ? ExitCode::Ok : ExitCode::NotFound;
}

} // namespace

void addLogCommands(const CommandLine& line)
{
    const CommandSyntax group = addGroup(line, "log", "Read JSON logs, one record a line",
        "tessaport log cat app.log\n"
        "tessaport log grep user=anna app.log");
    const CommandLine inside = line.inside(group);
    auto [catCommand, file] = addCommand<std::string>(inside, "cat", "Show a log as readable text, or as a JSON array",
        "tessaport log cat app.log\n"
        "tessaport log cat --json app.log",
        cat);
    catCommand.addOption("file", file, "The log; - reads standard input").valueName("FILE").required();

    auto [command, options] = addCommand<GrepOptions>(inside, "grep",
        "Show the records in which a key has a value (exit code 3 if no record has it)",
        "tessaport log grep user=anna app.log\n"
        "tessaport log grep request.path=/drives app.log      a nested key",
        grep);
    command.addOption("condition", options.condition, "The key and its complete value")
        .valueName("KEY=VALUE")
        .required();
    command.addOption("file", options.file, "The log; - reads standard input").valueName("FILE").required();
}

} // namespace Quorvex::Velmora::Tool
