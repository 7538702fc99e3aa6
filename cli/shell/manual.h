#pragma once

#include <string>

/// The pages of the manual, made of the command's own verbs and of the table of keys.

namespace cli {

std::string commandManual(); ///< appledger(1)
std::string policyManual(); ///< appledger-policy(7)

} // namespace cli
