// The lines of files of any size.
#pragma once

#include <cstdint>
#include <fstream>
#include <string>
#include <string_view>

namespace Quorvex::Velmora::Tool
{

/// Reads line by line with memory for one line.
class LineReader
{
public:
    /// @param file  a path, or "-" for standard input. @throws Failure when it cannot be opened.
    explicit LineReader(const std::string& file);

    /// The next line without its end; false at the end. The text is valid until the next call. @throws Failure when the
    /// file cannot be read, or when a line is longer than any record can be.
    bool next(std::string_view& line);

    /// The number of the line that was read last, from 1.
    [[nodiscard]] std::uint64_t number() const { return lineNumber; }

private:
    bool readMore();

    std::string name;
    std::ifstream opened;
    std::istream* source;
    std::string buffer;
    std::size_t start = 0;
    std::size_t end = 0;
    std::uint64_t lineNumber = 0;
};

} // namespace Quorvex::Velmora::Tool
