#include "phone/iconservices/icon_pictures.h"

#include "phone/iconservices/drawing.h"
#include "phone/iconservices/glyphs.h"
#include "phone/system/wall_clock.h"
#include "platform/foundation/files.h"
#include "platform/foundation/property_list.h"
#include "platform/screen/framework.h"

#include <algorithm>
#include <string>

namespace phone {

using namespace platform;

namespace {

constexpr CGRect square { {}, { iconSide, iconSide } };

/// The name of the largest picture that Info.plist gives for the Home Screen; "" for none.
std::string namedIcon(const id& information)
{
    const id primary
        = pairsOf(pairsOf(pairsOf(information)["CFBundleIcons"])["CFBundlePrimaryIcon"])["CFBundleIconFiles"];
    for (const id& files : { primary, pairsOf(information)["CFBundleIconFiles"] })
        if (const ArrayValue names = itemsOf(files); !names.empty())
            if (const auto name = asString(names[names.size() - 1]))
                return name->text();
    const auto name = asString(pairsOf(information)["CFBundleIconFile"]);
    return name ? name->text() : "";
}

id ownPicture(std::string_view bundlePath)
{
    const std::string name = namedIcon(dictionaryWithContentsOfFile(pathByAppending(bundlePath, "Info.plist")));
    if (name.empty())
        return nil;
    for (const char* const ending : { "@3x.png", "@2x.png", ".png", "" }) {
        const std::string path = pathByAppending(bundlePath, name + ending);
        if (!fileExists(path))
            continue;
        if (id image = send<"imageWithContentsOfFile:">(id(classNamed<"UIImage">()), string(path)))
            return image;
    }
    return nil;
}

std::uint32_t hashOf(std::string_view text)
{
    std::uint32_t hash = 2166136261U;
    for (const char c : text)
        hash = (hash ^ static_cast<unsigned char>(c)) * 16777619U;
    return hash ^ hash >> 15;
}

/// The first letter or sign of a name, whole even where it takes several bytes.
std::string initialOf(std::string_view name)
{
    std::size_t length = std::min<std::size_t>(name.size(), 1);
    while (length < name.size() && (static_cast<unsigned char>(name[length]) & 0xC0) == 0x80)
        ++length;
    std::string initial(name.substr(0, length));
    if (initial.size() == 1 && initial[0] >= 'a' && initial[0] <= 'z')
        initial[0] = static_cast<char>(initial[0] - 'a' + 'A');
    return initial;
}

void drawInitial(std::string_view identifier, std::string_view name)
{
    const double hue = hashOf(identifier) % 360 / 360.0;
    const id colors(classNamed<"UIColor">());
    const auto tone = [&](double shift, double saturation, double brightness) {
        return send<"colorWithHue:saturation:brightness:alpha:">(
            colors, std::fmod(hue + shift, 1), saturation, brightness, 1.0);
    };
    fillGradient(roundedRect(square, 0), square, tone(0, 0.55, 0.95), tone(0.06, 0.8, 0.7));
    drawCentered(initialOf(name), systemFont(32, true), color(0xFFFFFF), { iconSide / 2, iconSide / 2 });
}

/// A hair's breadth of light along the edge sets an icon off from a wallpaper of its own colour.
void drawRim(const CGSize& size, double cornerRadius)
{
    constexpr double inset = 0.25;
    stroke(
        roundedRect(CGRectInset({ {}, size }, inset, inset), cornerRadius - inset), color(0xFFFFFF, 0.18), 2 * inset);
}

} // namespace

id squarePicture(std::string_view identifier, std::string_view name, std::string_view bundlePath)
{
    const id own = ownPicture(bundlePath);
    return drawImage(square.size, [&] {
        if (own)
            send<"drawInRect:", void>(own, square);
        else if (!drawGlyphIcon(identifier, square))
            drawInitial(identifier, name);
    });
}

id squarePictureOfWebClip(std::string_view identifier, std::string_view title, std::string_view folder)
{
    const id own
        = send<"imageWithContentsOfFile:">(id(classNamed<"UIImage">()), string(pathByAppending(folder, "icon.png")));
    return drawImage(square.size, [&] {
        if (own)
            send<"drawInRect:", void>(own, square);
        else
            drawInitial(identifier, title);
    });
}

id iconOfPicture(const id& picture, const CGSize& size, double cornerRadius)
{
    if (!picture)
        return nil;
    return drawImage(size, [&] {
        const id context = UIGraphicsGetCurrentContext();
        send<"saveState", void>(context);
        send<"addClip", void>(roundedRect({ {}, size }, cornerRadius));
        send<"drawInRect:", void>(picture, CGRect { {}, size });
        send<"restoreState", void>(context);
        drawRim(size, cornerRadius);
    });
}

id pictureOfFolder(const std::vector<id>& images)
{
    return drawImage(square.size, [&] {
        fill(roundedRect(square, iconCornerRadius), color(0xE6E8F0, 0.42));
        constexpr double gap = 3.5;
        constexpr double margin = (iconSide - 3 * iconSideInFolder - 2 * gap) / 2;
        for (std::size_t index = 0; index < std::min<std::size_t>(images.size(), 9); ++index) {
            const std::size_t column = index % 3;
            const std::size_t row = index / 3;
            const CGPoint corner { margin + static_cast<double>(column) * (iconSideInFolder + gap),
                margin + static_cast<double>(row) * (iconSideInFolder + gap) };
            send<"drawInRect:", void>(images[index], CGRect { corner, { iconSideInFolder, iconSideInFolder } });
        }
        drawRim(square.size, iconCornerRadius);
    });
}

id pictureOfWidget(const CGSize& size)
{
    constexpr const char* weekdays[] { "Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday" };
    constexpr double cornerRadius = 22;
    const LocalTime now = localTime();
    return drawImage(size, [&] {
        fill(roundedRect({ {}, size }, cornerRadius), color(0xFFFFFF));
        const double middle = size.width / 2;
        drawCentered(weekdays[now.weekday], systemFont(15, true), color(0xFF3B30), { middle, 28 });
        drawCentered(std::to_string(now.day), systemFont(54, false), color(0x1C1C1E), { middle, 76 });
        drawCentered("No events today", systemFont(12, false), color(0x8E8E93), { middle, size.height - 26 });
        drawRim(size, cornerRadius);
    });
}

} // namespace phone
