#include "core/empty_directory.h"

#include "platform/foundation/file_manager.h"
#include "platform/runtime/message.h"

namespace appledger {

using namespace platform;

void emptyDirectory(const id& url)
{
    const id manager = send<"defaultManager">(id(classNamed<"NSFileManager">()));
    constexpr auto options = static_cast<NSUInteger>(DirectoryEnumerationOptions::SkipsSubdirectoryDescendants);
    const id entries
        = send<"enumeratorAtURL:includingPropertiesForKeys:options:errorHandler:">(manager, url, nil, options, nil);
    while (const id entry = send<"nextObject">(entries))
        send<"removeItemAtURL:error:", bool>(manager, entry, static_cast<id*>(nullptr));
}

} // namespace appledger
