#pragma once

#include <string>
#include <string_view>

/// The daemon of the device's bus, which whoever runs the device starts once for all its processes.

namespace platform {

/// Where the daemon that was started in `runDirectory` listens; at most 99 bytes.
std::string busSocketPath(const std::string& runDirectory);

/// The address of that socket, as connectBus() takes it.
std::string busAddress(std::string_view socketPath);

/// The daemon's configuration: it listens at `socketPath`, lets in processes of its own user, and lets
/// them say anything to each other.
std::string busDaemonConfiguration(std::string_view socketPath);

/// Starts the daemon in `runDirectory`, an existing directory of the caller's, and waits until it listens. Its files
/// there are the caller's alone, and those of a former daemon are replaced, wherever they lead. It ends on
/// SIGTERM and with the thread that calls this; the caller waits for its end. The daemon's process
/// identifier, or -1 and in `error` a sentence for people. A socket that a dead daemon left there is
/// replaced.
int startBusDaemon(const std::string& runDirectory, std::string& error);

} // namespace platform
