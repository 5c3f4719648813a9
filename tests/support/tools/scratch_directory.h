/*
 * A directory of one test's own inside the build folder, removed with all that is in it at the end
 * of its life, and the few file operations that tests need there.
 */
#pragma once

#include <string>

class ScratchDirectory
{
  public:
    ScratchDirectory();
    ~ScratchDirectory();
    ScratchDirectory(const ScratchDirectory&) = delete;
    ScratchDirectory& operator=(const ScratchDirectory&) = delete;
    ScratchDirectory(ScratchDirectory&&) = delete;
    ScratchDirectory& operator=(ScratchDirectory&&) = delete;

    /** Absolute, free of symbolic links and of a trailing slash. */
    const std::string& path() const;

    /** The path of an entry in it. */
    std::string operator/(const std::string& name) const;

  private:
    std::string directory;
};

void write_text(const std::string& path, const std::string& text);

/** The file's bytes; an exception where it cannot be read. */
std::string read_text(const std::string& path);

/** How many descriptors this process holds open. */
int open_descriptors();
