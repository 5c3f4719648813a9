/*
 * Finds a message catalogue for the user's locale and reads one message from it. Holds nothing open
 * between calls: a launcher prints two messages at the most.
 */
#pragma once

#include <optional>
#include <string>

/** The text that the catalogue `name` has for `number` in `set`, in the current LC_MESSAGES locale;
    nothing where no catalogue is found or it lacks the number. imsg.h tells where it looks. */
std::optional<std::string> catalogue_text(const char* name, int set, int number);
