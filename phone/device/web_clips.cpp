#include "phone/device/web_clips.h"

#include "platform/foundation/files.h"
#include "platform/foundation/property_list.h"
#include "platform/foundation/values.h"

#include <algorithm>
#include <cstring>
#include <tuple>

namespace phone {

using namespace platform;

namespace {

constexpr std::string_view ending = ".webclip";

struct SampleWebClip {
    std::string_view identifier;
    std::string_view title;
    std::string_view url;
};

constexpr SampleWebClip samples[] {
    { "0C5A7E1D9B3F4A6287D10E6C5B4A3F21", "Tide Tables", "https://tides.example.com/" },
    { "7B1E44D2A6C84F0F9E3A52D8C1707E9B", "Bread Log", "https://bread.example.com/log" },
};

std::string textIn(const id& information, std::string_view key)
{
    const auto text = asString(pairsOf(information)[key]);
    return text ? text->text() : "";
}

} // namespace

std::vector<WebClip> webClips()
{
    std::vector<WebClip> clips;
    for (const std::string& name : directoryEntries(webClipFolder)) {
        if (!name.ends_with(ending))
            continue;
        const std::string folder = pathByAppending(webClipFolder, name);
        const id information = dictionaryWithContentsOfFile(pathByAppending(folder, "Info.plist"));
        if (asDictionary(information))
            clips.push_back({ name.substr(0, name.size() - ending.size()), textIn(information, "Title"),
                textIn(information, "URL"), folder });
    }
    std::ranges::sort(clips, {}, [](const WebClip& clip) { return std::tie(clip.title, clip.identifier); });
    return clips;
}

std::string installSampleWebClips()
{
    for (const SampleWebClip& sample : samples) {
        const std::string folder = pathByAppending(webClipFolder, std::string(sample.identifier).append(ending));
        const std::string path = pathByAppending(folder, "Info.plist");
        if (fileExists(path))
            continue;
        int error = createDirectories(folder);
        if (error == 0)
            error = writePropertyList(dictionary({ { "Title", string(sample.title) }, { "URL", string(sample.url) } }),
                path, PropertyListFormat::Binary);
        if (error != 0)
            return "can't write " + path + " on the phone: " + std::strerror(error);
    }
    return "";
}

} // namespace phone
