#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

/// Sets of policies in files of this computer, which may come from anywhere.

namespace cli {

struct SetReading {
    nlohmann::json set; ///< null when there is a problem
    std::string problem {}; ///< for people, with the line where one can be told; "" for a set
};

/// JSON, or a property list, XML or binary: a whole set, or refused whole.
SetReading setFromBytes(std::string_view bytes);

/// The same of a file; "-" is standard input. At most 16 MiB.
SetReading setFromFile(const std::string& path);

/// The bytes of a file: a property list (XML) where the path ends in ".plist", else JSON for people.
std::string bytesOfSet(const nlohmann::json& set, const std::string& path);

} // namespace cli
