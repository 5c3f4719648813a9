/*
 * What the service's loop waits for: descriptors that have become readable or have come to their
 * end.
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

    /** Leaves out a watched descriptor for a while, or takes it back. */
    void pause(int descriptor, bool paused);

    /** Blocks until something is ready, a signal comes, or the time is over. */
    void wait(std::optional<std::chrono::milliseconds> longest);

    /** Whether the last wait found `descriptor` ready. One that is watched since then is not, even
        where it has the number of another that was, and is closed. */
    bool ready(int descriptor) const;

  private:
    friend class WatchedDescriptor;
    void watch(int descriptor);
    void forget(int descriptor);

    Descriptor epoll;
    std::vector<int> ready_descriptors; // sorted
};

/** The owner of a descriptor that events are waited for, which must outlive it. Closing alone
    would not do: a process just being started holds copies of all descriptors for a moment, and one
    that is closed here would be told of, as fast as the loop can turn, until that moment is over.
 */
class WatchedDescriptor
{
  public:
    WatchedDescriptor() = default;

    /** Throws std::system_error when the system cannot watch it. */
    WatchedDescriptor(Events& loop_events, Descriptor owned);
    WatchedDescriptor(WatchedDescriptor&& other) noexcept;
    WatchedDescriptor& operator=(WatchedDescriptor&& other) noexcept;
    WatchedDescriptor(const WatchedDescriptor&) = delete;
    WatchedDescriptor& operator=(const WatchedDescriptor&) = delete;
    ~WatchedDescriptor();

    int get() const { return descriptor.get(); }
    explicit operator bool() const { return static_cast<bool>(descriptor); }

  private:
    Events* events = nullptr;
    Descriptor descriptor;
};
