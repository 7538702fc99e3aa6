#pragma once

#include "platform/handles/UIActivityIndicatorView.h"
#include "platform/handles/UIButton.h"

namespace appledger {

/// The parts of a button of the actions bar.
struct ActionButtonFields {
    platform::id actionBlock {}; ///< takes nothing; nil for none
    platform::id nameLabel {};
    platform::id detailLabel {};
    platform::id actionImageView {};
    platform::id activityIndicatorView {};
};

platform::UIButton makeActionButton(
    const platform::id& title, const platform::id& detail, const platform::id& image, const platform::id& handler);

/// Picture, name and detail together.
void setAlphaOfParts(const platform::id& button, double alpha);

} // namespace appledger
