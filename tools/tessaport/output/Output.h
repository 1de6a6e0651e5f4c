// Data on standard output, messages on standard error.
#pragma once

#include <string>
#include <string_view>

namespace Quorvex::Velmora::Tool
{

/// Thrown when nobody reads standard output any more; the tool then ends without a word.
struct ReaderGone {
};

enum class Colour { Plain, Folder, Heading, Good, Bad, Dim };

class Output
{
public:
    Output() = default;
    ~Output();
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;

    /// Colour is used where the stream is a terminal and nobody asked for none.
    void decideOnColour(bool forbidden);

    /// Appends to standard output, which is buffered. @throws ReaderGone, or Failure when it cannot be written.
    void write(std::string_view text);
    void line(std::string_view text);

    /// Puts out what is buffered. Also done before each message, so that both streams keep their order on a terminal.
    void flush();

    /// One line on standard error, with the tool's name in front.
    void message(const std::string& text);

    /// One line on standard error as it is.
    void rawMessage(const std::string& text);

    /// The text in colour when standard output shows colours.
    [[nodiscard]] std::string coloured(Colour colour, const std::string& text) const;

private:
    std::string buffer;
    bool colourOnOutput = false;
    bool colourOnError = false;
    bool readerGone = false;
};

} // namespace Quorvex::Velmora::Tool
