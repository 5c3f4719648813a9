/*
 * The launcher that a viewer serves, as a process: what a path and a new file's mode mean to it.
 */
#pragma once

#include "viewer/core/request.h"

#include <string>
#include <sys/types.h>

class LauncherProcess
{
  public:
    /** `request_path` is that of its request FIFO, which its process id ends. */
    explicit LauncherProcess(const std::string& request_path);

    /** `path` as the launcher sees it: a relative one, which only an unusual QUARNFOLD_ROOT makes,
        is meant from the launcher's working directory. */
    std::string path_for(const std::string& path) const;

    /** A request document, decoded, with such paths. Throws std::runtime_error when it is none that
        is known. */
    Request decode(const std::string& document) const;

    /** Its file mode mask; 077, which is safe, when it has ended. */
    mode_t file_mode_mask() const;

    /** The value of a variable of its environment; empty where there is none. */
    std::string variable(const std::string& name) const;

  private:
    pid_t id;
};
