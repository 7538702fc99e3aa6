#include "platform/screen/feedback.h"

#include <atomic>

namespace platform {

namespace {

std::atomic<FeedbackHandler> feedbackHandler { nullptr };

} // namespace

void setFeedbackHandler(FeedbackHandler handler) noexcept
{
    feedbackHandler = handler;
}

void giveFeedback(std::string_view kind)
{
    if (const FeedbackHandler handler = feedbackHandler)
        handler(kind);
}

} // namespace platform
