#include "platform/foundation/device_root.h"
#include "record/executable.h"
#include "support/mach_o_file.h"
#include "support/plain_mach_o_reader.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <fstream>
#include <random>
#include <unistd.h>

namespace appledger {

using namespace support;
using platform::DeviceRoot;

namespace {

struct Cost {
    unsigned reads = 0;
    std::size_t bytes = 0;
};

ExecutableKind kindOf(const std::string& file, Cost* cost = nullptr)
{
    return executableKind([&](std::uint64_t offset, void* bytes, std::size_t size) -> std::size_t {
        const std::size_t found = offset < file.size() ? std::min<std::size_t>(size, file.size() - offset) : 0;
        std::memcpy(bytes, file.data() + std::min<std::size_t>(offset, file.size()), found);
        if (cost) {
            ++cost->reads;
            cost->bytes += found;
        }
        return found;
    });
}

std::optional<bool> plainAnswer(const std::string& bytes)
{
    constexpr long mostSteps = 2000;
    std::FILE* const file = ::fmemopen(const_cast<char*>(bytes.data()), bytes.size(), "r");
    const std::optional<bool> answer = PlainMachOReader(file, mostSteps).isEncrypted();
    std::fclose(file);
    return answer;
}

constexpr Width widths[] { Width::Bits32, Width::Bits64 };
constexpr ByteOrder orders[] { ByteOrder::Little, ByteOrder::Big };

std::string thin(Width width, ByteOrder order, std::vector<LoadCommand> commands)
{
    return ThinFile { .width = width, .order = order, .commands = std::move(commands) }.bytes();
}

/// Every kind of file that there is in the wild, and some that aren't.
std::vector<std::string> everyFile()
{
    std::vector<std::string> files;
    for (const Width width : widths)
        for (const ByteOrder order : orders)
            for (const std::uint32_t mark : { 0U, 1U, 0x01000000U })
                files.push_back(thin(width, order, { filler(), encryption(width, mark), filler(5) }));
    const std::string plain = thin(Width::Bits64, ByteOrder::Little, { filler() });
    const std::string marked = thin(Width::Bits32, ByteOrder::Big, { filler(), encryption(Width::Bits32, 1) });
    for (const ByteOrder order : orders)
        for (const auto& slices : { std::vector { plain, marked }, std::vector { marked, plain },
                 std::vector { plain, plain }, std::vector { std::string("no executable at all, but text"), marked } })
            files.push_back(universalFile(slices, order));
    return files;
}

TEST(Executable, IsEncryptedByItsMarkAlone)
{
    constexpr auto encrypted = ExecutableKind::Encrypted;
    constexpr auto decrypted = ExecutableKind::Decrypted;
    for (const Width width : widths)
        for (const ByteOrder order : orders) {
            SCOPED_TRACE(
                std::to_string(width == Width::Bits64 ? 64 : 32) + (order == ByteOrder::Big ? " big" : " little"));
            const Width otherWidth = width == Width::Bits64 ? Width::Bits32 : Width::Bits64;
            EXPECT_EQ(kindOf(thin(width, order, { filler(), encryption(width, 1) })), encrypted);
            EXPECT_EQ(kindOf(thin(width, order, { encryption(width, 0x01000000), filler() })), encrypted);
            EXPECT_EQ(kindOf(thin(width, order, { encryption(width, 0), encryption(width, 7) })), encrypted);
            EXPECT_EQ(kindOf(thin(width, order, { filler(), encryption(width, 0) })), decrypted);
            EXPECT_EQ(kindOf(thin(width, order, { filler() })), decrypted);
            EXPECT_EQ(kindOf(thin(width, order, {})), decrypted);
            EXPECT_EQ(kindOf(thin(width, order, { encryption(otherWidth, 1), filler() })), decrypted)
                << "the other's mark";
        }
    for (const std::string& text :
        { std::string(), std::string("\xCF\xFA\xED"), std::string(4096, '\0'), std::string("#!/bin/sh\n") })
        EXPECT_EQ(kindOf(text), ExecutableKind::NotMachO);
}

TEST(Executable, OfSeveralSlicesIsEncryptedByAny)
{
    const std::string plain = thin(Width::Bits64, ByteOrder::Little, { filler() });
    const std::string marked = thin(Width::Bits64, ByteOrder::Little, { filler(), encryption(Width::Bits64, 1) });
    const std::string cut = marked.substr(0, 20);
    const std::string noCommands = thin(Width::Bits64, ByteOrder::Little, {});
    for (const ByteOrder order : orders) {
        EXPECT_EQ(kindOf(universalFile({ plain, marked }, order)), ExecutableKind::Encrypted);
        EXPECT_EQ(kindOf(universalFile({ "text", noCommands, marked }, order)), ExecutableKind::Encrypted);
        EXPECT_EQ(kindOf(universalFile({ plain, cut }, order)), ExecutableKind::Decrypted);
        EXPECT_EQ(kindOf(universalFile({}, order)), ExecutableKind::Decrypted);
    }
    // A slice that lies past the end of the file doesn't hide the next one.
    std::string file = universalFile({ plain, marked });
    file.replace(8 + 8, 4, "\x7F\xFF\xFF\xFF", 4);
    EXPECT_EQ(kindOf(file), ExecutableKind::Encrypted);
}

TEST(Executable, CutAnywhereIsReadAsByThePlainReader)
{
    for (const std::string& file : everyFile())
        for (std::size_t length = 1; length <= file.size(); ++length) {
            const std::string cut = file.substr(0, length);
            ASSERT_EQ(kindOf(cut) == ExecutableKind::Encrypted, plainAnswer(cut)) << "of " << length << " bytes";
        }
}

TEST(Executable, ChangedAnywhereIsReadAsByThePlainReader)
{
    std::mt19937 random(20261123); // the same files each time
    const std::vector<std::string> files = everyFile();
    std::size_t compared = 0;
    for (int round = 0; round < 40000; ++round) {
        std::string file = files[random() % files.size()];
        for (unsigned changes = 1 + random() % 3; changes > 0; --changes)
            file[random() % std::min<std::size_t>(file.size(), 200)]
                = static_cast<char>(random() % 4 == 0 ? random() : random() % 64);
        if (const auto expected = plainAnswer(file)) {
            ++compared;
            ASSERT_EQ(kindOf(file) == ExecutableKind::Encrypted, *expected) << "in round " << round;
        }
    }
    EXPECT_GT(compared, 30000U) << "the rest led the plain reader nowhere";
}

TEST(Executable, CostsItsHeaderAndLoadCommandsHoweverLargeItIs)
{
    std::vector<LoadCommand> commands(120, filler());
    commands.push_back(encryption(Width::Bits64, 0));
    std::string file = thin(Width::Bits64, ByteOrder::Little, commands);
    const std::size_t commandsEnd = file.size() - 64;
    file.resize(std::size_t { 100 } << 20, '\x2C');
    Cost cost;
    EXPECT_EQ(kindOf(file, &cost), ExecutableKind::Decrypted);
    EXPECT_LE(cost.bytes, commandsEnd);
    EXPECT_EQ(cost.reads, 2U);
}

TEST(Executable, ThatLeadsNowhereIsGivenUp)
{
    constexpr std::uint32_t many = 0xEE6B2800; // four thousand million
    const std::string counted = ThinFile { .commands = { filler(0) }, .extraCommands = many }.bytes();
    std::string still = ThinFile { .commands = { filler(0) }, .extraCommands = many }.bytes();
    still.replace(32 + 4, 4, std::string(4, '\0'));
    std::string small = ThinFile { .extraCommands = many, .content = {} }.bytes();
    for (int i = 0; i < 1 << 22; ++i)
        small += std::string("\x04\0\0\0", 4); // each of four bytes
    std::string far = small;
    for (std::size_t at = 36; at + 8 < far.size(); at += 4)
        far[at + 1] = '\x40'; // each of sixteen thousand
    std::string slices = universalFile({ counted });
    slices.replace(4, 4, "\xEE\x6B\x28\x00", 4);
    std::string manySlices = slices;
    manySlices.resize(std::size_t { 16 } << 20, '\0');
    std::string farCommand = ThinFile { .commands = { filler(0) }, .extraCommands = 2 }.bytes();
    farCommand.replace(32 + 4, 4, std::string(4, '\xFF'));
    for (const std::string& file : { counted, still, small, far, slices, manySlices, farCommand }) {
        Cost cost;
        EXPECT_EQ(kindOf(file, &cost), ExecutableKind::Decrypted);
        EXPECT_LE(cost.reads, mostReads);
        EXPECT_LE(cost.bytes, mostBytesRead);
    }
}

TEST(Executable, IsAFileOfTheDevice)
{
    const DeviceRoot device;
    const auto write = [&](const char* name, const std::string& bytes) { std::ofstream(device.at(name)) << bytes; };
    write("/marked", thin(Width::Bits64, ByteOrder::Little, { encryption(Width::Bits64, 1) }));
    write("/plain", thin(Width::Bits64, ByteOrder::Little, { encryption(Width::Bits64, 0) }));
    ASSERT_EQ(::mkfifo(device.at("/pipe").c_str(), 0600), 0);
    std::filesystem::create_symlink("/marked", device.at("/link"));
    EXPECT_TRUE(isEncryptedExecutable("/marked"));
    EXPECT_TRUE(isEncryptedExecutable("/link"));
    for (const char* const path : { "/plain", "/pipe", "/", "/missing", "" })
        EXPECT_FALSE(isEncryptedExecutable(path)) << path;
}

} // namespace

} // namespace appledger
