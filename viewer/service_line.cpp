#include "viewer/service_line.h"

#include <algorithm>
#include <array>
#include <unistd.h>

namespace
{

void tell(std::string line)
{
    std::replace(line.begin(), line.end(), '\n', ' ');
    line += '\n';
    // A service that is gone has nothing to be told.
    [[maybe_unused]] const auto written = ::write(STDOUT_FILENO, line.data(), line.size());
}

} // namespace

bool ServiceOrders::read()
{
    std::array<char, 4096> bytes{};
    const ssize_t length = ::read(STDIN_FILENO, bytes.data(), bytes.size());
    if (length <= 0)
        return false;
    unread.append(bytes.data(), static_cast<std::size_t>(length));
    return true;
}

std::optional<std::string> ServiceOrders::next_line()
{
    const std::size_t end = unread.find('\n');
    if (end == std::string::npos)
        return std::nullopt;
    std::string line = unread.substr(0, end);
    unread.erase(0, end + 1);
    return line;
}

void tell_ready()
{
    tell("ready");
}

void tell_answering()
{
    tell("answering");
}

void tell_shown()
{
    tell("shown");
}

void tell_reason(const std::string& reason)
{
    tell("reason " + reason);
}
