#include "platform/darwin/images.h"

#include "platform/foundation/device_path.h"
#include "platform/foundation/files.h"

#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <map>
#include <memory>
#include <mutex>
#include <sys/stat.h>
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
    std::map<std::string, std::string, std::less<>> loaded; ///< device paths by the name that the loader was given
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

/// What the host calls a file that is open here, whatever happens to the file.
std::string nameOfDescriptor(int descriptor)
{
    return "/proc/self/fd/" + std::to_string(descriptor);
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

std::string loadLibrary(std::string_view path)
{
    detail::Opening file = detail::openDevicePath(path, O_RDONLY | O_NONBLOCK | O_NOCTTY);
    const auto failed = [&path](std::string_view why) { return std::string(path) + ": " + std::string(why); };
    if (!file.descriptor)
        return failed(std::strerror(file.error));
    struct stat status { };
    if (::fstat(file.descriptor.get(), &status) != 0 || !S_ISREG(status.st_mode))
        return failed("it isn't a regular file");
    const std::string name = nameOfDescriptor(file.descriptor.get());
    {
        // Before its initialisers ask.
        const std::lock_guard lock(images().mutex);
        images().loaded.insert_or_assign(name, beneathDeviceRoot(name.c_str()).value_or(std::string(path)));
    }
    if (!::dlopen(name.c_str(), RTLD_NOW | RTLD_LOCAL))
        return failed(::dlerror());
    // It stays open: the loader knows a library by its name, and would take the next one with that number for this.
    file.descriptor.release();
    return {};
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
        const auto loaded = images().loaded.find(information.dli_fname);
        if (loaded != images().loaded.end())
            return loaded->second;
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
