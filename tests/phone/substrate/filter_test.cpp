#include "phone/substrate/filter.h"

#include "platform/foundation/text_property_list.h"
#include "platform/foundation/values.h"

#include <gtest/gtest.h>

namespace phone {

using namespace platform;

TEST(SubstrateFilter, NamesAProcessByBothListsOrWithModeAnyByOne)
{
    using enum FilterAnswer;
    const struct {
        const char* text;
        FilterAnswer springBoard;
        FilterAnswer appstored;
    } cases[] {
        { "{ Filter = { Bundles = ( com.apple.springboard ); }; }", Names, DoesNotName },
        { "{ Filter = { Executables = ( appstored ); }; }", DoesNotName, Names },
        { "{ Filter = { Bundles = ( com.apple.springboard ); Executables = ( appstored ); }; }", DoesNotName,
            DoesNotName },
        { "{ Filter = { Bundles = ( com.apple.springboard ); Executables = ( SpringBoard, appstored ); }; }", Names,
            DoesNotName },
        { "{ Filter = { Bundles = ( com.apple.springboard ); Executables = ( appstored ); Mode = Any; }; }", Names,
            Names },
        { "{ Filter = { Bundles = ( com.apple.springboard ); Executables = ( appstored ); Mode = All; }; }",
            DoesNotName, DoesNotName },
        { "{ Filter = { Bundles = (); }; }", DoesNotName, DoesNotName },
        { "{ Filter = { Bundles = com.apple.springboard; }; }", Unreadable, Unreadable },
        { "{ Filter = { Mode = Any; }; }", Unreadable, Unreadable },
        { "{ Bundles = ( com.apple.springboard ); }", Unreadable, Unreadable },
        { "( Filter )", Unreadable, Unreadable },
    };
    for (const auto& [text, springBoard, appstored] : cases) {
        const auto filter = platform::detail::readTextPropertyList(text);
        ASSERT_TRUE(filter) << text;
        EXPECT_EQ(askFilter(*filter, "com.apple.springboard", "SpringBoard"), springBoard) << text;
        EXPECT_EQ(askFilter(*filter, "com.apple.appstored", "appstored"), appstored) << text;
    }
    EXPECT_EQ(askFilter(nil, "com.apple.springboard", "SpringBoard"), Unreadable);
}

} // namespace phone
