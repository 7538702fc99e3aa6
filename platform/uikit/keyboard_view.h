#pragma once

#include "platform/uikit/keyboard_layout.h"
#include "platform/uikit/touches.h"

namespace platform {

enum class ShiftState { Off, On, Locked };

// What is typed, for the first responder.
bool takesText(const id& responder);
void enterText(std::string_view text);
void eraseText();
void pressReturn();

/// The keys, and the finger on them. A character is entered at the lift, by the key that the finger is on then; what
/// deletes does so at once, and again and again while the finger stays.
class KeyboardViewObject : public ViewObject {
public:
    static const ClassDefinition definition;

    /// As the responder wants it, from the first page on.
    void setUp(const id& responder);
    void textChanged();
    void layoutSubviews();
    KeyboardType type() const noexcept { return type_; }
    ShiftState shift() const noexcept { return shift_; }
    long returnKeyType() const noexcept { return returnKeyType_; }
    bool canReturn() const noexcept { return canReturn_; }

    void touchesBegan(const id& touches, const id& event);
    void touchesMoved(const id& touches, const id& event);
    void touchesEnded(const id& touches, const id& event);
    void touchesCancelled(const id& touches, const id& event);

    void drawContent(Canvas& canvas, const CGRect& seen) const override;

private:
    std::size_t keyUnder(const id& touches) const;
    void setPressed(std::optional<std::size_t> key);
    void perform(const KeyCap& key);
    void pressShift();
    void setShift(ShiftState shift);
    bool beginsCapital() const;
    void repeatDeletion(unsigned press);
    void makeKeys();

    KeyboardType type_ = KeyboardType::Default;
    long returnKeyType_ = 0;
    bool needsText_ = false; ///< to return
    bool canReturn_ = true;
    KeyPage page_ = KeyPage::Letters;
    ShiftState shift_ = ShiftState::Off;
    double lastShift_ = -1;
    std::vector<KeyCap> keys_ {};
    std::vector<Ref<ViewObject>> views_ {};
    std::optional<std::size_t> pressed_ {};
    unsigned press_ = 0; ///< tells a repetition whether its touch is still the present one
};

} // namespace platform
