#include "phone/device/mach_o.h"

#include "platform/foundation/file_reader.h"
#include "platform/foundation/property_list.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace phone {

using namespace platform;

namespace {

constexpr std::uint32_t magic64 = 0xFEEDFACF;
constexpr std::uint32_t magic32 = 0xFEEDFACE;
constexpr std::uint32_t magicUniversal = 0xCAFEBABE;
constexpr std::uint32_t cpuTypeArm64 = 0x0100000C;
constexpr std::uint32_t fileTypeExecute = 2;
constexpr std::uint32_t commandSegment64 = 0x19;
constexpr std::uint32_t commandLoadDylinker = 0xE;
constexpr std::uint32_t commandEncryptionInfo64 = 0x2C;
constexpr std::uint32_t commandCodeSignature = 0x1D;
constexpr std::uint32_t pageSize = 0x4000;

// The blobs of a signature are big-endian.
constexpr std::uint32_t magicSignature = 0xFADE0CC0;
constexpr std::uint32_t magicEntitlements = 0xFADE7171;
constexpr std::uint32_t slotEntitlements = 5;

class Commands {
public:
    void add(std::uint32_t command, const std::string& body)
    {
        append(bytes_, command);
        append(bytes_, static_cast<std::uint32_t>(2 * sizeof(std::uint32_t) + body.size()));
        bytes_ += body;
        ++count_;
    }

    template <class T> static void append(std::string& bytes, T value)
    {
        char raw[sizeof value];
        std::memcpy(raw, &value, sizeof value);
        bytes.append(raw, sizeof raw);
    }

    static void appendPadded(std::string& bytes, std::string_view text, std::size_t size)
    {
        std::string padded(text);
        padded.resize(size);
        bytes += padded;
    }

    std::uint32_t count() const { return count_; }
    const std::string& bytes() const { return bytes_; }

private:
    std::string bytes_;
    std::uint32_t count_ = 0;
};

std::string segment(
    std::string_view name, std::uint64_t address, std::uint64_t size, std::uint64_t fileSize, std::uint32_t protection)
{
    std::string body;
    Commands::appendPadded(body, name, 16);
    for (const std::uint64_t value : { address, size, std::uint64_t { 0 }, fileSize })
        Commands::append(body, value);
    for (const std::uint32_t value : { protection, protection, 0U, 0U })
        Commands::append(body, value);
    return body;
}

std::string dynamicLinker()
{
    std::string body;
    Commands::append(body, std::uint32_t { 12 });
    Commands::appendPadded(body, "/usr/lib/dyld", 20);
    return body;
}

std::string encryptionInformation(bool encrypted)
{
    std::string body;
    for (const std::uint32_t value : { pageSize, pageSize, encrypted ? 1U : 0U, 0U })
        Commands::append(body, value);
    return body;
}

/// A signature with one blob, the entitlements.
std::string signature(std::string_view entitlements)
{
    constexpr std::uint32_t indexSize = 5 * sizeof(std::uint32_t);
    constexpr std::uint32_t blobHeaderSize = 2 * sizeof(std::uint32_t);
    const auto blobSize = static_cast<std::uint32_t>(blobHeaderSize + entitlements.size());
    std::string bytes;
    for (const std::uint32_t value :
        { magicSignature, indexSize + blobSize, 1U, slotEntitlements, indexSize, magicEntitlements, blobSize })
        Commands::append(bytes, __builtin_bswap32(value));
    return bytes.append(entitlements);
}

std::string signatureInformation(std::uint32_t size)
{
    std::string body;
    Commands::append(body, 2 * pageSize);
    Commands::append(body, size);
    return body;
}

} // namespace

std::string machOExecutable(Encryption encryption, std::string_view entitlements)
{
    constexpr std::uint64_t firstAddress = 0x100000000;
    constexpr std::uint32_t readAndExecute = 5;
    Commands commands;
    commands.add(commandSegment64, segment("__PAGEZERO", 0, firstAddress, 0, 0));
    commands.add(commandSegment64, segment("__TEXT", firstAddress, 2 * pageSize, 2 * pageSize, readAndExecute));
    commands.add(commandLoadDylinker, dynamicLinker());
    if (encryption != Encryption::Absent)
        commands.add(commandEncryptionInfo64, encryptionInformation(encryption == Encryption::Set));
    const std::string signatureBytes = signature(entitlements);
    commands.add(commandCodeSignature, signatureInformation(static_cast<std::uint32_t>(signatureBytes.size())));

    std::string file;
    for (const std::uint32_t value : { magic64, cpuTypeArm64, 0U, fileTypeExecute, commands.count(),
             static_cast<std::uint32_t>(commands.bytes().size()), 0x85U, 0U })
        Commands::append(file, value);
    file += commands.bytes();
    file.resize(2 * pageSize);
    return file + signatureBytes;
}

namespace {

/// The words of a file, read as the processor has them.
class Words {
public:
    explicit Words(std::string_view path)
        : file_(FileReader::ofDevice(path))
    {
    }

    /// 0 past the end, which is no magic number and no command.
    std::uint32_t little(std::uint64_t offset) const
    {
        std::uint32_t word = 0;
        return file_.read(offset, &word, sizeof word) == sizeof word ? word : 0;
    }

    std::uint32_t big(std::uint64_t offset) const { return __builtin_bswap32(little(offset)); }

    std::string bytes(std::uint64_t offset, std::size_t size) const
    {
        std::string found(size, '\0');
        found.resize(file_.read(offset, found.data(), size));
        return found;
    }

private:
    FileReader file_;
};

/// Where the signature of the slice begins; 0 for none.
std::uint64_t signatureOffset(const Words& words, std::uint64_t slice)
{
    constexpr std::uint32_t mostCommands = 1000;
    const bool isWide = words.little(slice) == magic64;
    if (!isWide && words.little(slice) != magic32)
        return 0;
    const std::uint32_t count = std::min(words.little(slice + 16), mostCommands);
    std::uint64_t command = slice + (isWide ? 32 : 28);
    for (std::uint32_t index = 0; index < count; ++index) {
        if (words.little(command) == commandCodeSignature)
            return slice + words.little(command + 8);
        command += words.little(command + 4);
    }
    return 0;
}

} // namespace

id entitlementsOfExecutable(std::string_view path)
{
    constexpr std::uint32_t mostSlots = 100;
    constexpr std::uint32_t mostBytes = 1 << 20;
    const Words words(path);
    const bool isUniversal = words.big(0) == magicUniversal;
    const std::uint64_t blobs = signatureOffset(words, isUniversal ? words.big(8 + 8) : 0);
    if (blobs == 0 || words.big(blobs) != magicSignature)
        return nil;
    const std::uint32_t slots = std::min(words.big(blobs + 8), mostSlots);
    for (std::uint32_t slot = 0; slot < slots; ++slot) {
        const std::uint64_t index = blobs + 12 + std::uint64_t { 8 } * slot;
        const std::uint64_t blob = blobs + words.big(index + 4);
        if (words.big(index) != slotEntitlements || words.big(blob) != magicEntitlements)
            continue;
        const std::uint32_t size = words.big(blob + 4);
        return size < 8 || size > mostBytes ? nil : propertyListFromData(words.bytes(blob + 8, size - 8));
    }
    return nil;
}

} // namespace phone
