#include <benchmark/benchmark.h>
#include <boost/crc.hpp>

#include <velmora/io/FileReader.h>
#include <velmora/io/QVChecksum.h>
#include <velmora/io/crc/Crc32.h>
#include <velmora/io/crc/Slicing.h>
#include "bench/support/Ratios.h"
#include "bench/support/TemporaryFile.h"
#ifndef _WIN32 // Debian has ISA-L for Linux only.
#include <isa-l/crc.h>
#endif

#include <cstdint>
#include <cstdio>
#include <fstream>
#include <vector>

namespace
{

using namespace Quorvex::Velmora;
using Bytes = std::vector<unsigned char>;

constexpr std::size_t PieceSize = 64 * 1024;
constexpr std::size_t FileSize = 64 * 1024 * 1024;
constexpr int ValueCount = 64 * 1024;

const Bytes& piece()
{
    static const Bytes bytes = [] {
        Bytes result(PieceSize);
        std::uint32_t state = 1;
        for (auto& byte : result) {
            state = state * 1664525U + 1013904223U;
            byte = static_cast<unsigned char>(state >> 24);
        }
        return result;
    }();
    return bytes;
}

const Bench::TemporaryFile& largeFile()
{
    static const Bench::TemporaryFile file("velmora-bench-checksum");
    static const bool written = [] {
        std::ofstream stream(file.narrow(), std::ios::binary);
        for (std::size_t size = 0; size < FileSize; size += PieceSize)
            stream.write(reinterpret_cast<const char*>(piece().data()), PieceSize);
        return true;
    }();
    benchmark::DoNotOptimize(written);
    return file;
}

void setBytes(benchmark::State& state, std::size_t perIteration)
{
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * perIteration));
}

template <class Update>
void updatePieces(benchmark::State& state, Update update)
{
    std::uint32_t crc = 0xFFFFFFFF;
    for (auto _ : state) {
        crc = update(crc, piece().data(), PieceSize);
        benchmark::DoNotOptimize(crc);
    }
    setBytes(state, PieceSize);
}

void ByteTable(benchmark::State& state)
{
    updatePieces(state, [](std::uint32_t crc, const unsigned char* bytes, std::size_t size) {
        for (std::size_t i = 0; i < size; ++i)
            crc = IO::Crc32::updateByte(crc, bytes[i]);
        return crc;
    });
}

void BoostCrc(benchmark::State& state)
{
    updatePieces(state, [](std::uint32_t, const unsigned char* bytes, std::size_t size) {
        boost::crc_optimal<32, 0x04C11DB7, 0xFFFFFFFF, 0, false, false> crc;
        crc.process_bytes(bytes, size);
        return crc.checksum();
    });
}

#ifndef _WIN32
void IsaL(benchmark::State& state)
{
    updatePieces(state,
        [](std::uint32_t crc, const unsigned char* bytes, std::size_t size) { return ~crc32_ieee(~crc, bytes, size); });
}
BENCHMARK(IsaL);
#endif

void Portable(benchmark::State& state) { updatePieces(state, IO::Crc32::updateBySlicing); }

void Folding128(benchmark::State& state)
{
    if (!IO::Crc32::hasFolding128())
        return state.SkipWithError("this processor has no carry-less multiplication");
    updatePieces(state, IO::Crc32::updateByFolding128);
}

void Chosen(benchmark::State& state) { updatePieces(state, IO::Crc32::update); }

void WriteBytes(benchmark::State& state)
{
    IO::QVChecksum checksum;
    for (auto _ : state) {
        checksum.writeBytes(piece().data(), PieceSize);
        benchmark::DoNotOptimize(checksum);
    }
    setBytes(state, PieceSize);
}

void WriteUInt32(benchmark::State& state)
{
    IO::QVChecksum checksum;
    IO::QVSerialSink& sink = checksum;
    benchmark::DoNotOptimize(&sink);
    for (auto _ : state) {
        for (std::uint32_t i = 0; i < ValueCount; ++i)
            sink.writeUInt32(i);
        benchmark::DoNotOptimize(checksum.value());
    }
    setBytes(state, 4 * ValueCount);
}

void AppendToVector(benchmark::State& state)
{
    for (auto _ : state) {
        Bytes bytes;
        for (std::uint32_t i = 0; i < ValueCount; ++i) {
            const auto* const value = reinterpret_cast<const unsigned char*>(&i);
            bytes.insert(bytes.end(), value, value + 4);
        }
        benchmark::DoNotOptimize(bytes.data());
    }
    setBytes(state, 4 * ValueCount);
}

void readFile(benchmark::State& state, decltype(&IO::Crc32::update) update)
{
    const auto path = largeFile().wide();
    for (auto _ : state) {
        IO::Crc32::FileReader file(path, update);
        while (!file.atEnd())
            file.readPiece();
        benchmark::DoNotOptimize(file.value());
    }
    setBytes(state, FileSize);
}

void FilePortable(benchmark::State& state) { readFile(state, IO::Crc32::updateBySlicing); }

void FileChosen(benchmark::State& state)
{
    const auto path = largeFile().wide();
    for (auto _ : state)
        benchmark::DoNotOptimize(IO::checksumOfFile(path));
    setBytes(state, FileSize);
}

void FilePlainRead(benchmark::State& state)
{
    const auto path = largeFile().narrow();
    Bytes buffer(PieceSize);
    for (auto _ : state) {
        std::FILE* const file = std::fopen(path.c_str(), "rb");
        if (file == nullptr)
            return state.SkipWithError("the file cannot be opened");
        std::setvbuf(file, nullptr, _IONBF, 0);
        while (std::fread(buffer.data(), 1, PieceSize, file) == PieceSize)
            benchmark::DoNotOptimize(buffer.data());
        std::fclose(file);
    }
    setBytes(state, FileSize);
}

void MemoryPortable(benchmark::State& state)
{
    static const Bytes bytes(FileSize, 0x5A);
    for (auto _ : state)
        benchmark::DoNotOptimize(IO::Crc32::updateBySlicing(0xFFFFFFFF, bytes.data(), bytes.size()));
    setBytes(state, FileSize);
}

BENCHMARK(ByteTable);
BENCHMARK(BoostCrc);
BENCHMARK(Portable);
BENCHMARK(Folding128);
BENCHMARK(Chosen);
BENCHMARK(WriteBytes);
BENCHMARK(WriteUInt32);
BENCHMARK(AppendToVector);
BENCHMARK(MemoryPortable);
BENCHMARK(FilePortable);
BENCHMARK(FileChosen);
BENCHMARK(FilePlainRead);

} // namespace

int main(int argc, char** argv)
{
    using Bench::Goal;
    using Bench::Ratio;
    std::vector<Ratio> ratios{
        {"portable code against the byte table", "Portable", "ByteTable", Goal::AtLeast, 5},
        {"64 KiB through writeBytes against the update alone", "WriteBytes", "Chosen", Goal::AtLeast, 0.7},
        {"writeUInt32 against a 4-byte append to a vector", "WriteUInt32", "AppendToVector", Goal::AtMost, 2},
        {"a file with portable code against the same over memory", "FilePortable", "MemoryPortable", Goal::AtLeast,
            0.8},
        {"for comparison: Boost.CRC against the byte table", "BoostCrc", "ByteTable", Goal::AtLeast, 0},
        {"for comparison: the chosen code against ISA-L", "Chosen", "IsaL", Goal::AtLeast, 0},
    };
    if (Quorvex::Velmora::IO::Crc32::hasFolding128()) {
        ratios.push_back(
            {"for comparison: 128 bits at a time against the byte table", "Folding128", "ByteTable", Goal::AtLeast, 0});
        ratios.push_back({"the chosen code against the byte table", "Chosen", "ByteTable", Goal::AtLeast, 25});
        ratios.push_back(
            {"a file with the chosen code against a plain read", "FileChosen", "FilePlainRead", Goal::AtLeast, 0.9});
    }
    return Bench::runWithRatios(argc, argv, ratios);
}
