#include "platform/foundation/file_reader.h"
#include "record/executable.h"
#include "support/mach_o_file.h"
#include "support/plain_mach_o_reader.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>

/// Whether an executable is encrypted, from opening its file to closing it: the library's reader, beside a plain one
/// that seeks and reads once for each step. The files lie in the temporary directory and in the system's cache.

using namespace appledger;
using namespace platform;
using namespace support;

namespace {

struct Sample {
    std::size_t commands;
    std::uintmax_t size;
};

constexpr Sample samples[] { { 4, 32 << 10 }, { 60, 100 << 20 }, { 300, 100 << 20 } };

/// The mark is the last command, and unset: all of them are looked at.
std::string fileOf(std::int64_t index)
{
    const Sample& sample = samples[index];
    const std::string path
        = std::filesystem::temp_directory_path() / ("executable_bench-" + std::to_string(sample.commands));
    std::vector<LoadCommand> commands(sample.commands - 1, filler());
    commands.push_back(encryption(Width::Bits64, 0));
    std::ofstream(path, std::ios::binary) << ThinFile { .commands = commands }.bytes();
    std::filesystem::resize_file(path, sample.size);
    return path;
}

void library(benchmark::State& state)
{
    const std::string path = fileOf(state.range(0));
    std::size_t bytesRead = 0;
    for (auto _ : state) {
        bytesRead = 0;
        const FileReader file = FileReader::ofHost(path);
        const ExecutableKind kind = executableKind([&](std::uint64_t offset, void* bytes, std::size_t size) {
            const std::size_t count = file.read(offset, bytes, size);
            bytesRead += count;
            return count;
        });
        if (kind != ExecutableKind::Decrypted)
            std::abort();
    }
    state.counters["bytes_read"] = static_cast<double>(bytesRead);
    std::filesystem::remove(path);
}

void plainReader(benchmark::State& state)
{
    const std::string path = fileOf(state.range(0));
    for (auto _ : state) {
        std::FILE* const file = std::fopen(path.c_str(), "r");
        if (PlainMachOReader(file).isEncrypted() != false)
            std::abort();
        std::fclose(file);
    }
    std::filesystem::remove(path);
}

/// Files that lead nowhere, in memory: how long until they are given up.
void hostile(benchmark::State& state)
{
    constexpr std::uint32_t many = 0xEE6B2800; // four thousand million
    std::string file;
    const std::int64_t kind = state.range(0);
    if (kind < 2) {
        file = ThinFile { .extraCommands = many, .content = {} }.bytes();
        const std::string command = kind == 0 ? std::string("\x04\0\0\0", 4) : std::string("\x04\x40\0\0", 4);
        for (int index = 0; index < 1 << 22; ++index)
            file += command; // each of four bytes, or of sixteen thousand
    } else {
        file = universalFile({ ThinFile { .extraCommands = many }.bytes() });
        file.replace(4, 4, "\xEE\x6B\x28\x00", 4);
        file.resize(std::size_t { 16 } << 20, '\0');
    }
    for (auto _ : state)
        benchmark::DoNotOptimize(executableKind([&file](std::uint64_t offset, void* bytes, std::size_t size) {
            const std::size_t count = offset < file.size() ? std::min<std::size_t>(size, file.size() - offset) : 0;
            std::memcpy(bytes, file.data() + std::min<std::size_t>(offset, file.size()), count);
            return count;
        }));
}

BENCHMARK(hostile)->DenseRange(0, 2);
BENCHMARK(library)->DenseRange(0, std::size(samples) - 1);
BENCHMARK(plainReader)->DenseRange(0, std::size(samples) - 1);

} // namespace
