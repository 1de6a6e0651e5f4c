#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tools/tessaport/platform/Platform.h"

namespace Quorvex::Velmora::Tool
{

/// Thrown when standard output is no longer read; the tool then ends silently.
struct ReaderGone {
};

enum class Colour { Plain, Folder, Heading, Good, Bad, Dim };

/// A piece of a line in one colour.
struct Span {
    std::string text;
    Colour colour = Colour::Plain;

    Span(std::string spanText, Colour spanColour = Colour::Plain) : text(std::move(spanText)), colour(spanColour) {}
    Span(const char* spanText) : text(spanText) {}
};

/// Data on standard output, messages on standard error.
///
/// Everything that the tool writes passes through this class. It keeps from terminals whatever could command them or
/// make text look like other text, wherever that text comes from; see Display.h. Colours are added here only.
class Output
{
public:
    Output() = default;
    ~Output();
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;

    /// Decides where colours are used.
    ///
    /// @param when  "always", "never" or "auto": where the stream is a terminal, unless the environment forbids it.
    void decideOnColour(const std::string& when);

    /// Appends to standard output, which is buffered. Programs that read it through a pipe or from a file get the exact
    /// bytes. @throws ReaderGone, or Failure when it cannot be written.
    void write(std::string_view data);

    /// Appends a line for people. Control characters are replaced on every stream, so that a line stays one line.
    /// @throws as write() does.
    void line(std::string_view text);
    void line(const std::vector<Span>& spans);

    /// Writes out the buffer. Also happens before each message, so that both streams keep their order on a terminal.
    void flush();

    /// Writes a line with the tool's name to standard error.
    void message(std::string_view text);

    /// Writes a line without the tool's name to standard error.
    void note(std::string_view text);

    /// Shows a line on standard error until anything else is written there, if that is a terminal that can take the
    /// line away again. An empty text takes it away.
    void status(std::string_view text);

    /// True when a message could not be written.
    [[nodiscard]] bool hasLostMessages() const { return messagesLost; }

private:
    void append(std::string_view text, Colour colour);
    void showLineOnError(const std::string& prefix, std::string_view text);
    void showOnError(std::string_view text);

    const bool outputIsTerminal = Platform::isTerminal(Platform::Stream::Output);
    const bool errorIsTerminal = Platform::isTerminal(Platform::Stream::Error);
    std::string buffer;
    bool colourOnOutput = false;
    bool colourOnError = false;
    bool readerGone = false;
    bool messagesLost = false;
    bool statusShown = false;
};

} // namespace Quorvex::Velmora::Tool
