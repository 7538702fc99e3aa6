#include "phone/device/sample_applications.h"

namespace phone {

namespace {

constexpr std::string_view location[] { "location" };
constexpr std::string_view audio[] { "audio" };
constexpr std::string_view audioAndFetch[] { "audio", "fetch" };
constexpr std::string_view messages[] { "remote-notification", "voip", "fetch" };
constexpr std::string_view fetch[] { "fetch", "remote-notification" };
constexpr std::string_view webAddresses[] { "https" };
constexpr std::string_view bankQueries[] { "pigeon", "wayfare" };
constexpr std::string_view chatQueries[] { "gramophone", "lantern", "wayfare", "harbourbank" };
constexpr std::string_view shopQueries[] { "harbourbank" };
constexpr std::string_view pigeonPost[] { "pigeonpost" };
constexpr std::string_view chatActivities[] { "INSendMessageIntent", "INStartCallIntent" };
constexpr std::string_view mapActivities[] { "com.example.maps.route" };
constexpr std::string_view musicActivities[] { "INPlayMediaIntent" };
constexpr std::string_view noteActivities[] { "com.example.notes.editing", "com.example.notes.viewing" };
constexpr std::string_view gazetteGroup[] { "group.com.example.news" };
constexpr std::string_view pigeonGroups[] { "group.com.example.chat", "group.com.example.Chat.media" };
constexpr std::string_view paperGroup[] { "group.com.example.paper" };

// The third-party ones are made up; the system's have the identifiers under which the system knows them.
constexpr SampleApplication applications[] {
    { "com.apple.AppStore", "App Store", "3.0", "itms-apps", true },
    { "com.apple.MobileSMS", "Messages", "1.0", "sms", true },
    { "com.apple.Preferences", "Settings", "1.0", "prefs", true },
    { "com.apple.camera", "Camera", "1.0", "", true },
    { "com.apple.mobilecal", "Calendar", "1.0", "calshow", true },
    { "com.apple.mobilemail", "Mail", "1.0", "mailto", true },
    { "com.apple.mobilenotes", "Notes", "1.0", "mobilenotes", true },
    { "com.apple.mobilesafari", "Safari", "1.0", "http", true, 0, { .otherSchemes = webAddresses } },
    { "com.apple.mobileslideshow", "Photos", "1.0", "photos-redirect", true },
    { "com.apple.mobiletimer", "Clock", "1.0", "clock-alarm", true },
    { "com.example.bank", "Harbour Bank", "4.2.1", "harbourbank", false, 1000000101,
        { .queriesSchemes = bankQueries } },
    { "com.example.chat", "Pigeon", "12.0", "pigeon", false, 1000000102,
        { pigeonPost, chatQueries, chatActivities, messages, pigeonGroups } },
    { "com.example.game", "Marble Run", "2.7", "", false, 1000000103 },
    { "com.example.mail", "Letterbox", "1.9.3", "letterbox", false, 1000000104,
        { .backgroundModes = fetch, .groups = paperGroup } },
    { "com.example.maps", "Wayfare", "7.1", "wayfare", false, 1000000105,
        { .activityTypes = mapActivities, .backgroundModes = location } },
    { "com.example.music", "Gramophone", "5.5", "gramophone", false, 1000000106,
        { .activityTypes = musicActivities, .backgroundModes = audioAndFetch } },
    { "com.example.news", "The Gazette", "3.3", "gazette", false, 1000000107,
        { .backgroundModes = fetch, .groups = gazetteGroup } },
    // From its maker, without the store.
    { "com.example.notes", "Scribbles", "1.4", "scribbles", false, 0,
        { .activityTypes = noteActivities, .groups = paperGroup } },
    { "com.example.shop", "Corner Shop", "6.0.2", "cornershop", false, 1000000109, { .queriesSchemes = shopQueries } },
    { "com.example.video", "Lantern", "9.8", "lantern", false, 1000000110, { .backgroundModes = audio } },
};

} // namespace

std::span<const SampleApplication> sampleApplications() noexcept
{
    return applications;
}

} // namespace phone
