/*
 * The per-user temporary directory as the service takes it: its own, open only to its user. All
 * files in it are reached through the open directory, so that nobody can swap it under the service.
 */
#pragma once

#include "service/descriptor.h"

#include <string>

class UserDirectory
{
  public:
    /** Opens the directory at `path` and makes its mode 0700. Throws std::system_error when it
       cannot be opened, is a link, or belongs to somebody else. */
    explicit UserDirectory(const std::string& path);

    int descriptor() const { return directory.get(); }

    /** Its absolute path when it was opened, free of symbolic links. */
    const std::string& path() const { return real_path; }

    /** Whether `folder` names this directory, as the service or in another way. */
    bool is_named_by(const std::string& folder) const;

    /** Whether it is still to be found at its path: neither removed nor moved. */
    bool is_in_place() const { return is_at(real_path); }

    /** Removes the FIFO `name` of this user; anything else stays. */
    void remove_fifo(const std::string& name) const;

  private:
    bool is_at(const std::string& folder) const;

    Descriptor directory;
    std::string real_path;
    std::string given_path;
};
