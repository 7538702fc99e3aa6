#pragma once

#include "phone/supervisor/phone_directory.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Applications as people call them.

namespace cli {

struct KnownApplication {
    std::string identifier;
    std::string name; ///< as the owner sees it
};

/// Those that are installed on the phone, up or not, by what its files say; none where there is no phone.
std::vector<KnownApplication> knownApplications(const phone::PhoneDirectory& directory);

struct MeantApplication {
    std::string identifier; ///< as it was given, where nothing else is meant
    bool isKnown = false;
    std::string note {}; ///< for people: no application has that identifier, and which has the nearest
    std::string problem {}; ///< the word may mean several; "" otherwise
};

/// By its identifier, its name, or a part of the name that no other has. Capitals don't matter in names.
MeantApplication meantApplication(const std::vector<KnownApplication>& known, const std::string& word);

/// "Scribbles (com.example.notes)", or the identifier alone where no name is known.
std::string applicationLabel(const std::vector<KnownApplication>& known, const std::string& identifier);

} // namespace cli
