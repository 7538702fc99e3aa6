#pragma once

#include <span>
#include <string>
#include <string_view>

/// The texts that the user sees. The code names each by its English words, which are also what is shown
/// where the table or the language has nothing else.

namespace appledger {

/// The text to show, in the language of this process. What comes back is `text` itself or lives as long as
/// the process. Any thread.
std::string_view ALLoc(std::string_view text);

/// The language of this process's texts: decided by the preferences and the device at the first call of
/// this function, or of ALLoc() with a text that isn't empty, and kept until the process ends. Any thread.
const std::string& textLanguage();

/// The language to show: the one that the user has chosen (`stored`, "" for none), else English on a
/// device whose first language is a kind of English, else "zh".
std::string chooseLanguage(std::string_view stored, std::span<const std::string> preferredLanguages);

/// The text in that language; `text` itself where there is no such language or no such text.
std::string_view textIn(std::string_view language, std::string_view text);

} // namespace appledger
