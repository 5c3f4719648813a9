/*
 * Tells when the rendezvous FIFO or the per-user directory may have been removed or moved, at no
 * cost while nothing happens. The system may refuse such watches; then nothing is ever told.
 */
#pragma once

#include "service/descriptor.h"
#include "service/events.h"

class DirectoryWatch
{
  public:
    /** Watches two open descriptors. */
    DirectoryWatch(Events& events, int directory, int rendezvous);

    /** Whether there was something since the last call. */
    bool has_news(const Events& events);

  private:
    WatchedDescriptor inotify;
};
