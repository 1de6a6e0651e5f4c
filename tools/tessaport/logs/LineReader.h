#pragma once

#include <cstdint>
#include <fstream>
#include <string>
#include <string_view>

namespace Quorvex::Velmora::Tool
{

/// Reads files of any size line by line, with memory for one line.
class LineReader
{
public:
    /// @param file  a path, or "-" for standard input.
    /// @throws Failure if it cannot be opened.
    explicit LineReader(const std::string& file);

    /// Reads the next line, without its line end. The view is valid until the next call.
    ///
    /// @return false at the end of the file.
    /// @throws Failure if the file cannot be read, or if a line is longer than any record can be.
    bool next(std::string_view& line);

    /// The number of the last line read, counted from 1.
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
