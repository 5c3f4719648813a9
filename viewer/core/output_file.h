/*
 * Writing a merge's output: whole or not at all. The bytes go to a new file beside the old one,
 * reach the disk, and take the old one's name in one step. After a failure the old file is as it
 * was, and nothing new lies about.
 */
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <sys/types.h>

/** Writes a file. One that is there keeps its mode, owner and group; through a symbolic link the
    file that the link means is written. A new one gets the mode 0666 without the bits of `umask`.
    Nothing when all is well, else the reason in the words of the system. */
std::optional<std::string> write_output(const std::string& path, std::string_view bytes,
                                        mode_t umask);
