#include "phone/springboard/home/home_screen.h"

#include "phone/iconservices/drawing.h"
#include "phone/iconservices/icon_pictures.h"
#include "phone/springboard/home/arrangement.h"
#include "phone/springboard/home/live_icons.h"
#include "phone/springboard/home/scenery.h"
#include "phone/springboard/icons/SBIconView.h"
#include "phone/springboard/scenes/front_display.h"

#include <map>
#include <memory>

namespace phone {

using namespace platform;

namespace {

constexpr double dockMargin = 12;
constexpr double dockHeight = 96;

class HomeScreen {
public:
    HomeScreen()
        : window_(makeHomeWindow())
        , page_(makePlainView(send<"bounds", CGRect>(window_)))
        , dock_(makeDock())
        , dots_(makePageDots(send<"bounds", CGRect>(window_)))
    {
        send<"addSubview:", void>(window_, page_);
        send<"addSubview:", void>(window_, dots_);
        send<"addSubview:", void>(window_, dock_);
        send<"makeKeyAndVisible", void>(window_);
    }

    void layOut()
    {
        const Content content = visibleContent();
        const HomeArrangement arrangement = arrangeHome(content.icons, content.widgets);
        auto former = std::exchange(views_, {});
        for (std::size_t index = 0; index < arrangement.dock.size(); ++index)
            place(former, iconFor(arrangement.dock[index]), "SBIconLocationDock", dock_,
                frameInDock(index, arrangement.dock.size(), send<"bounds", CGRect>(dock_).size.width));
        // There is one page to be seen; what doesn't fit on it waits behind the others.
        for (std::size_t pageIndex = 0; pageIndex < arrangement.pages.size(); ++pageIndex) {
            for (const HomeItem& item : arrangement.pages[pageIndex]) {
                CGRect frame = item.isWidget ? widgetFrameOnPage(item.place) : frameOnPage(item.place);
                frame.origin.x += static_cast<double>(pageIndex) * send<"bounds", CGRect>(page_).size.width;
                place(former, item.identifier.empty() ? folderIcon(item) : iconFor(item.identifier),
                    "SBIconLocationRoot", page_, frame);
            }
        }
        for (const auto& [key, view] : former)
            send<"removeFromSuperview", void>(view);
        showPageDots(dots_, arrangement.pages.size());
        layOutFolders();
    }

    void forEachKnown(const std::function<void(const id&)>& visit) const
    {
        const auto views = views_;
        for (const auto& [key, view] : views)
            visit(view);
        for (const id& view : itemsOf(askObject<"iconViews">(folderView_)))
            visit(view);
    }

    void forEachDisplayed(const std::function<void(const id&)>& visit) const
    {
        const double width = send<"bounds", CGRect>(page_).size.width;
        forEachKnown([&](const id& view) {
            if (send<"superview">(view) != page_ || send<"frame", CGRect>(view).origin.x < width)
                visit(view);
        });
    }

    bool openFolder(const id& folder)
    {
        if (folderView_ || itemsOf(askObject<"icons">(folder)).empty() || applicationInFront())
            return false;
        folderView_ = send<"initWithFolder:">(send<"alloc">(id(classNamed<"SBFolderView">())), folder);
        send<"addSubview:", void>(window_, folderView_);
        send<"setAlpha:", void>(folderView_, 0.0);
        const id panel = send<"panel">(folderView_);
        send<"setTransform:", void>(panel, CGAffineTransformMakeScale(0.3, 0.3));
        move(folderView_, [this, view = folderView_, panel] {
            setBehindAlpha(0);
            send<"setAlpha:", void>(view, 1.0);
            send<"setTransform:", void>(panel, CGAffineTransformIdentity);
        });
        return true;
    }

    bool openFolderNamed(std::string_view name)
    {
        for (const auto& [folderName, icon] : folders_)
            if (folderName == name)
                return openFolder(send<"folder">(icon));
        return false;
    }

    /// "" when none is open.
    std::string openFolderName() const
    {
        const auto name = asString(askObject<"displayName">(askObject<"folder">(folderView_)));
        return name ? name->text() : "";
    }

    bool closeFolder()
    {
        if (!folderView_)
            return false;
        const id view = std::exchange(folderView_, nil);
        move(
            view,
            [this, view] {
                setBehindAlpha(1);
                send<"setAlpha:", void>(view, 0.0);
                send<"setTransform:", void>(send<"panel">(view), CGAffineTransformMakeScale(0.3, 0.3));
            },
            [view] { send<"removeFromSuperview", void>(view); });
        return true;
    }

private:
    /// A folder that stands nowhere has nothing in it; the one that is open shows what it has.
    void layOutFolders()
    {
        for (const auto& [name, icon] : folders_)
            if (!views_.contains(std::pair(icon.get(), std::string_view("SBIconLocationRoot"))))
                send<"setIcons:", void>(send<"folder">(icon), nil);
        if (folderView_ && itemsOf(send<"icons">(send<"folder">(folderView_))).empty())
            closeFolder();
        else
            ask<"layOutIcons", void>(folderView_);
    }

    using Views = std::map<std::pair<NSObject*, std::string_view>, id>;

    /// What an open folder stands before gives way to it.
    void setBehindAlpha(double alpha) const
    {
        send<"setAlpha:", void>(page_, alpha);
        send<"setAlpha:", void>(dots_, alpha);
    }

    /// An animation of a folder's view, with its word before and after.
    static void move(
        const id& view, std::function<void()> change, std::function<void()> after = [] {})
    {
        send<"willTransitionAnimated:withSettings:", void>(view, true, nil);
        send<"animateWithDuration:delay:options:animations:completion:", void>(id(classNamed<"UIView">()), 0.25, 0.0,
            NSUInteger { 2 << 16 }, block([change = std::move(change)] { change(); }),
            block([view, after = std::move(after)](bool) {
                send<"didTransitionAnimated:", void>(view, true);
                after();
            }));
    }

    static id model() { return send<"model">(send<"sharedInstance">(id(classNamed<"SBIconController">()))); }

    static id iconFor(const std::string& identifier)
    {
        return send<"leafIconForIdentifier:">(model(), string(identifier));
    }

    /// Leaf identifiers.
    struct Content {
        std::vector<std::string> icons;
        std::vector<std::string> widgets;
    };

    static Content visibleContent()
    {
        Content content;
        const id icons = send<"laidOutIcons">(model());
        for (const id& icon : itemsOf(icons))
            if (const auto identifier = asString(send<"leafIdentifier">(icon)))
                (isKindOfClass(icon, classNamed<"SBWidgetIcon">()) ? content.widgets : content.icons)
                    .push_back(identifier->text());
        return content;
    }

    id folderIcon(const HomeItem& item)
    {
        id& icon = folders_[item.folderName];
        if (!icon) {
            const id folder = send<"new">(id(classNamed<"SBFolder">()));
            send<"setDisplayName:", void>(folder, string(item.folderName));
            icon = send<"initWithFolder:">(send<"alloc">(id(classNamed<"SBFolderIcon">())), folder);
        }
        std::vector<id> icons;
        for (const std::string& identifier : item.folderContent)
            icons.push_back(iconFor(identifier));
        send<"setIcons:", void>(send<"folder">(icon), array(std::move(icons)));
        return icon;
    }

    void place(Views& former, const id& icon, std::string_view location, const id& parent, const CGRect& frame)
    {
        const auto key = std::pair(icon.get(), location);
        const auto found = former.find(key);
        id view = found == former.end() ? makeIconView(icon, location, frame) : found->second;
        if (found != former.end()) {
            former.erase(found);
            send<"setFrame:", void>(view, frame);
            if (isKindOfClass(icon, classNamed<"SBFolderIcon">()))
                send<"setIcon:", void>(view, icon);
            send<"setNeedsLayout", void>(view);
        } else {
            send<"addSubview:", void>(parent, view);
        }
        views_.emplace(key, std::move(view));
    }

    id makeDock() const
    {
        const CGRect screen = send<"bounds", CGRect>(window_);
        return makeGlass(CGRectMake(dockMargin, screen.size.height - dockHeight - dockMargin,
                             screen.size.width - 2 * dockMargin, dockHeight),
            33);
    }

    id window_;
    id page_;
    id dock_;
    id dots_;
    id folderView_;
    Views views_; ///< by icon and place
    std::map<std::string, id, std::less<>> folders_; ///< the folders' icons by their names
};

std::unique_ptr<HomeScreen>& homeScreen()
{
    static auto* const screen = new std::unique_ptr<HomeScreen>;
    return *screen;
}

} // namespace

void showHomeScreen()
{
    if (homeScreen() || !classNamed<"UIWindow">())
        return;
    homeScreen() = std::make_unique<HomeScreen>();
    homeScreen()->layOut();
    keepLiveIcons();
    showStatusBar();
}

void layOutHomeScreen()
{
    if (homeScreen())
        homeScreen()->layOut();
}

void forEachKnownIconView(const std::function<void(const id&)>& visit)
{
    if (homeScreen())
        homeScreen()->forEachKnown(visit);
}

void forEachDisplayedIconView(const std::function<void(const id&)>& visit)
{
    if (homeScreen())
        homeScreen()->forEachDisplayed(visit);
}

id iconViewOf(std::string_view leafIdentifier)
{
    id found;
    forEachKnownIconView([&](const id& view) {
        const auto identifier = asString(askObject<"leafIdentifier">(send<"icon">(view)));
        if (!found && identifier && *identifier == leafIdentifier)
            found = view;
    });
    return found;
}

namespace {

/// What happens to an icon happens to the folder that it stands in.
bool isInFolder(const id& icon, const id& folderIcon)
{
    const auto icons = asArray(askObject<"icons">(askObject<"folder">(folderIcon)));
    return icons && icons->contains(icon);
}

} // namespace

void refreshIcon(const id& icon, IconPart part)
{
    forEachKnownIconView([&](const id& view) {
        const id shown = send<"icon">(view);
        if (part == IconPart::Accessories && (shown == icon || isInFolder(icon, shown))) {
            send<"_updateLabelAccessoryView", void>(view);
        } else if (part == IconPart::Image && (shown == icon || isInFolder(icon, shown))) {
            send<"_updateIconImageView", void>(view);
        }
    });
}

bool openFolder(const id& folder)
{
    return homeScreen() && homeScreen()->openFolder(folder);
}

bool openFolderNamed(std::string_view name)
{
    return homeScreen() && homeScreen()->openFolderNamed(name);
}

bool closeFolder()
{
    return homeScreen() && homeScreen()->closeFolder();
}

bool closeFolder(std::string_view name)
{
    return homeScreen() && homeScreen()->openFolderName() == name && homeScreen()->closeFolder();
}

void showApplication(const id& application)
{
    if (homeScreen())
        showScene(application);
}

} // namespace phone
