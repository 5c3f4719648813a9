/*
 * The service's side of one exchange: announcement in, answer out.
 *
 *   1. open the launcher's request FIFO, then its response FIFO, neither blocking
 *   2. the launcher's own opens now end: it writes its request and waits
 *   3. read the request to its end, in as many pieces as it comes
 *   4. judge it, answer with one write, close both
 *   5. wait for the launcher's end, and remove its FIFOs where it did not come to that itself
 *
 * The response FIFO is held open for reading too: there is no moment at which the launcher has it
 * open and the service cannot. What that hides, the launcher's death, its process descriptor tells.
 */
#pragma once

#include "service/announcement.h"
#include "service/descriptor.h"
#include "service/log.h"
#include "service/request_check.h"
#include "service/user_directory.h"

#include <optional>
#include <string>

class Conversation
{
  public:
    /** Opens the launcher's FIFOs. Throws std::system_error when the launcher is gone or a FIFO is
        not what it should be. */
    Conversation(const UserDirectory& user_directory, const Log& log_of_service,
                 Announcement announced);

    /** The descriptor to read the request from, or -1 once that is done. */
    int request_descriptor() const { return request.get(); }

    /** Becomes readable when the launcher's process ends. */
    int launcher_descriptor() const { return launcher.get(); }

    /** Whether there is work that waits for nothing. */
    bool is_busy() const { return check.has_value(); }

    /** Whether the launcher has ended, answered or not. */
    bool has_ended() const { return ended; }

    /** Goes one step on, after a wait that told what of it is ready. */
    void advance(bool request_ready, bool launcher_ended);

  private:
    void read_request();
    void begin_check();
    void go_on_checking();
    void answer(bool success);
    void clear_up();
    void log(const std::string& text) const;

    const UserDirectory& directory;
    const Log& service_log;
    Announcement announcement;
    Descriptor launcher;
    Descriptor request;
    Descriptor response;
    std::string received;
    std::optional<RequestCheck> check;
    bool ended = false;
};
