#include "tools/tessaport/output/Output.h"

#include <array>
#include <cstddef>

#include "tools/tessaport/errors/ExitCode.h"
#include "tools/tessaport/text/Display.h"

namespace Quorvex::Velmora::Tool
{
namespace
{

using Platform::Stream;
using Platform::Written;

constexpr std::size_t BufferSize = 64 * 1024;

// The only escape sequences that the tool writes besides those of the status line, in the order of Colour.
constexpr std::array ColourCodes{"0", "1;34", "1", "32", "1;31", "2"};

std::string paint(Colour colour, const std::string& text)
{
    if (colour == Colour::Plain)
        return text;
    const char* const code = ColourCodes[static_cast<std::size_t>(colour)];
    return std::string("\x1b[") + code + 'm' + text + "\x1b[0m";
}

} // namespace

Output::~Output()
{
    try {
        status("");
        flush();
    } catch (...) {
        // Callers that need to know have called flush() before.
    }
}

void Output::decideOnColour(const std::string& when)
{
    const bool always = when == "always";
    const bool allowed = when == "auto" && !Platform::environment("NO_COLOR");
    colourOnOutput = always || (allowed && Platform::showsEscapes(Stream::Output));
    colourOnError = always || (allowed && Platform::showsEscapes(Stream::Error));
}

void Output::write(std::string_view data)
{
    append(data, Colour::Plain);
    if (buffer.size() >= BufferSize)
        flush();
}

void Output::line(std::string_view text)
{
    append(asOneLine(text), Colour::Plain);
    write("\n");
}

void Output::line(const std::vector<Span>& spans)
{
    for (const Span& span : spans)
        append(asOneLine(span.text), span.colour);
    write("\n");
}

void Output::append(std::string_view text, Colour colour)
{
    // What is coloured is meant for a terminal, also if it comes there through a pipe.
    if (!outputIsTerminal && !colourOnOutput)
        buffer += text;
    else
        buffer += paint(colourOnOutput ? colour : Colour::Plain, safeForTerminal(text));
}

void Output::flush()
{
    if (buffer.empty())
        return;
    std::string pending;
    pending.swap(buffer);
    if (readerGone)
        throw ReaderGone{};
    status("");
    std::string reason;
    switch (Platform::writeTo(Stream::Output, pending, reason)) {
    case Written::All:
        break;
    case Written::ReaderGone:
        readerGone = true;
        throw ReaderGone{};
    case Written::Failed:
        throw Failure(ExitCode::Failure, "cannot write to standard output: " + reason);
    }
}

void Output::message(std::string_view text)
{
    flush();
    const std::string name = paint(colourOnError ? Colour::Bad : Colour::Plain, "tessaport:");
    showLineOnError(name + ' ', joinedLines(text));
}

void Output::note(std::string_view text)
{
    flush();
    showLineOnError("", text);
}

void Output::showLineOnError(const std::string& prefix, std::string_view text)
{
    const std::string line = asOneLine(text);
    showOnError(prefix + (errorIsTerminal ? safeForTerminal(line) : line) + '\n');
}

void Output::status(std::string_view text)
{
    if (text.empty() ? !statusShown : !Platform::showsEscapes(Stream::Error))
        return;
    statusShown = false;
    showOnError('\r' + safeForTerminal(asOneLine(text)) + "\x1b[K");
    statusShown = !text.empty();
}

void Output::showOnError(std::string_view text)
{
    status("");
    std::string ignored;
    if (Platform::writeTo(Stream::Error, text, ignored) == Written::Failed)
        messagesLost = true;
}

} // namespace Quorvex::Velmora::Tool
