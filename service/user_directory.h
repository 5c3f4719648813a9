/*
 * The per-user temporary directory as the service takes it: its own, open only to its user. All
 * files in it are reached through the open directory, so that nobody can swap it under the service.
 */
#pragma once

#include "service/descriptor.h"

#include <string>
#include <string_view>

class UserDirectory
{
  public:
    /** Opens the directory at `path` and makes its mode 0700. Throws std::system_error when it
       cannot be opened, is a link, or belongs to somebody else. */
    explicit UserDirectory(std::string path);

    int descriptor() const { return directory.get(); }

    /** Whether `folder` names this directory, as the service or in another way. */
    bool is_named_by(const std::string& folder) const;

    /** Opens the FIFO `name` in it, never blocking. Throws std::system_error when that fails or
       what is there is no FIFO of this user. */
    Descriptor open_fifo(const std::string& name, int access) const;

    /** Removes the FIFO `name` of this user; anything else stays. */
    void remove_fifo(const std::string& name) const;

  private:
    std::string directory_path;
    Descriptor directory;
};
