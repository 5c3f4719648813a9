/*
 * The prompt without a window: the text on standard error, and an answer from the terminal where
 * there is one.
 */
#pragma once

#include "prompt/prompt_request.h"

/** Prints the text after its type. Where standard input and standard error are a terminal, waits
   for a line: empty for the default, or the first letter of an answer; anything else asks again.
    Without a terminal, or at its end, nobody agreed. Never waits without a terminal. */
Answer ask_on_terminal(const PromptRequest& request);
