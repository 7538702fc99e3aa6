#pragma once

#include "platform/screen/framework.h"
#include "platform/uikit/view.h"

#include <vector>

namespace platform {

class WindowObject : public ViewObject {
public:
    static const ClassDefinition definition;
    WindowObject();
    ~WindowObject() override;

    double windowLevel = 0;
    id rootViewController {};

    WindowObject* window() noexcept override { return this; }

    id scene() const;
    void setScene(const id& scene);

private:
    std::optional<id> scene_ {}; ///< none: nobody has said which
};

/// All windows there are, from the back to the front: by level, and on one level in the order in which they were made.
std::vector<Ref<WindowObject>> allWindows();

/// What the screen is: its size in points and how many pixels make one.
struct ScreenFacts {
    CGSize size { 390, 844 };
    double scale = 3;
    UIEdgeInsets safeArea { 47, 0, 34, 0 }; ///< what bars and round corners take
    InterfaceStyle style = InterfaceStyle::Light;
};
ScreenFacts& screenFacts() noexcept;

} // namespace platform
