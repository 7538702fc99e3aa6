#include "panel/section_header_parts.h"

#include "core/appearance.h"
#include "core/resources.h"
#include "panel/template_image.h"
#include "platform/screen/framework.h"

namespace appledger {

using namespace platform;

UILabel makeHeaderLabel(const UIView& holder, CGFloat fontSize)
{
    const UILabel label = UILabel::create();
    label.setFont(UIFont::systemFont(fontSize));
    label.setTranslatesAutoresizingMaskIntoConstraints(false);
    holder.addSubview(label);
    return label;
}

UIImageView makeHeaderImageView(const UIView& holder, CGSize size)
{
    const UIImageView view = UIImageView::create();
    view.setContentMode(UIViewContentMode::ScaleAspectFit);
    view.setTranslatesAutoresizingMaskIntoConstraints(false);
    holder.addSubview(view);
    view.widthAnchor().equalTo(size.width).setActive(true);
    view.heightAnchor().equalTo(size.height).setActive(true);
    return view;
}

id templatePicture(std::string_view name)
{
    return templateImage(ALHelper::imageNamed(string(name)));
}

id makeThumbnail(CGSize size, const id& image)
{
    if (!image)
        return nil;
    constexpr CGFloat scaleOfScreen = 0;
    UIGraphicsBeginImageContextWithOptions(size, false, scaleOfScreen);
    UIImage(image).drawInRect({ {}, size });
    const id drawn = UIGraphicsGetImageFromCurrentImageContext();
    UIGraphicsEndImageContext();
    return templateImage(drawn);
}

void colorHeader(const id& label, const id& imageView)
{
    const id color = ALAppearance::sharedInstance().tableHeaderTextColor();
    ask<"setTextColor:", void>(label, color);
    ask<"setTintColor:", void>(imageView, color);
}

} // namespace appledger
