#include "panel/redirect_app_selector.h"

#include "core/haptics.h"
#include "core/policies.h"
#include "core/text.h"
#include "panel/application_list.h"
#include "platform/darwin/notify.h"
#include "platform/foundation/index_path.h"
#include "platform/handles/UIBarButtonItem.h"
#include "platform/handles/UISearchController.h"
#include "platform/handles/UITableViewController.h"

namespace appledger {

using namespace platform;

namespace {

constexpr CGFloat iconRadius = 6;

struct SelectorFields {
    id preferenceKey {};
    id appTitle {};
    id installedApps {};
    id filteredApps {};
    id selectedBundleIDs {};
    id searchController {};
    std::vector<ListedApplication> applications {}; ///< in the order of `installedApps`
};

SelectorFields& fieldsIn(const id& self)
{
    return fieldsOf<SelectorFields>(self);
}

id shownText(std::string_view text)
{
    return string(ALLoc(text));
}

UITableView tableOf(const id& self)
{
    return UITableViewController(self).tableView();
}

bool isSearching(const id& self)
{
    const UISearchController search(fieldsIn(self).searchController);
    const auto text = asString(search.searchBar().text());
    return search.isActive() && text && !text->empty();
}

bool isSelected(const id& self, const id& identifier)
{
    return itemsOf(fieldsIn(self).selectedBundleIDs).contains(identifier);
}

void makeSearch(const id& self)
{
    const UISearchController search = UISearchController::withSearchResultsController(UIViewController());
    fieldsIn(self).searchController = search;
    search.setSearchResultsUpdater(self);
    search.setObscuresBackgroundDuringPresentation(false);
    search.searchBar().setPlaceholder(shownText("Search"));
    const UITableViewController controller(self);
    controller.setDefinesPresentationContext(true);
    controller.navigationItem().setSearchController(search);
    controller.navigationItem().setHidesSearchBarWhenScrolling(false);
}

void viewDidLoad(const id& self, SEL)
{
    sendSuper<"viewDidLoad", void>(classNamed<"UITableViewController">(), self);
    SelectorFields& fields = fieldsIn(self);
    const UITableViewController controller(self);
    controller.setTitle(fields.appTitle);
    controller.navigationItem().setLeftBarButtonItem(
        UIBarButtonItem::withTitle(shownText("Cancel"), UIBarButtonItemStyle::Plain, self, sel_registerName("close")));
    controller.navigationItem().setRightBarButtonItem(
        UIBarButtonItem::withTitle(shownText("Save"), UIBarButtonItemStyle::Done, self, sel_registerName("save")));

    const auto key = asString(fields.preferenceKey);
    const id stored = key ? NSUserDefaults::suite(preferenceSuite)->arrayForKey(*key) : nil;
    const ArrayValue items = itemsOf(stored);
    fields.selectedBundleIDs = mutableArray({ items.begin(), items.end() });
    makeSearch(self);
    send<"loadAndSortApps", void>(self);
}

void loadAndSortApps(const id& self, SEL)
{
    SelectorFields& fields = fieldsIn(self);
    const id workspace = askObject<"defaultWorkspace">(id(classNamed<"LSApplicationWorkspace">()));
    fields.applications = listedApplications(askObject<"allInstalledApplications">(workspace));
    sortBySelectionAndName(fields.applications, fields.selectedBundleIDs);
    fields.installedApps = recordsContaining(fields.applications, "");
    tableOf(self).reloadData();
}

void updateSearchResults(const id& self, SEL, const id& search)
{
    SelectorFields& fields = fieldsIn(self);
    const std::string text = lowerCase(UISearchController(search).searchBar().text());
    fields.filteredApps = text.empty() ? fields.installedApps : recordsContaining(fields.applications, text);
    tableOf(self).reloadData();
}

id currentDataSource(const id& self, SEL)
{
    return isSearching(self) ? fieldsIn(self).filteredApps : fieldsIn(self).installedApps;
}

void close(const id& self, SEL)
{
    UIViewController(self).dismiss(true);
}

void save(const id& self, SEL)
{
    const SelectorFields& fields = fieldsIn(self);
    if (const auto key = asString(fields.preferenceKey)) {
        const Ref<NSUserDefaults> preferences = NSUserDefaults::suite(preferenceSuite);
        preferences->setObject(fields.selectedBundleIDs, *key);
        preferences->synchronize();
        CFNotificationCenterPostNotification(policy::redirect.notification);
    }
    playImpactHaptic();
    UIViewController(self).dismiss(true);
}

NSInteger numberOfRows(const id& self, SEL, const id&, NSInteger)
{
    return static_cast<NSInteger>(itemsOf(send<"currentDataSource">(self)).size());
}

/// Nil for a row that isn't there.
id recordAt(const id& self, const id& path)
{
    const ArrayValue records = itemsOf(send<"currentDataSource">(self));
    const auto place = asIndexPath(path);
    return place && place->row < records.size() ? records[place->row] : nil;
}

/// One of no size where there is none, so that the rows keep their layout.
id iconOf(const id& identifier)
{
    constexpr int format = 1;
    const auto scale
        = ask<"scale", CGFloat>(askObject<"mainScreen">(id(classNamed<"UIScreen">()))).value_or(CGFloat { 1 });
    const id images(classNamed<"UIImage">());
    id icon = askObject<"_applicationIconImageForBundleIdentifier:format:scale:">(images, identifier, format, scale);
    return icon ? icon : send<"new">(images);
}

id cellForRow(const id& self, SEL, const id& table, const id& path)
{
    static constexpr std::string_view reuseIdentifier = "AppCell";
    UITableViewCell cell = UITableView(table).dequeueReusableCell(string(reuseIdentifier));
    if (!cell)
        cell = UITableViewCell::withStyle(UITableViewCellStyle::Subtitle, string(reuseIdentifier));
    const id record = recordAt(self, path);
    const id identifier = askObject<"bundleIdentifier">(record);
    const id name = askObject<"localizedName">(record);
    const id shortName = name ? name : askObject<"localizedShortName">(record);
    cell.textLabel().setText(shortName ? shortName : identifier);
    cell.detailTextLabel().setText(identifier);
    cell.imageView().setImage(UIImage(iconOf(identifier)));
    cell.imageView().setClipsToBounds(true);
    cell.imageView().layer().setCornerRadius(iconRadius);
    cell.setAccessoryType(
        isSelected(self, identifier) ? UITableViewCellAccessoryType::Checkmark : UITableViewCellAccessoryType::None);
    return cell;
}

void didSelectRow(const id& self, SEL, const id& table, const id& path)
{
    UITableView(table).deselectRow(NSIndexPath(path), true);
    const id identifier = askObject<"bundleIdentifier">(recordAt(self, path));
    if (!identifier)
        return;
    const id& selected = fieldsIn(self).selectedBundleIDs;
    if (isSelected(self, identifier))
        send<"removeObject:", void>(selected, identifier);
    else
        send<"addObject:", void>(selected, identifier);
    if (isSearching(self))
        UITableView(table).reloadRows(array(std::vector<id> { path }), UITableViewRowAnimation::Fade);
    else
        send<"loadAndSortApps", void>(self); // what has been picked moves to the top at once
}

template <auto Field> void setCopied(const id& self, SEL, const id& text)
{
    fieldsIn(self).*Field = ask<"copy">(text).value_or(text);
}

using Fields = SelectorFields;
constexpr MethodDefinition methods[] {
    getter<"appTitle", &Fields::appTitle>(),
    method<"close", &close>(),
    method<"currentDataSource", &currentDataSource>(),
    getter<"filteredApps", &Fields::filteredApps>(),
    getter<"installedApps", &Fields::installedApps>(),
    method<"loadAndSortApps", &loadAndSortApps>(),
    getter<"preferenceKey", &Fields::preferenceKey>(),
    method<"save", &save>(),
    getter<"searchController", &Fields::searchController>(),
    getter<"selectedBundleIDs", &Fields::selectedBundleIDs>(),
    method<"setAppTitle:", &setCopied<&Fields::appTitle>>(),
    method<"setPreferenceKey:", &setCopied<&Fields::preferenceKey>>(),
    method<"tableView:cellForRowAtIndexPath:", &cellForRow>(),
    method<"tableView:didSelectRowAtIndexPath:", &didSelectRow>(),
    method<"tableView:numberOfRowsInSection:", &numberOfRows>(),
    method<"updateSearchResultsForSearchController:", &updateSearchResults>(),
    method<"viewDidLoad", &viewDidLoad>(),
};

} // namespace

const ClassDefinition ALRedirectAppSelector_class {
    .name = "ALRedirectAppSelector", .superclassName = "UITableViewController", .methods = methods
};

} // namespace appledger
