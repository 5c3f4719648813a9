/*
 * Judges one request: can every contributor be read, and is it valid in the request's encoding?
 * Works a slice at a time, so that a large file holds up no other launcher.
 */
#pragma once

#include "service/descriptor.h"
#include "service/encoding_check.h"
#include "service/request.h"

#include <optional>
#include <string>
#include <sys/types.h>

/** `path` as the process `launcher` sees it: a relative one, which only an unusual QUARNFOLD_ROOT
    makes, is meant from the launcher's working directory. */
std::string path_for(pid_t launcher, const std::string& path);

class RequestCheck
{
  public:
    RequestCheck(Request decoded, pid_t launcher_id);

    /** Reads on for one slice. Nothing while there is more to read; then whether all is well. */
    std::optional<bool> step();

    /** After a false verdict: the contributor and what is wrong with it, for the log. */
    const std::string& problem() const { return why; }

  private:
    bool open_next();
    bool read_slice();
    bool fail(const std::string& reason);

    Request request;
    pid_t launcher;
    std::size_t next = 0; // the contributor to open next
    Descriptor file;      // the one being read
    bool is_device = false;
    std::optional<EncodingCheck> check;
    std::string why;
};
