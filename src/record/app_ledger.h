#pragma once

#include "platform/runtime/class_definition.h"
#include "platform/runtime/object.h"
#include "platform/runtime/reclamation.h"
#include "record/bundle_facts.h"

#include <string>

/// The record of one application, or of a web clip on the Home Screen: what the panel shows and acts on.

namespace appledger {

/// `ALAppLedger`. A snapshot: made when the panel opens, gone with it, and never read anew.
///
/// The main fields are there when the record is: they are read from the system's objects on the thread that makes it,
/// which waits for the disk meanwhile. What stands in the bundle's files is read on a global queue afterwards; until
/// then, and where a file can't be understood, those fields keep their defaults. Nobody is told when they arrive.
/// A selector that the system's objects lack leaves its field at the default. The fields belong to the main thread,
/// those of the bundle's files may be read from any.
///
/// What is done to the application stands in files of its own, beside this one.
class ALAppLedger : public platform::NSObject {
public:
    static const platform::ClassDefinition definition;
    ~ALAppLedger() override;

    /// `appLedgerForBundleIdentifier:iconImage:`. Nil arguments are legal.
    static platform::Ref<ALAppLedger> forBundleIdentifier(
        const platform::id& bundleIdentifier, const platform::id& iconImage);

    /// Of whatever answers as an application proxy does, without SpringBoard's application.
    static platform::Ref<ALAppLedger> forProxy(const platform::id& bundleIdentifier, const platform::id& proxy);

    /// Nil where there is no SpringBoard.
    static platform::id sbApplicationForBundleIdentifier(const platform::id& bundleIdentifier);

    platform::id initWithBundleIdentifier(const platform::id& identifier);
    void loadData();
    void loadMoreInfo();

    /// The display name; nil for an icon that answers none.
    platform::id name() const;
    bool isApplication() const { return sbApplication != nullptr; }
    /// The name that the owner has given, or nil.
    platform::id customIconName() const;
    /// Nil takes it back. The label of the record's icon view shows it at once.
    void setCustomIconName(const platform::id& newName);
    bool hasAppStoreApp() const;

    void openInAppStore() const;

    /// What the icon's badge counts; 0 for one that is no number.
    std::int64_t appBadgeCount() const;
    /// The owner's own count, which stays through every write of the system's; 0 takes the badge off. Waits for the
    /// disk, as does the way back.
    void setAppBadgeCount(std::int64_t count);
    /// Back to the badge that the system set last. Without an own one nothing happens.
    void restoreAppBadgeDefault();

    // Set by who makes the record.
    platform::id iconView;
    platform::id iconImage;

    platform::id bundleIdentifier; ///< "N/A" when nobody knows one
    platform::id sbApplication;
    platform::id appProxy;

    platform::id version;
    bool appStoreVendable = false;
    bool isDeletable = false;
    platform::id bundleURL;
    platform::id dataContainerURL;
    platform::id appGroups; ///< array of ALAppLedgerGroup, by identifier; nil when nobody knows
    std::int64_t diskUsage = 0; ///< bytes
    platform::id diskUsageString;
    platform::id entitlements;
    platform::id entitlementsIdentifiers;

    // The folders of its data, in disk_operations.cpp; nil without a data container.
    platform::id cacheDirectoryURL() const;
    platform::id tmpDirectoryURL() const;
    platform::id appLibraryDirectoryURL() const;
    platform::id appDocumentsDirectoryURL() const;
    platform::id cacheDirectoriesURLs() const; ///< arrays of those that there are
    platform::id appUsageDirectoriesURLs() const;
    platform::id appGroupDirectoryURLs() const;

    // Work on them, on a global queue; the completion comes on the main queue and must be there. The record lives
    // until then. Nothing is said of what can't be read or removed, and nothing keeps two works apart.

    /// The completion gets the space that the folders take on the disk, as a text.
    void getCachesDirectorySizeWithCompletion(const platform::id& completion);
    void getAppUsageDirectorySizeWithCompletion(const platform::id& completion);
    /// Removes what is in the folders for caches. The application may run meanwhile.
    void clearAppCachesWithCompletion(const platform::id& completion);
    /// Removes all of the application's own data, and its permissions if it is one; what it shares with others stays.
    /// It is ended, and doesn't run until that is done.
    void resetDiskContentWithCompletion(const platform::id& completion);

    // Its permissions, in permissions.cpp.

    /// An array of what the owner has allowed and denied; nil where the system can't tell.
    platform::id getPermissions() const;
    /// Forgets what the owner has allowed and denied. The application is ended for it.
    void resetAllAppPermissions();
    void resetAllAppPermissionsWithoutAssertion(); ///< `_resetAllAppPermissions`

    // Its removal, in removal.cpp, on a global queue. The completion, if there is one, gets on the main queue whether
    // it went well.

    void uninstallAppWithCompletion(const platform::id& completion);
    /// Removes the application and keeps its data: a class method,
    /// `offloadApplicationWithBundleIdentifier:completion:`, for who has no record.
    static void offload(const platform::id& bundleIdentifier, const platform::id& completion);

    /// What the bundle's files say. They are written once, whole.
    BundleFacts bundleFacts() const;
    void setBundleFacts(const BundleFacts& facts);

private:
    void begin(const platform::id& identifier, const platform::id& application, const platform::id& proxy);
    void loadVersion();
    void loadBundleURL();
    void loadGroups();
    void loadDiskUsage();

    platform::Published<BundleFacts> bundleFacts_;
};

/// `ALAppLedgerGroup`: a container that an application shares with others.
class ALAppLedgerGroup : public platform::NSObject {
public:
    static const platform::ClassDefinition definition;
    static platform::id groupWithIdentifier(const platform::id& identifier, const platform::id& url);

    platform::id identifier;
    platform::id url;
};

} // namespace appledger
