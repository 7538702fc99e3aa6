#pragma once

#include <string>

namespace cli {

/// Where the phone of the user lies who names none: what $APPLEDGER_ROOT says, else beneath $XDG_DATA_HOME, else
/// beneath $HOME, else beneath the directory that the account has. "" when there is none of the three: a directory that
/// everybody shares is no place for a phone.
std::string defaultRoot();

} // namespace cli
