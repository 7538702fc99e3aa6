#include "platform/runtime/class_definition.h"

namespace phone {

using namespace platform;

namespace {

/// The icon beside a search result, named by its application.
class SearchUIAppIconImage : public NSObject {
public:
    id bundleIdentifier;
};

constexpr MethodDefinition methods[] {
    getter<"bundleIdentifier", &SearchUIAppIconImage::bundleIdentifier>(),
    setter<"setBundleIdentifier:", &SearchUIAppIconImage::bundleIdentifier>(),
};

} // namespace

extern const ClassDefinition SearchUIAppIconImage_class {
    .name = "SearchUIAppIconImage", .allocate = allocate<SearchUIAppIconImage>, .methods = methods
};

} // namespace phone
