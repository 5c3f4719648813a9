/*
 * The service's own answer, a failure, where no viewer can give one. Both FIFOs stay open until the
 * launcher ends, so that none of its opens and writes waits, whatever point it has reached.
 */
#pragma once

#include "service/announcement.h"
#include "service/descriptor.h"
#include "service/events.h"

class Refusal
{
  public:
    /** Opens the launcher's FIFOs, which are in the open directory `directory`, and answers. Throws
        std::system_error when they cannot be opened: the launcher has gone then, or removed them.
     */
    Refusal(Events& events, int directory, const Announcement& announcement);

    /** Reads away what the launcher writes. */
    void look(const Events& events);

  private:
    WatchedDescriptor request;
    Descriptor response;
};
