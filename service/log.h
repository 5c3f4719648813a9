/*
 * The service's log, "tolm_service.log" in the per-user directory: one line for each thing that a
 * user may wonder about, with the time (UTC). It is bounded: a log that has reached 1 MiB becomes
 * "tolm_service.log.1", in place of an earlier one.
 */
#pragma once

#include "service/descriptor.h"

#include <string_view>

class Log
{
  public:
    /** Opens the log in the open directory `directory`, for appending. Where that fails nothing is
        written: a service without a log still serves. */
    explicit Log(int directory);

    /** Opens it anew, after somebody moved it away. */
    void reopen();

    /** Appends one line. Control characters in `text` are written as \xHH, so that a line stays one
        whatever names it tells. */
    void line(std::string_view text);

  private:
    void rotate_when_full();

    int folder;
    Descriptor file;
};
