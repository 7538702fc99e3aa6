#pragma once

#include <string_view>

namespace platform {

/// What the owner would feel: "impact", "selection", "success", "warning", "error". The host says what becomes of it;
/// without a host's word, nothing. Main thread.
using FeedbackHandler = void (*)(std::string_view kind);
void setFeedbackHandler(FeedbackHandler handler) noexcept;
void giveFeedback(std::string_view kind);

} // namespace platform
