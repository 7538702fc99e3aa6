#pragma once

#include "platform/handles/UIImageView.h"
#include "platform/handles/UILabel.h"
#include "platform/handles/UITableViewHeaderFooterView.h"

namespace appledger {

inline constexpr platform::CGFloat headerMargin = 16; ///< at both sides, in points

platform::UILabel makeHeaderLabel(const platform::UIView& holder, platform::CGFloat fontSize);
platform::UIImageView makeHeaderImageView(const platform::UIView& holder, platform::CGSize size);

/// `ALHelper`'s picture of that name, in the colour of whoever shows it.
platform::id templatePicture(std::string_view name);
/// The image drawn into that size, at the screen's scale. Nil for nil.
platform::id makeThumbnail(platform::CGSize size, const platform::id& image);

/// Title and picture in the colour of the appearance's headers.
void colorHeader(const platform::id& label, const platform::id& imageView);

} // namespace appledger
