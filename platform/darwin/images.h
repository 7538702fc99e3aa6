#pragma once

#include "platform/runtime/dispatch_table.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>

/// The images (executables and dynamic libraries) that the device has, and their symbols.

namespace platform {

/// An image's handle; null when there is none.
using ImageHandle = const struct Image*;

constexpr int RTLD_LAZY_MODE = 1;

struct ImageSymbol {
    std::string_view name;
    IMP address; ///< cast to the function's own type by who looks it up
};

/// Declares an image of the device with its symbols. Declaring a path again adds to it.
void declareImage(std::string_view path, std::span<const ImageSymbol> symbols);

/// The image of that path, or null when the device has none. The mode is a fact of the call only.
ImageHandle dlopen(std::string_view path, int mode);

/// The symbol's address, or null: for a null handle, and for a name that the image doesn't have.
IMP dlsym(ImageHandle image, std::string_view name);

/// The device path of the image that holds that code. For code of a library that was loaded from beneath
/// the device's root, its path there; empty when nobody knows.
std::optional<std::string> dladdr(const void* address);

/// Loads a library of the device, which lies beneath the device's root and is found there whatever links lead to it,
/// and keeps it; dladdr() then gives the path that it has with all links resolved. Its initialisers run meanwhile. ""
/// or why it wasn't loaded.
std::string loadLibrary(std::string_view path);

/// Says where on the device the code of the (host's) library with that address counts as lying. For hosts
/// and tests; it wins over what dladdr() would find.
void setImagePath(const void* address, std::string devicePath);

} // namespace platform
