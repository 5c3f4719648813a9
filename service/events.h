/*
 * What the service's loop waits for: descriptors that have become readable or have come to their
 * end. Descriptors that are closed leave by themselves.
 */
#pragma once

#include "service/descriptor.h"

#include <chrono>
#include <optional>
#include <vector>

class Events
{
  public:
    /** Throws std::system_error when the system has no more room for it. */
    Events();

    /** Waits for `descriptor` from now on. Throws std::system_error when that cannot be. */
    void watch(int descriptor);

    /** Leaves out a watched descriptor for a while, or takes it back. */
    void pause(int descriptor, bool paused);

    /** Blocks until something is ready, a signal comes, or the time is over. */
    void wait(std::optional<std::chrono::milliseconds> longest);

    /** Whether the last wait found `descriptor` ready. A false yes is possible, when the number was
        that of another descriptor before: a process just being started holds copies of all for a
        moment, so that one closed here is told of once more. Whoever asks must look again. */
    bool ready(int descriptor) const;

  private:
    Descriptor epoll;
    std::vector<int> ready_descriptors; // sorted
};
