#include "tests/harness/fifo.h"

#include <cerrno>
#include <fcntl.h>
#include <poll.h>
#include <stdexcept>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

Fifo::Fifo(std::string path) : path_(std::move(path))
{
    if (::mkfifo(path_.c_str(), 0600) != 0)
        throw std::system_error(errno, std::generic_category(), path_);
    descriptor_ = ::open(path_.c_str(), O_RDWR | O_CLOEXEC);
    if (descriptor_ < 0)
        throw std::system_error(errno, std::generic_category(), path_);
}

Fifo::~Fifo()
{
    ::close(descriptor_);
}

void Fifo::put(const std::string& text) const
{
    if (::write(descriptor_, text.data(), text.size()) != static_cast<ssize_t>(text.size()))
        throw std::system_error(errno, std::generic_category(), path_);
}

std::string Fifo::line(std::chrono::seconds patience) const
{
    std::string text;
    const auto wait = static_cast<int>(std::chrono::milliseconds(patience).count());
    for (;;) {
        pollfd waited{descriptor_, POLLIN, 0};
        if (::poll(&waited, 1, wait) <= 0)
            throw std::runtime_error("nothing came through " + path_ + " after \"" + text + "\"");
        char byte = 0;
        if (::read(descriptor_, &byte, 1) != 1)
            throw std::system_error(errno, std::generic_category(), path_);
        if (byte == '\n')
            return text;
        text += byte;
    }
}
