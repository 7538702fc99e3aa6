#pragma once

#include "platform/runtime/class_definition.h"

namespace appledger {

/// `ALAppearance`: the colours and styles of the panel, as the owner has chosen them. One instance, made by who first
/// asks for it; it follows the settings from then on. Main thread. Views and colours are nil in a process without
/// views.
class ALAppearance : public platform::NSObject {
public:
    static const platform::ClassDefinition definition;
    static ALAppearance& sharedInstance();

    void initialize();
    void appLedgerAppearanceChanged(const platform::id& notification);

    /// Whether the panel is dark now; of the automatic style what the system shows, from 13 on.
    bool isDarkStyle() const;

    platform::NSInteger blurEffectStyle() const; ///< by the system's number
    platform::id primaryTextColor() const;
    platform::id secondaryTextColor() const;
    platform::id actionsBarIconTintColor() const;
    platform::id tableSeparatorColor() const; ///< clear where the owner hides separators
    platform::id tableHeaderTextColor() const;

    // A new view at each request.
    platform::id tableCellSelectedBackgroundView() const;
    platform::id tableCellChevronImageView() const; ///< towards the end of a line
    platform::id activityIndicatorView() const;

    /// `applyStylesToCell:`, a class method.
    static void applyStylesToCell(const platform::id& cell);

    platform::NSInteger currentStyle = 0;
};

} // namespace appledger
