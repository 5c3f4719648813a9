/*
 * How a service is doing, told through a socket in the per-user directory to whoever connects:
 * the service's side and the asking side.
 */
#pragma once

#include "service/descriptor.h"
#include "service/events.h"

#include <functional>
#include <optional>
#include <string>

class StatusSocket
{
  public:
    /** Makes the socket in the open directory `directory`, in place of an earlier service's, which
        only the holder of the lock may do. Where that fails, nobody can ask. */
    StatusSocket(Events& events, int directory);

    /** Removes the socket. */
    ~StatusSocket();
    StatusSocket(const StatusSocket&) = delete;
    StatusSocket& operator=(const StatusSocket&) = delete;
    StatusSocket(StatusSocket&&) = delete;
    StatusSocket& operator=(StatusSocket&&) = delete;

    /** Answers who has connected since the last call. */
    void answer(const Events& events, const std::function<std::string()>& status) const;

  private:
    int folder;
    WatchedDescriptor socket;
};

/** What the service of that directory tells; nothing when none answers within a second. */
std::optional<std::string> ask_status(int directory);
