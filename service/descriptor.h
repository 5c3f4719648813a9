/*
 * The owner of one file descriptor.
 */
#pragma once

#include <unistd.h>
#include <utility>

/** Closes its descriptor when it goes; moves, never copies. */
class Descriptor
{
  public:
    Descriptor() = default;
    explicit Descriptor(int descriptor) : number(descriptor) {}
    Descriptor(Descriptor&& other) noexcept : number(std::exchange(other.number, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept
    {
        std::swap(number, other.number);
        return *this;
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor()
    {
        if (number >= 0)
            ::close(number);
    }

    int get() const { return number; }
    int release() { return std::exchange(number, -1); }
    explicit operator bool() const { return number >= 0; }

  private:
    int number = -1;
};
