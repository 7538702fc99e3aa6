#include "platform/foundation/classes.h"
#include "platform/foundation/values.h"
#include "platform/runtime/message.h"

#include <gtest/gtest.h>

namespace platform {
namespace {

TEST(ByteCount, IsToldInTheLargestUnitThatItFills)
{
    for (const ClassDefinition* definition : foundationClasses())
        registerClass(*definition);
    constexpr NSInteger file = 0;
    constexpr NSInteger memory = 1;
    constexpr NSInteger binary = 3;
    const struct {
        std::int64_t count;
        NSInteger style;
        const char* text;
    } cases[] = {
        { 0, file, "Zero KB" },
        { 1, file, "1 byte" },
        { 2, file, "2 bytes" },
        { 999, file, "999 bytes" },
        { 1000, file, "1 KB" },
        { 1499, file, "1 KB" },
        { 999'499, file, "999 KB" },
        { 999'500, file, "1 MB" },
        { 1'234'567, file, "1.2 MB" },
        { 1'050'000'000, file, "1.05 GB" },
        { 1'999'999'999'999, file, "2 TB" },
        { INT64_MAX, file, "9.22 EB" },
        { -1, file, "-1 byte" },
        { -1'234'567, file, "-1.2 MB" },
        { INT64_MIN, file, "-9.22 EB" },
        { 1000, memory, "1000 bytes" },
        { 1024, memory, "1 KB" },
        { 1'572'864, binary, "1.5 MB" },
    };
    for (const auto& [count, style, text] : cases)
        EXPECT_EQ(describe(send<"stringFromByteCount:countStyle:">(
                      id(classNamed<"NSByteCountFormatter">()), static_cast<NSInteger>(count), style)),
            describe(string(text)))
            << count;
}

} // namespace
} // namespace platform
