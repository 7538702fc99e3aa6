#include "record/allocated_size.h"

#include "platform/foundation/block.h"
#include "platform/foundation/file_manager.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"

#include <cstdio>
#include <memory>

namespace appledger {

using namespace platform;

namespace {

const id& regularFileKey()
{
    static const auto* const kept = new id(string("NSURLIsRegularFileKey"));
    return *kept;
}

const id& totalAllocatedSizeKey()
{
    static const auto* const kept = new id(string("NSURLTotalFileAllocatedSizeKey"));
    return *kept;
}

const id& allocatedSizeKey()
{
    static const auto* const kept = new id(string("NSURLFileAllocatedSizeKey"));
    return *kept;
}

/// False when it can't be read; nil when there is none.
bool readValue(const id& url, const id& key, id& value, id* error)
{
    return send<"getResourceValue:forKey:error:", bool>(url, &value, key, error);
}

/// What a regular file takes, nothing for anything else. False when that can't be read.
bool addSize(const id& url, std::uint64_t& total, id* error)
{
    id value;
    if (!readValue(url, regularFileKey(), value, error))
        return false;
    if (!boolValue(value))
        return true;
    if (!readValue(url, totalAllocatedSizeKey(), value, error))
        return false;
    if (!value && !readValue(url, allocatedSizeKey(), value, error))
        return false;
    if (!value)
        std::fputs("huh? NSURLFileAllocatedSizeKey should always return a value\n", stderr);
    total += static_cast<std::uint64_t>(asInteger(value).value_or(0));
    return true;
}

bool getAllocatedSize(const id& self, SEL, unsigned long* size, const id& directory, id* error)
{
    constexpr auto options = static_cast<NSUInteger>(DirectoryEnumerationOptions::None);
    struct Failure {
        bool hasFailed = false;
        id error;
    };
    const auto failure = std::make_shared<Failure>();
    const id entries = send<"enumeratorAtURL:includingPropertiesForKeys:options:errorHandler:">(self, directory,
        array({ regularFileKey(), allocatedSizeKey(), totalAllocatedSizeKey() }), options,
        block([failure](const id&, const id& problem) {
            failure->hasFailed = true;
            failure->error = problem;
            return false;
        }));
    std::uint64_t total = 0;
    bool isRead = true;
    while (isRead) {
        const id entry = send<"nextObject">(entries);
        isRead = !failure->hasFailed;
        if (!entry || !isRead)
            break;
        isRead = addSize(entry, total, error);
    }
    if (failure->hasFailed && error)
        *error = failure->error;
    if (isRead && size)
        *size = total;
    return isRead;
}

constexpr MethodDefinition row = method<"nr_getAllocatedSize:ofDirectoryAtURL:error:", &getAllocatedSize>();

} // namespace

void addAllocatedSize()
{
    class_addMethod(classNamed<"NSFileManager">(), sel_registerName(row.selector), row.implementation(), row.types);
}

} // namespace appledger
