#include "platform/foundation/classes.h"

#include "platform/foundation/block.h"
#include "platform/foundation/bundle.h"
#include "platform/foundation/cache.h"
#include "platform/foundation/file_manager.h"
#include "platform/foundation/user_defaults.h"
#include "platform/foundation/value_objects.h"

namespace platform {

std::span<const ClassDefinition* const> foundationClasses() noexcept
{
    static constexpr const ClassDefinition* classes[] {
        &detail::Array::definition,
        &Block::definition,
        &NSBundle::definition,
        &detail::NSByteCountFormatter_class,
        &NSCache::definition,
        &detail::NSCharacterSet_class,
        &detail::NSData_class,
        &detail::NSDate_class,
        &detail::Dictionary::definition,
        &NSDirectoryEnumerator::definition,
        &detail::NSError_class,
        &NSFileManager::definition,
        &detail::NSIndexPath_class,
        &detail::NSIndexSet_class,
        &detail::MutableArray::definition,
        &detail::MutableDictionary::definition,
        &detail::MutableSet::definition,
        &detail::NSNotification_class,
        &detail::NSNotificationCenter_class,
        &detail::NSNumber_class,
        &detail::Set::definition,
        &detail::String::definition,
        &detail::NSURL_class,
        &NSUserDefaults::definition,
    };
    return classes;
}

} // namespace platform
