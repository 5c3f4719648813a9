/*
 * The service's loop: one thread, one wait, nothing that blocks. It reads announcements from the
 * rendezvous FIFO and keeps a call for each launcher announced.
 *
 * Its end in order, at SIGTERM and SIGINT or when its directory is gone:
 *
 *   1. the lock is released: the next launcher starts a new service
 *   2. a moment later, announcements of launchers that saw the lock before are taken, unless a new
 *      service has the lock: it takes them then
 *   3. the rendezvous FIFO is closed; it stays on disk
 *   4. open windows stay until they are closed
 */
#pragma once

#include "service/announcement.h"
#include "service/call.h"
#include "service/descriptor.h"
#include "service/directory_watch.h"
#include "service/events.h"
#include "service/log.h"
#include "service/service_lock.h"
#include "service/status.h"
#include "service/user_directory.h"
#include "service/viewer_pool.h"

#include <chrono>
#include <list>
#include <optional>
#include <string>

class Server
{
  public:
    /** Makes the rendezvous FIFO where it is missing and opens it, and removes the FIFOs of
       launchers that no longer live. Throws std::system_error when the FIFO cannot be had. The
       directory outlives the server; the signals are those of open_signals; `install_directory`
       goes to the viewers. */
    Server(ServiceLock service_lock, Descriptor heeded_signals, const UserDirectory& user_directory,
           std::string install_directory);

    /** Serves until a signal ends it, in order. */
    void serve();

  private:
    using Time = std::chrono::steady_clock::time_point;

    bool is_stopping() const { return !lock; }
    void warm_own_display();
    bool has_ended() const;
    void serve_once();
    void take_announcements();
    void begin(Announcement announcement);
    void keep_within_descriptors();
    void take_signals();
    void stop();
    void close_rendezvous();
    void look_at_directory();
    std::optional<std::chrono::milliseconds> time_to_wait() const;
    std::string status() const;

    const UserDirectory& directory;
    std::optional<ServiceLock> lock;
    Log log;
    Events events;
    WatchedDescriptor rendezvous;
    AnnouncementReader reader;
    ViewerPool viewers;
    CallSurroundings surroundings;
    std::list<Call> calls;
    std::size_t most_calls;
    bool is_paused = false; // the reading of the rendezvous FIFO
    WatchedDescriptor signals;
    std::optional<DirectoryWatch> watch;
    std::optional<StatusSocket> status_socket;
    std::optional<Time> directory_doubted_until;
    std::optional<Time> rendezvous_open_until;
    unsigned long served = 0;
    std::string start_time;
};
