/*
 * A file that takes no room and, for a test's purposes, no end of time to read.
 */
#pragma once

#include "tests/harness/scratch.h"

#include <filesystem>

/** Makes a sparse file of a tebibyte of NULs, and returns its full path. */
inline std::string huge_file(const Scratch& scratch)
{
    std::string path = scratch.write_file("huge", "");
    std::filesystem::resize_file(path, std::uintmax_t{1} << 40);
    return path;
}
