#include "phone/uikit/classes.h"

#include "platform/screen/framework.h"

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
    static const std::vector<const platform::ClassDefinition*> all = [] {
        const ClassList views = platform::uiKitFrameworkClasses();
        std::vector<const platform::ClassDefinition*> joined(views.begin(), views.end());
        const ClassList own = ownUIKitClasses();
        joined.insert(joined.end(), own.begin(), own.end());
        return joined;
    }();
    return all;
}

} // namespace phone
