/*
 * The service's log, "tolm_service.log" in the per-user directory: one line for each thing that a
 * user may wonder about, with the time (UTC).
 */
#pragma once

#include "service/descriptor.h"

#include <string_view>

class Log
{
  public:
    /** Opens the log in `directory`, for appending. Where that fails nothing is ever written: a
        service without a log still serves. */
    explicit Log(int directory);

    /** Appends one line. Control characters in `text` are written as \xHH, so that a line stays one
        whatever names it tells. */
    void line(std::string_view text) const;

  private:
    Descriptor file;
};
