/*
 * Asks in a window, in a process of its own: the toolkit ends its process when a display cannot be
 * opened or goes away, and the prompt must still be answered then.
 */
#pragma once

#include "prompt/prompt_request.h"

#include <optional>

/** The user's answer; nothing where no window could be shown or it went away unanswered. */
std::optional<Answer> ask_in_window(const PromptRequest& request);
