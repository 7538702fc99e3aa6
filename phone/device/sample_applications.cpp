#include "phone/device/sample_applications.h"

namespace phone {

namespace {

// The third-party ones are made up; the system's have the identifiers under which the system knows them.
constexpr SampleApplication applications[] {
    { "com.apple.AppStore", "App Store", "3.0", "itms-apps", true },
    { "com.apple.MobileSMS", "Messages", "1.0", "sms", true },
    { "com.apple.Preferences", "Settings", "1.0", "prefs", true },
    { "com.apple.camera", "Camera", "1.0", "", true },
    { "com.apple.mobilecal", "Calendar", "1.0", "calshow", true },
    { "com.apple.mobilemail", "Mail", "1.0", "mailto", true },
    { "com.apple.mobilenotes", "Notes", "1.0", "mobilenotes", true },
    { "com.apple.mobilesafari", "Safari", "1.0", "http", true },
    { "com.apple.mobileslideshow", "Photos", "1.0", "photos-redirect", true },
    { "com.apple.mobiletimer", "Clock", "1.0", "clock-alarm", true },
    { "com.example.bank", "Harbour Bank", "4.2.1", "harbourbank", false },
    { "com.example.chat", "Pigeon", "12.0", "pigeon", false },
    { "com.example.game", "Marble Run", "2.7", "", false },
    { "com.example.mail", "Letterbox", "1.9.3", "letterbox", false },
    { "com.example.maps", "Wayfare", "7.1", "wayfare", false },
    { "com.example.music", "Gramophone", "5.5", "gramophone", false },
    { "com.example.news", "The Gazette", "3.3", "gazette", false },
    { "com.example.notes", "Scribbles", "1.4", "scribbles", false },
    { "com.example.shop", "Corner Shop", "6.0.2", "cornershop", false },
    { "com.example.video", "Lantern", "9.8", "lantern", false },
};

} // namespace

std::span<const SampleApplication> sampleApplications() noexcept
{
    return applications;
}

} // namespace phone
