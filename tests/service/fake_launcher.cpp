#include "tests/service/fake_launcher.h"

#include "protocol/wire_names.h"

#include <array>
#include <csignal>
#include <fcntl.h>
#include <stdexcept>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

std::string own_path(const std::string& directory, const char* name)
{
    return directory + "/" + name + std::to_string(::getpid());
}

void send(int socket, std::string_view text)
{
    if (::send(socket, text.data(), text.size(), MSG_NOSIGNAL) < 0)
        throw std::runtime_error("the fake launcher is gone");
}

std::string receive(int socket)
{
    std::array<char, 65536> bytes{};
    const ssize_t length = ::recv(socket, bytes.data(), bytes.size(), 0);
    return {bytes.data(), length > 0 ? static_cast<std::size_t>(length) : 0};
}

/** The process's side: does what each message's first letter says, and answers it. */
[[noreturn]] void obey(int socket, const std::string& directory)
{
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    int request = -1;
    int response = -1;
    for (;;) {
        const std::string message = receive(socket);
        std::string answer = "done";
        if (message.starts_with('q'))
            request = ::open(own_path(directory, request_pipe).c_str(), O_WRONLY);
        else if (message.starts_with('p'))
            response = ::open(own_path(directory, response_pipe).c_str(), O_RDONLY);
        else if (message.starts_with('w'))
            answer =
                ::write(request, message.data() + 1, message.size() - 1) < 0 ? "failed" : "done";
        else if (message.starts_with('c'))
            ::close(request);
        else if (message.starts_with('r')) {
            std::array<char, 1024> reply{};
            const ssize_t length = ::read(response, reply.data(), reply.size());
            answer =
                "=" + std::string(reply.data(), length > 0 ? static_cast<std::size_t>(length) : 0);
        } else
            ::_exit(0);
        send(socket, answer);
    }
}

} // namespace

FakeLauncher::FakeLauncher(std::string user_directory) : directory(std::move(user_directory))
{
    std::array<int, 2> sockets{};
    if (::socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, sockets.data()) != 0)
        throw std::runtime_error("no sockets for the fake launcher");
    process = ::fork();
    if (process == 0) {
        ::close(sockets[0]);
        obey(sockets[1], directory);
    }
    ::close(sockets[1]);
    socket = sockets[0];
}

FakeLauncher::~FakeLauncher()
{
    kill();
    ::close(socket);
}

std::string FakeLauncher::request_name() const
{
    return request_pipe + std::to_string(process);
}

std::string FakeLauncher::response_name() const
{
    return response_pipe + std::to_string(process);
}

void FakeLauncher::make_fifos() const
{
    ::mkfifo((directory + "/" + request_name()).c_str(), 0600);
    ::mkfifo((directory + "/" + response_name()).c_str(), 0600);
}

void FakeLauncher::announce() const
{
    const std::string text =
        directory + "/" + request_name() + "\n" + directory + "/" + response_name() + "\n";
    const int rendezvous =
        ::open((directory + "/" + rendezvous_pipe).c_str(), O_WRONLY | O_CLOEXEC);
    const ssize_t written = ::write(rendezvous, text.data(), text.size());
    ::close(rendezvous);
    if (written < 0)
        throw std::runtime_error("the announcement cannot be written");
}

void FakeLauncher::open_request() const
{
    order('q');
}

void FakeLauncher::open_response() const
{
    order('p');
}

void FakeLauncher::write_request(const std::string& bytes) const
{
    order('w', bytes);
}

void FakeLauncher::close_request() const
{
    order('c');
}

std::string FakeLauncher::read_reply() const
{
    return order('r').substr(1);
}

void FakeLauncher::kill()
{
    if (ended)
        return;
    ::kill(process, SIGKILL);
    ::waitpid(process, nullptr, 0);
    ended = true;
}

std::string FakeLauncher::order(char what, const std::string& text) const
{
    send(socket, what + text);
    std::string answer = receive(socket);
    if (answer.empty() || answer == "failed")
        throw std::runtime_error("the fake launcher could not do its step");
    return answer;
}
