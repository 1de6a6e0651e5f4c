#include "tools/tessaport/output/Output.h"

#include "tools/tessaport/errors/ExitCode.h"
#include "tools/tessaport/platform/Platform.h"

namespace Quorvex::Velmora::Tool
{
namespace
{

constexpr std::size_t BufferSize = 64 * 1024;

std::string paint(Colour colour, const std::string& text)
{
    const char* code = "0";
    switch (colour) {
    case Colour::Plain:
        return text;
    case Colour::Folder:
        code = "1;34";
        break;
    case Colour::Heading:
        code = "1";
        break;
    case Colour::Good:
        code = "32";
        break;
    case Colour::Bad:
        code = "1;31";
        break;
    case Colour::Dim:
        code = "2";
        break;
    }
    return std::string("\x1b[") + code + 'm' + text + "\x1b[0m";
}

} // namespace

Output::~Output()
{
    try {
        flush();
    } catch (...) {
        // Whoever wanted to know has flushed before.
    }
}

void Output::decideOnColour(bool forbidden)
{
    const bool allowed = !forbidden && !Platform::environment("NO_COLOR");
    colourOnOutput = allowed && Platform::showsEscapes(Platform::Stream::Output);
    colourOnError = allowed && Platform::showsEscapes(Platform::Stream::Error);
}

void Output::write(std::string_view text)
{
    buffer.append(text);
    if (buffer.size() >= BufferSize)
        flush();
}

void Output::line(std::string_view text)
{
    write(text);
    write("\n");
}

void Output::flush()
{
    if (buffer.empty())
        return;
    std::string pending;
    pending.swap(buffer);
    if (readerGone)
        throw ReaderGone{};
    std::string reason;
    switch (Platform::writeTo(Platform::Stream::Output, pending, reason)) {
    case Platform::Written::All:
        break;
    case Platform::Written::ReaderGone:
        readerGone = true;
        throw ReaderGone{};
    case Platform::Written::Failed:
        throw Failure(ExitCode::Failure, "cannot write to standard output: " + reason);
    }
}

void Output::message(const std::string& text)
{
    const std::string name = "tessaport:";
    rawMessage((colourOnError ? paint(Colour::Bad, name) : name) + ' ' + text);
}

void Output::rawMessage(const std::string& text)
{
    flush();
    // Nowhere is left to report that messages cannot be written.
    std::string ignored;
    static_cast<void>(Platform::writeTo(Platform::Stream::Error, text + '\n', ignored));
}

std::string Output::coloured(Colour colour, const std::string& text) const
{
    return colourOnOutput ? paint(colour, text) : text;
}

} // namespace Quorvex::Velmora::Tool
