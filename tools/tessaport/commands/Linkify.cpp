#include <istream>
#include <iterator>

#include <velmora/native/MessageFormatting.h>
#include "tools/tessaport/commands/Commands.h"
#include "tools/tessaport/output/Json.h"
#include "tools/tessaport/platform/Platform.h"
#include "tools/tessaport/text/Text.h"

namespace Quorvex::Velmora::Tool
{
namespace
{

struct LinkifyOptions {
    std::string text;
    bool isHtml = false;
};

std::string standardInput()
{
    if (!Platform::isOpen(Platform::Stream::Input))
        throw Failure(ExitCode::Failure, "standard input is closed; give the message as an argument");
    return {std::istreambuf_iterator<char>(Platform::standardInput()), std::istreambuf_iterator<char>()};
}

ExitCode linkifyText(Context& context, const LinkifyOptions& options)
{
    const std::wstring given = toWide(toQVString(options.text.empty() ? standardInput() : options.text));
    const std::string html =
        toUtf8(toQVString(TessaportAPI::linkify(options.isHtml ? given : TessaportAPI::toHtml(given))));
    context.output.write((context.options.json ? toLine({{"html", html}}) : html) + '\n');
    return ExitCode::Ok;
}

} // namespace

void addLinkifyCommand(const CommandLine& line)
{
    auto [command, options] =
        addCommand<LinkifyOptions>(line, "linkify", "Turn a message into HTML with its web addresses as links",
            "tessaport linkify 'See www.example.test.'\n"
            "tessaport linkify < message.txt",
            linkifyText);
    command.addOption("text", options.text, "The message; without it standard input is read").valueName("TEXT");
    command.addFlag("--html", options.isHtml, "The message is HTML already; only put the links in");
}

} // namespace Quorvex::Velmora::Tool
