#include "service/refusal.h"

#include "service/answer.h"
#include "service/own_fifo.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

Refusal::Refusal(Events& events, int directory, const Announcement& announcement)
    : request(events, open_own_fifo(directory, announcement.request, O_RDONLY)),
      response(open_own_fifo(directory, announcement.response, O_RDWR))
{
    write_answer(response.get(), false);
}

void Refusal::look(const Events& events)
{
    if (!events.ready(request.get()))
        return;
    std::array<char, 65536> bytes{};
    const ssize_t length = ::read(request.get(), bytes.data(), bytes.size());
    if (length == 0) // its end, which would be told again and again
        request = {};
}
