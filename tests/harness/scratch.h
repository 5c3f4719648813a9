/*
 * A directory of a test's own, below the build folder. On destruction it goes with all its
 * contents, and with it every process that the test still has, services that a launcher detached
 * included: declare it before everything that uses it, one for each test. It does not touch the
 * directories of other tests that run at the same time.
 */
#pragma once

#include <string>
#include <string_view>
#include <vector>

class Scratch
{
  public:
    /** Makes the directory, and "tmp" in it: TMPDIR of the programs that run in it. From here on
        this process inherits the orphans of its children. */
    Scratch();
    ~Scratch();
    Scratch(const Scratch&) = delete;
    Scratch& operator=(const Scratch&) = delete;
    Scratch(Scratch&&) = delete;
    Scratch& operator=(Scratch&&) = delete;

    /** Absolute, free of symbolic links and of a trailing slash. */
    const std::string& path() const { return path_; }

    /** The full path of `name` in the directory. */
    std::string operator/(std::string_view name) const;

    /** The launcher's per-user temporary directory below "tmp"; does not make it. */
    std::string user_directory() const;

    /** Makes the per-user directory, which a launcher would do, and returns it. */
    std::string make_user_directory() const;

    /** Writes the file `name`, and returns its full path. Folders on the way must be there. */
    std::string write_file(std::string_view name, std::string_view bytes) const;

    /** Names in the folder `subdirectory`, sorted. */
    std::vector<std::string> listing(std::string_view subdirectory = "") const;

    /** Names in the per-user directory, sorted; none when it is not there. */
    std::vector<std::string> user_listing() const;

  private:
    std::string path_;
};

/** Makes it the whole file; throws std::runtime_error where it cannot be written. */
void write_file(const std::string& path, std::string_view bytes);

/** The whole file; throws std::runtime_error where it cannot be read. */
std::string file_contents(const std::string& path);

/** Names in a folder, sorted; none when it is not there. */
std::vector<std::string> folder_contents(const std::string& path);
