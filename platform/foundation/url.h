#pragma once

#include "platform/runtime/object.h"

#include <optional>
#include <string>
#include <string_view>

namespace platform {

/// The parts of an NSURL, empty where it has none. Percent escapes of the path are resolved, and a slash
/// at its end is left out. Of a URL without slashes after the scheme ("prefs:root=X") the rest is its path.
struct UrlParts {
    std::string scheme;
    std::string host;
    std::string path;
    std::string query;
};

/// An NSURL of that text (it answers `absoluteString`, `scheme`, `host`, `path`, `query`), or nil when the
/// text is empty or holds a character that no URL may hold (a "%" that starts no escape among them). It
/// answers nil to a part other than the path that it doesn't have.
id url(std::string_view text);

/// A file URL of a device path.
id fileURL(std::string_view path);

/// `URLByAppendingPathComponent:` on a file URL; nil for any other. Who opens or removes what such a URL names
/// follows no link in what was appended, so that it never leads out of what it was appended to.
id urlByAppending(const id& url, std::string_view component);

std::optional<UrlParts> asUrl(const id& object);

} // namespace platform
