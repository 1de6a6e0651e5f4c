#include <array>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include <velmora/io/QVBinaryFileSink.h>
#include <velmora/io/QVBinaryFileSource.h>
#include "bench/support/Ratios.h"
#include "bench/support/TemporaryFile.h"

namespace
{

using namespace Quorvex::Velmora;

constexpr int RecordCount = 200'000;
constexpr std::size_t BlockSize = 64 * 1024;

const std::wstring Path = L"C:\\Drive\\Project\\Folder\\a file name.docx";
const std::array<unsigned char, 64> Raw{};

// A number, a double, a bool, a string with its count, and bytes.
constexpr std::array<std::streamsize, 5> ValueSizes{4, 8, 4, 4 + 2 * 40, 64};
constexpr std::size_t TotalSize = std::size_t{RecordCount} * (4 + 8 + 4 + 4 + 2 * 40 + 64);

const Bench::TemporaryFile& file()
{
    static const Bench::TemporaryFile instance("velmora-bench-serial");
    return instance;
}

void setBytes(benchmark::State& state)
{
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * TotalSize));
}

void writeRecords()
{
    IO::QVBinaryFileSink sink(file().wide());
    for (std::uint32_t i = 0; i < RecordCount; ++i) {
        sink.writeUInt32(i);
        sink.writeDouble(i);
        sink.writeBool(true);
        sink.writeString(Path);
        sink.writeBytes(Raw.data(), Raw.size());
    }
}

void SinkValues(benchmark::State& state)
{
    for (auto _ : state)
        writeRecords();
    setBytes(state);
}

// Writes as many bytes as SinkValues, without encoding them, with one call for each value.
void PlainWriteValues(benchmark::State& state)
{
    const std::array<char, 84> bytes{};
    for (auto _ : state) {
        std::ofstream stream(file().narrow(), std::ios::binary);
        for (int i = 0; i < RecordCount; ++i) {
            for (const std::streamsize size : ValueSizes)
                stream.write(bytes.data(), size);
        }
    }
    setBytes(state);
}

void SinkBlocks(benchmark::State& state)
{
    const std::vector<char> block(BlockSize, 'x');
    for (auto _ : state) {
        IO::QVBinaryFileSink sink(file().wide());
        for (std::size_t written = 0; written < TotalSize; written += BlockSize)
            sink.writeBytes(block.data(), BlockSize);
    }
    setBytes(state);
}

void PlainWriteBlocks(benchmark::State& state)
{
    const std::vector<char> block(BlockSize, 'x');
    for (auto _ : state) {
        std::ofstream stream(file().narrow(), std::ios::binary);
        for (std::size_t written = 0; written < TotalSize; written += BlockSize)
            stream.write(block.data(), BlockSize);
    }
    setBytes(state);
}

void SourceValues(benchmark::State& state)
{
    writeRecords();
    for (auto _ : state) {
        IO::QVBinaryFileSource source(file().wide());
        std::uint32_t number = 0;
        double fraction = 0;
        bool flag = false;
        std::wstring text;
        std::array<unsigned char, 64> raw{};
        for (int i = 0; i < RecordCount; ++i) {
            source.readUInt32(number);
            source.readDouble(fraction);
            source.readBool(flag);
            source.readString(text);
            source.readBytes(raw.data(), raw.size());
            benchmark::DoNotOptimize(text.data());
            benchmark::DoNotOptimize(raw);
        }
        if (source.failed())
            return state.SkipWithError("the file is too short");
    }
    setBytes(state);
}

void PlainReadValues(benchmark::State& state)
{
    writeRecords();
    for (auto _ : state) {
        std::ifstream stream(file().narrow(), std::ios::binary);
        std::array<char, 84> bytes{};
        for (int i = 0; i < RecordCount; ++i) {
            for (const std::streamsize size : ValueSizes)
                stream.read(bytes.data(), size);
            benchmark::DoNotOptimize(bytes);
        }
        if (!stream)
            return state.SkipWithError("the file is too short");
    }
    setBytes(state);
}

void SourceBlocks(benchmark::State& state)
{
    writeRecords();
    std::vector<char> block(BlockSize);
    for (auto _ : state) {
        IO::QVBinaryFileSource source(file().wide());
        for (std::size_t read = 0; read + BlockSize <= TotalSize; read += BlockSize)
            source.readBytes(block.data(), BlockSize);
        if (source.failed())
            return state.SkipWithError("the file is too short");
    }
    setBytes(state);
}

void PlainReadBlocks(benchmark::State& state)
{
    writeRecords();
    std::vector<char> block(BlockSize);
    for (auto _ : state) {
        std::ifstream stream(file().narrow(), std::ios::binary);
        for (std::size_t read = 0; read + BlockSize <= TotalSize; read += BlockSize)
            stream.read(block.data(), BlockSize);
        if (!stream)
            return state.SkipWithError("the file is too short");
    }
    setBytes(state);
}

BENCHMARK(SinkValues);
BENCHMARK(PlainWriteValues);
BENCHMARK(SinkBlocks);
BENCHMARK(PlainWriteBlocks);
BENCHMARK(SourceValues);
BENCHMARK(PlainReadValues);
BENCHMARK(SourceBlocks);
BENCHMARK(PlainReadBlocks);

} // namespace

int main(int argc, char** argv)
{
    using Bench::Goal;
    return Bench::runWithRatios(argc, argv,
        {
            {"sink: values against a stream's write of the same bytes", "SinkValues", "PlainWriteValues", Goal::AtLeast,
                0.7},
            {"sink: blocks against a stream's write of the same blocks", "SinkBlocks", "PlainWriteBlocks",
                Goal::AtLeast, 0.7},
            {"source: values against a stream's read of the same bytes", "SourceValues", "PlainReadValues",
                Goal::AtLeast, 0.7},
            {"source: blocks against a stream's read of the same blocks", "SourceBlocks", "PlainReadBlocks",
                Goal::AtLeast, 0.7},
            {"sink: values against blocks of a stream", "SinkValues", "PlainWriteBlocks", Goal::AtLeast, 0.8},
            {"source: values against blocks of a stream", "SourceValues", "PlainReadBlocks", Goal::AtLeast, 0.8},
        });
}
