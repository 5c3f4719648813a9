#include "viewer/exchange.h"

#include "service/answer.h"
#include "service/own_fifo.h"
#include "viewer/core/request.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <stdexcept>
#include <system_error>

namespace
{

// As many names as a command line can hold, each with a long working directory before it, are less.
constexpr std::size_t largest_request = std::size_t{64} << 20;

} // namespace

Exchange::Exchange(const std::string& request_path, const std::string& response_path)
    : request(open_own_fifo(AT_FDCWD, request_path, O_RDONLY)),
      response(open_own_fifo(AT_FDCWD, response_path, O_RDWR))
{
}

bool Exchange::read()
{
    std::array<char, 65536> bytes{};
    const ssize_t length = ::read(request.get(), bytes.data(), bytes.size());
    if (length < 0 && (errno == EAGAIN || errno == EINTR))
        return false;
    if (length <= 0)
        throw std::runtime_error("the request ended before it was complete");
    received.append(bytes.data(), static_cast<std::size_t>(length));
    if (received.size() > largest_request)
        throw std::runtime_error("the request is too large");
    return ends_request(received);
}

void Exchange::answer(bool success)
{
    if (!write_answer(response.get(), success))
        throw std::system_error(errno, std::generic_category(), "cannot answer");
    request = Descriptor();
    response = Descriptor();
}
