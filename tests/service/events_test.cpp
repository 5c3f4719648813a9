#include "service/events.h"

#include <array>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

namespace
{

struct Pipe {
    Pipe()
    {
        std::array<int, 2> ends{};
        if (::pipe2(ends.data(), O_CLOEXEC) == 0) {
            reading = Descriptor(ends[0]);
            writing = Descriptor(ends[1]);
        }
    }

    Descriptor reading;
    Descriptor writing;
};

TEST(Events, FindsADescriptorThatCanBeRead)
{
    Events events;
    Pipe pipe;
    const WatchedDescriptor watched(events, std::move(pipe.reading));

    ASSERT_EQ(::write(pipe.writing.get(), "x", 1), 1);
    events.wait(std::nullopt);

    EXPECT_TRUE(events.ready(watched.get()));
}

TEST(Events, ADescriptorDoesNotInheritTheReadinessOfAClosedOneWithItsNumber)
{
    Events events;
    Pipe first;
    Pipe second;
    const int number = first.reading.get();
    WatchedDescriptor watched(events, std::move(first.reading));
    ASSERT_EQ(::write(first.writing.get(), "x", 1), 1);
    events.wait(std::nullopt);

    watched = {};
    watched = WatchedDescriptor(events, Descriptor(::dup(second.reading.get())));

    ASSERT_EQ(watched.get(), number);
    EXPECT_FALSE(events.ready(number));
}

} // namespace
