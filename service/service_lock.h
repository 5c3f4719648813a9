/*
 * The one service of a user: whoever holds the write lock on the whole pid file. The file is
 * rewritten by each service and never removed, since a removed lock file could have two holders.
 *
 * A POSIX lock vanishes when any descriptor of its file is closed in the process: nothing else in
 * the service opens the pid file.
 */
#pragma once

#include "service/descriptor.h"

#include <optional>
#include <sys/types.h>

/** Proof that this process is the user's service: what only the service may do takes it as an
    argument. The lock lives as long as the object. */
class ServiceLock
{
  public:
    /** Locks the pid file in `directory` and writes this process's id to it. Nothing when another
        service lives. Throws std::system_error when the file cannot be opened or written. */
    static std::optional<ServiceLock> take(int directory);

    /** The process that holds the lock of the pid file in `directory`; nothing when there is none.
        Takes no lock itself. */
    static std::optional<pid_t> holder(int directory);

  private:
    explicit ServiceLock(Descriptor descriptor) : pid_file(std::move(descriptor)) {}

    Descriptor pid_file;
};
