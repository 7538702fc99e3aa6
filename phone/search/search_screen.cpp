#include "phone/search/search_screen.h"

#include "phone/iconservices/drawing.h"
#include "phone/launchservices/installed_applications.h"

#include <algorithm>
#include <cctype>

namespace phone {

using namespace platform;

namespace {

constexpr double margin = 16;
constexpr double fieldTop = 58;
constexpr double fieldHeight = 40;
constexpr double rowHeight = 60;
constexpr double iconSide = 40;

id newView(Class cls, const CGRect& frame)
{
    return send<"initWithFrame:">(send<"alloc">(id(cls)), frame);
}

id addLabel(const id& parent, const CGRect& frame, std::string_view text, const id& font, const id& textColor)
{
    id label = newView(classNamed<"UILabel">(), frame);
    send<"setText:", void>(label, string(text));
    send<"setFont:", void>(label, font);
    send<"setTextColor:", void>(label, textColor);
    send<"addSubview:", void>(parent, label);
    return label;
}

void addField(const id& parent, double width, const std::string& text)
{
    const id field = newView(classNamed<"UIView">(), CGRectMake(margin, fieldTop, width - 2 * margin, fieldHeight));
    send<"setBackgroundColor:", void>(field, color(0x767680, 0.24));
    send<"setCornerRadius:", void>(send<"layer">(field), 11.0);
    send<"addSubview:", void>(parent, field);
    addLabel(field, CGRectMake(14, 0, width - 2 * margin - 28, fieldHeight), text.empty() ? "Search" : text,
        systemFont(17, false), color(0xFFFFFF, text.empty() ? 0.5 : 1));
}

void addRow(const id& parent, const CGRect& frame, const SearchResult& result)
{
    const id row = newView(classNamed<"UIView">(), frame);
    const id picture
        = newView(classNamed<"SearchUIImageView">(), CGRectMake(14, (rowHeight - iconSide) / 2, iconSide, iconSide));
    const id image = send<"new">(id(classNamed<"SearchUIAppIconImage">()));
    send<"setBundleIdentifier:", void>(image, string(result.bundleIdentifier));
    send<"setSize:", void>(
        image, send<"valueWithCGSize:">(id(classNamed<"NSValue">()), CGSizeMake(iconSide, iconSide)));
    send<"updateWithImage:", void>(picture, image);
    send<"addSubview:", void>(row, picture);
    addLabel(row, CGRectMake(iconSide + 28, 0, frame.size.width - iconSide - 42, rowHeight), result.name,
        systemFont(17, false), color(0xFFFFFF));
    send<"addSubview:", void>(parent, row);
}

std::string lowerCase(std::string text)
{
    std::ranges::transform(text, text.begin(), [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

} // namespace

std::vector<SearchResult> searchApplications(const std::string& text)
{
    std::vector<SearchResult> results;
    for (InstalledApplication& application : installedApplications())
        if (lowerCase(application.displayName).find(lowerCase(text)) != std::string::npos)
            results.push_back({ std::move(application.bundleIdentifier), std::move(application.displayName) });
    return results;
}

void showSearch(const std::string& text, const std::vector<SearchResult>& results)
{
    static auto* const window = new id;
    *window = send<"new">(id(classNamed<"UIWindow">()));
    send<"setBackgroundColor:", void>(*window, color(0x1B2033));
    const CGSize screen = send<"bounds", CGRect>(*window).size;
    addField(*window, screen.width, text);
    constexpr double listTop = fieldTop + fieldHeight + 20;
    const auto room = static_cast<std::size_t>((screen.height - listTop - margin) / rowHeight);
    const std::size_t count = std::min(results.size(), room);
    const id list = newView(classNamed<"UIView">(),
        CGRectMake(margin, listTop, screen.width - 2 * margin, rowHeight * static_cast<double>(count)));
    send<"setBackgroundColor:", void>(list, color(0xFFFFFF, 0.1));
    send<"setCornerRadius:", void>(send<"layer">(list), 14.0);
    send<"addSubview:", void>(*window, list);
    for (std::size_t index = 0; index < count; ++index)
        addRow(list, CGRectMake(0, rowHeight * static_cast<double>(index), screen.width - 2 * margin, rowHeight),
            results[index]);
    send<"setHidden:", void>(*window, false);
}

} // namespace phone
