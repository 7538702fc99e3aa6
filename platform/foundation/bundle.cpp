#include "platform/foundation/bundle.h"

#include "platform/foundation/files.h"
#include "platform/foundation/property_list.h"
#include "platform/foundation/url.h"
#include "platform/foundation/values.h"

namespace platform {

namespace {

id bundleWithPath(const id&, SEL, const id& path)
{
    const auto text = asString(path);
    return text ? NSBundle::withPath(*text) : nil;
}

id bundleWithUrl(const id&, SEL, const id& url)
{
    return CFBundleCreate(nullptr, url);
}

constexpr MethodDefinition methods[] {
    method<"bundleIdentifier", &NSBundle::bundleIdentifier>(),
    method<"bundlePath", &NSBundle::bundlePath>(),
    method<"bundleURL", &NSBundle::bundleUrl>(),
    classMethod<"bundleWithPath:", &bundleWithPath>(),
    classMethod<"bundleWithURL:", &bundleWithUrl>(),
    method<"infoDictionary", &NSBundle::infoDictionary>(),
    method<"pathForResource:ofType:", &NSBundle::pathForResource>(),
};

} // namespace

const ClassDefinition NSBundle::definition { .name = "NSBundle", .allocate = allocate<NSBundle>, .methods = methods };

id NSBundle::withPath(std::string_view path)
{
    return !path.empty() && directoryExists(path) ? id(make<NSBundle>(std::string(path))) : nil;
}

id NSBundle::bundlePath() const
{
    return string(path_);
}

id NSBundle::bundleUrl() const
{
    return fileURL(path_);
}

id NSBundle::infoDictionary() const
{
    return dictionaryWithContentsOfFile(pathByAppending(path_, "Info.plist"));
}

id NSBundle::bundleIdentifier() const
{
    const id identifier = pairsOf(infoDictionary())["CFBundleIdentifier"];
    return asString(identifier) ? identifier : nil;
}

id NSBundle::pathForResource(const id& name, const id& type) const
{
    const auto resource = asString(name);
    if (!resource || resource->empty() || resource->view().find("..") != std::string_view::npos)
        return nil;
    const auto suffix = asString(type);
    const std::string path = pathByAppending(path_, resource->text())
        + (suffix && !suffix->empty() ? "." + suffix->text() : std::string());
    return fileKind(path) == FileKind::Regular ? string(path) : nil;
}

id CFBundleCreate(const void*, const id& url)
{
    const auto parts = asUrl(url);
    return parts && parts->scheme == "file" ? NSBundle::withPath(parts->path) : nil;
}

} // namespace platform
