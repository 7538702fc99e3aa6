#include "platform/foundation/url.h"

#include "platform/foundation/file_url.h"
#include "platform/foundation/files.h"
#include "platform/foundation/value_objects.h"

#include <algorithm>
#include <vector>

namespace platform {

namespace {

constexpr std::string_view hexadecimal = "0123456789ABCDEF";

bool isLetter(char c) noexcept
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool isDigit(char c) noexcept
{
    return c >= '0' && c <= '9';
}

bool isUnreserved(char c) noexcept
{
    return isLetter(c) || isDigit(c) || std::string_view("-._~").find(c) != std::string_view::npos;
}

/// The value of a hexadecimal digit, or -1.
int digitValue(char c) noexcept
{
    const std::size_t value = hexadecimal.find(c >= 'a' && c <= 'f' ? static_cast<char>(c - 'a' + 'A') : c);
    return value == std::string_view::npos ? -1 : static_cast<int>(value);
}

bool isEscape(std::string_view text, std::size_t index) noexcept
{
    return index + 2 < text.size() && digitValue(text[index + 1]) >= 0 && digitValue(text[index + 2]) >= 0;
}

bool mayBeUrl(std::string_view text) noexcept
{
    constexpr std::string_view reserved = ":/?#[]@!$&'()*+,;=";
    for (std::size_t index = 0; index < text.size(); ++index) {
        const char c = text[index];
        if (c == '%' ? !isEscape(text, index) : !isUnreserved(c) && reserved.find(c) == std::string_view::npos)
            return false;
    }
    return !text.empty();
}

std::string unescaped(std::string_view text)
{
    std::string result;
    for (std::size_t index = 0; index < text.size(); ++index) {
        if (text[index] == '%' && isEscape(text, index)) {
            result += static_cast<char>(digitValue(text[index + 1]) * 16 + digitValue(text[index + 2]));
            index += 2;
        } else {
            result += text[index];
        }
    }
    return result;
}

/// The length of the scheme that the text starts with; 0 when it has none.
std::size_t schemeLength(std::string_view text) noexcept
{
    const std::size_t colon = text.find(':');
    if (colon == std::string_view::npos || !isLetter(text.front()))
        return 0;
    const bool valid = std::ranges::all_of(
        text.substr(0, colon), [](char c) { return isLetter(c) || isDigit(c) || c == '+' || c == '-' || c == '.'; });
    return valid ? colon : 0;
}

/// The host of an authority: without user, password and port.
std::string_view hostOf(std::string_view authority) noexcept
{
    if (const std::size_t at = authority.rfind('@'); at != std::string_view::npos)
        authority.remove_prefix(at + 1);
    if (authority.starts_with('[')) {
        const std::size_t end = authority.find(']');
        return authority.substr(1, end == std::string_view::npos ? end : end - 1);
    }
    return authority.substr(0, authority.find(':'));
}

UrlParts partsOf(std::string_view text)
{
    UrlParts parts;
    text = text.substr(0, text.find('#'));
    if (const std::size_t length = schemeLength(text); length > 0) {
        parts.scheme = text.substr(0, length);
        text.remove_prefix(length + 1);
    }
    if (const std::size_t question = text.find('?'); question != std::string_view::npos) {
        parts.query = text.substr(question + 1);
        text = text.substr(0, question);
    }
    if (text.starts_with("//")) {
        text.remove_prefix(2);
        const std::size_t slash = std::min(text.find('/'), text.size());
        parts.host = unescaped(hostOf(text.substr(0, slash)));
        text.remove_prefix(slash);
    }
    if (text.size() > 1 && text.ends_with('/'))
        text.remove_suffix(1);
    parts.path = unescaped(text);
    return parts;
}

std::string fileURLText(std::string_view path)
{
    std::string text = path.starts_with('/') ? "file://" : "file:///";
    for (const char c : path) {
        if (isUnreserved(c) || std::string_view("/!$&'()*+,=:@").find(c) != std::string_view::npos) {
            text += c;
        } else {
            text += '%';
            text += hexadecimal[static_cast<unsigned char>(c) >> 4];
            text += hexadecimal[static_cast<unsigned char>(c) & 0xF];
        }
    }
    return text;
}

} // namespace

namespace detail {

namespace {

class Url final : public NSObject {
public:
    static constexpr const ClassDefinition& definition = NSURL_class;
    Url() = default;
    explicit Url(std::string_view text, std::optional<FilePlace> place = std::nullopt)
        : text_(text)
        , place_(std::move(place))
    {
    }
    explicit Url(WalkedEntry entry)
        : entry_(std::move(entry))
    {
    }

    bool isEqualTo(const NSObject& other) const noexcept override
    {
        return typeid(other) == typeid(Url) && static_cast<const Url&>(other).text() == text();
    }
    std::size_t hashValue() const noexcept override { return std::hash<std::string> {}(text()); }

    /// Of an entry it is made when it is asked for: most are removed and never read.
    std::string text() const { return entry_.directory ? fileURLText(pathOf(place().value())) : text_; }
    UrlParts parts() const { return partsOf(text()); }

    std::optional<FilePlace> place() const
    {
        if (entry_.directory) {
            FilePlace place = entry_.directory->path->place();
            place.below = pathByAppending(place.below, entry_.name);
            return place;
        }
        if (place_)
            return place_;
        return isFileUrl() ? std::optional(FilePlace { parts().path, {} }) : std::nullopt;
    }

    const WalkedEntry& entry() const noexcept { return entry_; }

    void become(const std::shared_ptr<const WalkedDirectory>& directory, const char* name, EntryKind kind)
    {
        if (entry_.directory != directory)
            entry_.directory = directory;
        entry_.name = name;
        entry_.kind = kind;
    }

    static id textOrNil(const std::string& part) { return part.empty() ? nil : string(part); }
    id absoluteString() const { return string(text()); }
    id scheme() const { return textOrNil(parts().scheme); }
    id host() const { return textOrNil(parts().host); }
    id path() const { return string(parts().path); }
    id query() const { return textOrNil(parts().query); }
    bool isFileUrl() const { return entry_.directory || parts().scheme == "file"; }

    static std::string pathOf(const FilePlace& place)
    {
        return place.below.empty() ? place.anchor : pathByAppending(place.anchor, place.below);
    }

private:
    const std::string text_;
    const std::optional<FilePlace> place_;
    WalkedEntry entry_ {};
};

id Url_appending(const id& self, SEL, const id& component)
{
    const auto text = asString(component);
    return text ? urlByAppending(self, text->view()) : nil;
}

id Url_self(const id& self, SEL)
{
    return self;
}

id Url_urlWithString(const id&, SEL, const id& text)
{
    const auto content = asString(text);
    return content ? url(content->view()) : nil;
}

id Url_fileUrlWithPath(const id&, SEL, const id& path)
{
    const auto content = asString(path);
    return content ? fileURL(content->view()) : nil;
}

constexpr MethodDefinition methods[] {
    method<"URLByAppendingPathComponent:", &Url_appending>(),
    classMethod<"URLWithString:", &Url_urlWithString>(),
    method<"absoluteString", &Url::absoluteString>(),
    method<"copy", &Url_self>(),
    method<"description", &Url::absoluteString>(),
    classMethod<"fileURLWithPath:", &Url_fileUrlWithPath>(),
    method<"getResourceValue:forKey:error:", &getResourceValue>(),
    method<"host", &Url::host>(),
    method<"isFileURL", &Url::isFileUrl>(),
    method<"path", &Url::path>(),
    method<"query", &Url::query>(),
    method<"scheme", &Url::scheme>(),
};

} // namespace

const ClassDefinition NSURL_class { .name = "NSURL", .allocate = allocate<Url>, .methods = methods };

} // namespace detail

id url(std::string_view text)
{
    return mayBeUrl(text) ? id(make<detail::Url>(text)) : nil;
}

id fileURL(std::string_view path)
{
    return make<detail::Url>(fileURLText(path));
}

id urlByAppending(const id& url, std::string_view component)
{
    const auto* const found = detail::exactly<detail::Url>(url);
    if (!found)
        return nil;
    auto place = found->place();
    if (!place)
        return nil;
    place->below = pathByAppending(place->below, component);
    const std::string text = fileURLText(detail::Url::pathOf(*place));
    return make<detail::Url>(text, std::move(place));
}

std::optional<UrlParts> asUrl(const id& object)
{
    const auto* const found = detail::exactly<detail::Url>(object);
    return found ? std::optional(found->parts()) : std::nullopt;
}

namespace detail {

FilePlace WalkedPath::place() const
{
    std::vector<const std::string*> names;
    const WalkedPath* at = this;
    for (; at->above; at = at->above.get())
        names.push_back(&at->name);
    FilePlace place = at->top;
    for (auto name = names.rbegin(); name != names.rend(); ++name)
        place.below = pathByAppending(place.below, **name);
    return place;
}

void setUrlOfEntry(id& url, const std::shared_ptr<const WalkedDirectory>& directory, const char* name, EntryKind kind)
{
    if (url && url->isHeldOnce())
        static_cast<Url&>(*url).become(directory, name, kind);
    else
        url = make<Url>(WalkedEntry { directory, name, kind });
}

const WalkedEntry* walkedEntry(const id& url)
{
    const auto* const found = exactly<Url>(url);
    return found && found->entry().directory ? &found->entry() : nullptr;
}

std::optional<FilePlace> filePlace(const id& url)
{
    const auto* const found = exactly<Url>(url);
    return found ? found->place() : std::nullopt;
}

} // namespace detail

} // namespace platform
