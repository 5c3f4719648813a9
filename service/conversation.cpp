#include "service/conversation.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>

extern "C" {
#include <sys/pidfd.h> // glibc 2.36 declares its functions without C linkage
}

namespace
{

// As many names as a command line can hold, each with a long working directory before it, are less.
constexpr std::size_t largest_request = std::size_t{64} << 20;

constexpr const char* reply_success =
    "<?xml version=\"1.0\"?><methodResponse><params><param><value><boolean>1</boolean></value>"
    "</param></params></methodResponse>";
constexpr const char* reply_failure =
    "<?xml version=\"1.0\"?><methodResponse><params><param><value><boolean>0</boolean></value>"
    "</param></params></methodResponse>";

Descriptor watch_process(pid_t id)
{
    Descriptor process(::pidfd_open(id, 0)); // closed on exec, always
    if (!process)
        throw std::system_error(errno, std::generic_category(), "the launcher");
    return process;
}

bool is_there(pid_t launcher, const std::string& path)
{
    struct stat entry {};
    return ::stat(path_for(launcher, path).c_str(), &entry) == 0;
}

} // namespace

Conversation::Conversation(const UserDirectory& user_directory, const Log& log_of_service,
                           Announcement announced)
    : directory(user_directory),
      service_log(log_of_service),
      announcement(std::move(announced)),
      launcher(watch_process(announcement.launcher)),
      request(directory.open_fifo(announcement.request, O_RDONLY)),
      response(directory.open_fifo(announcement.response, O_RDWR))
{
}

void Conversation::advance(bool request_ready, bool launcher_ended)
{
    if (launcher_ended)
        clear_up();
    else if (check)
        go_on_checking();
    else if (request_ready)
        read_request();
}

void Conversation::read_request()
{
    std::array<char, 65536> bytes{};
    const ssize_t length = ::read(request.get(), bytes.data(), bytes.size());
    if (length < 0 && errno == EAGAIN)
        return;
    if (length <= 0) {
        log("the request ended before it was complete");
        return answer(false);
    }
    received.append(bytes.data(), static_cast<std::size_t>(length));
    if (ends_request(received)) {
        begin_check();
    } else if (received.size() > largest_request) {
        log("the request is too large");
        answer(false);
    }
}

void Conversation::begin_check()
{
    std::string_view document = received;
    document.remove_suffix(1);
    const pid_t id = announcement.launcher;
    auto decoded =
        decode_request(document, [id](const std::string& path) { return is_there(id, path); });
    received = {};
    request = Descriptor();
    if (decoded) {
        check.emplace(std::move(*decoded), id);
    } else {
        log("the request is none that this service knows");
        answer(false);
    }
}

void Conversation::go_on_checking()
{
    const auto verdict = check->step();
    if (!verdict)
        return;
    if (!*verdict)
        log(check->problem());
    answer(*verdict);
}

void Conversation::answer(bool success)
{
    const char* reply = success ? reply_success : reply_failure;
    if (::write(response.get(), reply, std::strlen(reply)) < 0)
        log(std::string("cannot answer: ") + std::strerror(errno));
    check.reset();
    request = Descriptor();
    response = Descriptor();
}

void Conversation::clear_up()
{
    if (response)
        log("the launcher ended before it was answered");
    directory.remove_fifo(announcement.request);
    directory.remove_fifo(announcement.response);
    ended = true;
}

void Conversation::log(const std::string& text) const
{
    service_log.line("launcher " + std::to_string(announcement.launcher) + ": " + text);
}
