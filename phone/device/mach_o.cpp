#include "phone/device/mach_o.h"

#include <cstdint>
#include <cstring>
#include <string_view>

namespace phone {

namespace {

constexpr std::uint32_t magic64 = 0xFEEDFACF;
constexpr std::uint32_t cpuTypeArm64 = 0x0100000C;
constexpr std::uint32_t fileTypeExecute = 2;
constexpr std::uint32_t commandSegment64 = 0x19;
constexpr std::uint32_t commandLoadDylinker = 0xE;
constexpr std::uint32_t commandEncryptionInfo64 = 0x2C;
constexpr std::uint32_t pageSize = 0x4000;

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

} // namespace

std::string machOExecutable(Encryption encryption)
{
    constexpr std::uint64_t firstAddress = 0x100000000;
    constexpr std::uint32_t readAndExecute = 5;
    Commands commands;
    commands.add(commandSegment64, segment("__PAGEZERO", 0, firstAddress, 0, 0));
    commands.add(commandSegment64, segment("__TEXT", firstAddress, 2 * pageSize, 2 * pageSize, readAndExecute));
    commands.add(commandLoadDylinker, dynamicLinker());
    if (encryption != Encryption::Absent)
        commands.add(commandEncryptionInfo64, encryptionInformation(encryption == Encryption::Set));

    std::string file;
    for (const std::uint32_t value : { magic64, cpuTypeArm64, 0U, fileTypeExecute, commands.count(),
             static_cast<std::uint32_t>(commands.bytes().size()), 0x85U, 0U })
        Commands::append(file, value);
    file += commands.bytes();
    file.resize(2 * pageSize);
    return file;
}

} // namespace phone
