#pragma once

#include "platform/runtime/class_definition.h"
#include "platform/runtime/object.h"

#include <string>
#include <string_view>

namespace platform {

/// NSBundle: a folder of the device with an Info.plist and resources. What stands in it is read when it is asked for.
/// Any thread.
class NSBundle final : public NSObject {
public:
    static const ClassDefinition definition;
    NSBundle() = default;
    explicit NSBundle(std::string path)
        : path_(std::move(path))
    {
    }

    /// `bundleWithPath:`. Nil where there is no folder.
    static id withPath(std::string_view path);

    const std::string& path() const noexcept { return path_; }
    id bundlePath() const;
    id bundleUrl() const;
    id bundleIdentifier() const; ///< nil unless the Info.plist names one by a text
    id infoDictionary() const; ///< nil where there is none

    /// `pathForResource:ofType:`. Nil where there is no such file; a name leads nowhere else. An empty or nil type adds
    /// nothing to the name.
    id pathForResource(const id& name, const id& type) const;

private:
    std::string path_;
};

/// The bundle at a file URL, which NSBundle answers for; nil where there is no folder. The allocator isn't used.
id CFBundleCreate(const void* allocator, const id& url);

} // namespace platform
