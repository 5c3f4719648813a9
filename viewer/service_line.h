/*
 * The viewer's end of the line to the service that started it: the service's orders on standard
 * input, the viewer's news on standard output.
 */
#pragma once

#include <optional>
#include <string>
#include <string_view>

/** Cuts what the service says into lines. */
class ServiceOrders
{
  public:
    /** Reads what has come from standard input, waiting where nothing has. False at its end: the
        service is gone. */
    bool read();

    /** The next whole line, without its line feed. */
    std::optional<std::string> next_line();

  private:
    std::string unread;
};

/** The order that the launcher has ended and its window must go. */
inline constexpr std::string_view launcher_is_gone = "gone";

void tell_ready();
void tell_answering();
void tell_shown();

/** Why the answer is failure, for the service's log. */
void tell_reason(const std::string& reason);
