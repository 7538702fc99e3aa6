#pragma once

#include "platform/runtime/object.h"

#include <chrono>
#include <optional>
#include <string>

/// The prompts with which this process asks the owner of the phone to authenticate. The one asked for last
/// is up; one below it comes up again when it goes. Any thread.

namespace phone {

struct Prompt {
    long policy = 0; ///< 1: biometry; 2: the passcode will do as well
    std::string reason;
    std::string fallbackTitle {}; ///< of the button that leads to the passcode; "" for the system's own
    std::chrono::nanoseconds asked {}; ///< on the clock
    std::string application {}; ///< that was being opened; "" where nobody knows
};

/// Puts a prompt up for a context. `reply`, a block that takes a bool and an error, is called at most once.
void putPromptUp(const platform::NSObject* context, Prompt prompt, platform::id reply);

/// Takes down what a context that ends has put up: nobody gets an answer.
void dropPrompts(const platform::NSObject* context);

std::optional<Prompt> promptThatIsUp();

/// Says for which application the prompt is that is up.
void nameApplicationOfPrompt(const std::string& identifier);

enum class PromptAnswer { Authenticated, Failed, Cancelled };

/// Takes down the prompt that is up and replies on a thread of a global queue. False when none is up.
bool answerPrompt(PromptAnswer answer);

} // namespace phone
