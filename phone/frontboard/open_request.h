#pragma once

#include <functional>
#include <string>

namespace phone {

/// A request to open an application, on its way to SpringBoard's workspace.
struct OpenRequest {
    std::string bundleIdentifier;
    std::string requesterName {}; ///< name of the process that asks; "" for this one
    std::string requesterBundleIdentifier {};
};

/// Hands the request to whoever opens applications: the workspace in SpringBoard itself, SpringBoard over
/// the bus in every other process. True when the application came up. On another thread than the main one
/// it waits for the main one, where applications are opened.
bool openApplication(const OpenRequest& request);

/// Says what openApplication() does in this process, on its main thread. Once, at its start.
void setOpenApplicationHandler(std::function<bool(const OpenRequest&)> handler);

} // namespace phone
