#include "service/log.h"

#include <array>
#include <cstdio>
#include <ctime>
#include <fcntl.h>
#include <string>

namespace
{

std::string time_stamp()
{
    const std::time_t now = std::time(nullptr);
    std::tm utc{};
    ::gmtime_r(&now, &utc);
    std::array<char, 32> text{};
    return {text.data(), std::strftime(text.data(), text.size(), "%Y-%m-%dT%H:%M:%SZ", &utc)};
}

bool is_control(char c)
{
    return (static_cast<unsigned char>(c) < 0x20) || c == 0x7f;
}

void append_printable(std::string& record, char c)
{
    if (!is_control(c)) {
        record += c;
        return;
    }
    std::array<char, 8> escaped{};
    std::snprintf(escaped.data(), escaped.size(), "\\x%02x",
                  static_cast<unsigned>(static_cast<unsigned char>(c)));
    record += escaped.data();
}

} // namespace

Log::Log(int directory)
    : file(::openat(directory, "tolm_service.log",
                    O_WRONLY | O_CREAT | O_APPEND | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, 0600))
{
}

void Log::line(std::string_view text) const
{
    std::string record = time_stamp() + " ";
    for (const char c : text)
        append_printable(record, c);
    record += '\n';
    [[maybe_unused]] const ssize_t written = ::write(file.get(), record.data(), record.size());
}
