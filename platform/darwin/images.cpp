#include "platform/darwin/images.h"

#include "platform/foundation/files.h"

#include <cstdlib>
#include <dlfcn.h>
#include <map>
#include <memory>
#include <mutex>
#include <utility>

namespace platform {

struct Image {
    std::map<std::string, IMP, std::less<>> symbols;
};

namespace {

/// What the device has. Images are never taken away: a handle is good for the life of the process.
struct Images {
    std::mutex mutex;
    std::map<std::string, std::unique_ptr<Image>, std::less<>> byPath;
    std::map<const void*, std::string> devicePaths; ///< by the base address of the host's library
};

Images& images()
{
    static auto* const shared = new Images;
    return *shared;
}

/// The host's path of a file with all links resolved; empty when there is none.
std::string realPath(const char* path)
{
    const std::unique_ptr<char, decltype(&std::free)> resolved(::realpath(path, nullptr), &std::free);
    return resolved ? resolved.get() : "";
}

std::optional<std::string> beneathDeviceRoot(const char* hostPath)
{
    const std::string root = realPath(deviceRoot().c_str());
    const std::string path = realPath(hostPath);
    if (root.empty() || path.empty())
        return std::nullopt;
    if (root == "/")
        return path;
    if (!path.starts_with(root + '/'))
        return std::nullopt;
    return path.substr(root.size());
}

} // namespace

void declareImage(std::string_view path, std::span<const ImageSymbol> symbols)
{
    const std::lock_guard lock(images().mutex);
    std::unique_ptr<Image>& image = images().byPath[std::string(path)];
    if (!image)
        image = std::make_unique<Image>();
    for (const ImageSymbol& symbol : symbols)
        image->symbols.insert_or_assign(std::string(symbol.name), symbol.address);
}

ImageHandle dlopen(std::string_view path, int)
{
    const std::lock_guard lock(images().mutex);
    const auto found = images().byPath.find(path);
    return found == images().byPath.end() ? nullptr : found->second.get();
}

IMP dlsym(ImageHandle image, std::string_view name)
{
    if (!image)
        return nullptr;
    const std::lock_guard lock(images().mutex);
    const auto found = image->symbols.find(name);
    return found == image->symbols.end() ? nullptr : found->second;
}

std::optional<std::string> dladdr(const void* address)
{
    Dl_info information {};
    if (::dladdr(address, &information) == 0)
        return std::nullopt;
    {
        const std::lock_guard lock(images().mutex);
        const auto found = images().devicePaths.find(information.dli_fbase);
        if (found != images().devicePaths.end())
            return found->second;
    }
    return beneathDeviceRoot(information.dli_fname);
}

void setImagePath(const void* address, std::string devicePath)
{
    Dl_info information {};
    if (::dladdr(address, &information) == 0)
        return;
    const std::lock_guard lock(images().mutex);
    images().devicePaths.insert_or_assign(information.dli_fbase, std::move(devicePath));
}

} // namespace platform
