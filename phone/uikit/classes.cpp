#include "phone/uikit/classes.h"

#include "platform/uikit/framework.h"

#include <vector>

// sorted
#define CLASSES(X)                                                                                                     \
    X(UIActivityContinuationAction)                                                                                    \
    X(UIOpenURLAction)
// end sorted

PHONE_CLASS_LIST(ownUIKitClasses, CLASSES)

namespace phone {

ClassList uiKitClasses() noexcept
{
    static const auto* const all = [] {
        const ClassList views = platform::uiKitFrameworkClasses();
        const ClassList own = ownUIKitClasses();
        auto* const joined = new std::vector<const platform::ClassDefinition*>(views.begin(), views.end());
        joined->insert(joined->end(), own.begin(), own.end());
        return joined;
    }();
    return *all;
}

} // namespace phone
