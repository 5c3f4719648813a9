/*
 * The service's loop: one thread, one poll, nothing that blocks. It reads announcements from the
 * rendezvous FIFO and keeps a conversation with each launcher announced.
 */
#pragma once

#include "service/announcement.h"
#include "service/conversation.h"
#include "service/descriptor.h"
#include "service/log.h"
#include "service/service_lock.h"
#include "service/user_directory.h"

#include <list>

class Server
{
  public:
    /** Makes the rendezvous FIFO where it is missing and opens it, and removes the FIFOs of
       launchers that no longer live. Throws std::system_error when the FIFO cannot be had. The lock
       and the directory outlive the server. */
    Server(const ServiceLock& lock, const UserDirectory& user_directory);

    /** Serves until the process is ended. */
    [[noreturn]] void serve();

  private:
    void serve_once();
    void take_announcements();
    void begin(Announcement announcement);

    const UserDirectory& directory;
    Log log;
    Descriptor rendezvous;
    AnnouncementReader reader;
    std::list<Conversation> conversations;
    std::size_t most_conversations;
};
