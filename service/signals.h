/*
 * The signals that the service heeds, as something to read: SIGTERM and SIGINT end it in order,
 * SIGHUP opens its log anew.
 */
#pragma once

#include "service/descriptor.h"

#include <optional>

/** From here on these signals come by the descriptor, and a write that meets a closed pipe is no
    signal but an error. Throws std::system_error when there is no descriptor to be had. */
Descriptor open_signals();

/** The next one; nothing when none has come. */
std::optional<int> next_signal(int signals);
