#include "platform/foundation/values.h"
#include "platform/screen/framework.h"
#include "support/view_test.h"

namespace {

using namespace platform;
using support::classObject;

class Elements : public support::ViewTest {
protected:
    id window = makeWindow();

    static id add(const id& parent, const char* cls, const CGRect& frame)
    {
        const id view = send<"initWithFrame:">(send<"alloc">(id(objc_getClass(cls))), frame);
        send<"addSubview:", void>(parent, view);
        return view;
    }

    static id lastOf(const id& list)
    {
        const auto items = asArray(list);
        return (*items)[items->size() - 1];
    }

    /// The last child of the last child … of the frontmost window, so deep.
    static id lastElement(int depth)
    {
        id found = lastOf(elementsOfScreen());
        for (int level = 0; level < depth; ++level)
            found = lastOf(send<"objectForKey:">(found, string("children")));
        return found;
    }

    static std::string text(const id& element, std::string_view key)
    {
        const auto value = asString(send<"objectForKey:">(element, string(key)));
        return value ? value->text() : "";
    }
};

TEST_F(Elements, HaveTheirPlaceOnTheScreenThroughMovedAndScaledParents)
{
    send<"setFrame:", void>(window, CGRectMake(0, 100, 390, 400));
    const id parent = add(window, "UIView", CGRectMake(10, 20, 200, 100));
    send<"setBounds:", void>(parent, CGRectMake(0, 30, 200, 100));
    const id child = add(parent, "UIView", CGRectMake(50, 40, 40, 20));
    send<"setTransform:", void>(child, CGAffineTransformMakeScale(2, 2));
    const id frame = send<"objectForKey:">(lastElement(2), string("frame"));
    const double expected[] { 40, 120, 80, 40 };
    for (std::size_t index = 0; index < 4; ++index)
        EXPECT_DOUBLE_EQ(*asDouble((*asArray(frame))[index]), expected[index]) << index;
}

TEST_F(Elements, AreNamedByWhatAPersonSees)
{
    const id label = add(window, "UILabel", CGRectMake(0, 0, 100, 20));
    send<"setText:", void>(label, string("Twelve"));
    EXPECT_EQ(text(lastElement(1), "label"), "Twelve");
    EXPECT_EQ(text(lastElement(1), "role"), "text");
    send<"setAccessibilityLabel:", void>(label, string("12"));
    send<"setAccessibilityIdentifier:", void>(label, string("count"));
    EXPECT_EQ(text(lastElement(1), "label"), "12");
    EXPECT_EQ(text(lastElement(1), "identifier"), "count");

    const id picture = add(window, "UIImageView", CGRectMake(0, 0, 20, 20));
    send<"setImage:", void>(picture, send<"systemImageNamed:">(classObject<"UIImage">(), string("xmark")));
    EXPECT_EQ(text(lastElement(1), "role"), "image");
    EXPECT_EQ(text(lastElement(1), "picture"), "xmark");

    const id tapped = add(window, "UIView", CGRectMake(0, 0, 20, 20));
    send<"addGestureRecognizer:", void>(
        tapped, send<"initWithTarget:action:">(send<"alloc">(classObject<"UITapGestureRecognizer">()), nil, SEL {}));
    EXPECT_EQ(text(lastElement(1), "role"), "button");
}

TEST_F(Elements, AreOutOfSightWithWhatTheyStandIn)
{
    const id parent = add(window, "UIView", CGRectMake(0, 0, 100, 100));
    add(parent, "UIView", CGRectMake(0, 0, 10, 10));
    EXPECT_EQ(asBool(send<"objectForKey:">(lastElement(2), string("visible"))), true);
    send<"setAlpha:", void>(parent, 0.0);
    EXPECT_EQ(asBool(send<"objectForKey:">(lastElement(2), string("visible"))), false);
    send<"setAlpha:", void>(parent, 1.0);
    send<"setHidden:", void>(parent, true);
    EXPECT_EQ(asBool(send<"objectForKey:">(lastElement(2), string("visible"))), false);
    EXPECT_EQ(viewOnScreenAt({ 5, 5 }), window);
}

} // namespace
