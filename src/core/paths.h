#pragma once

#include <optional>
#include <string>
#include <string_view>

/// Where files lie on the three layouts of a device: at the system's root, under /var/jb, and under a root
/// with a random name. No single prefix serves them all, so each need has a rule of its own; none of them
/// reports anything, and a path that can't be resolved comes back as it went in.

namespace appledger {

/// The path to use for one that is absolute on a plain layout: beneath the root that this library was
/// loaded from, if its own location tells one; else under /var/jb if it exists there; else unchanged.
std::string ALCompatiblePath(std::string_view path);

/// RootHide's configuration file: the one under /var/jb if its folder exists there, else the plain one.
std::string GetRootHideConfigPath();

/// Whether the folder of that file exists.
bool IsRootHideEnvironment();

/// A side file in "/var/mobile/Library/Preferences/": under /var/jb if that directory exists.
std::string sideFilePath(std::string_view path);

/// The bundle of Choicy's settings, where one exists.
std::optional<std::string> choicyBundlePath();

} // namespace appledger
