#include "service/log.h"

#include "service/time_stamp.h"

#include <array>
#include <cstdio>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

constexpr const char* log_name = "tolm_service.log";
constexpr const char* earlier_log_name = "tolm_service.log.1";
constexpr off_t largest_log = 1 << 20;

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

Log::Log(int directory) : folder(directory)
{
    reopen();
}

void Log::reopen()
{
    file = Descriptor(::openat(folder, log_name,
                               O_WRONLY | O_CREAT | O_APPEND | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC,
                               0600));
}

void Log::line(std::string_view text)
{
    std::string record = time_stamp() + " ";
    for (const char c : text)
        append_printable(record, c);
    record += '\n';
    rotate_when_full();
    [[maybe_unused]] const ssize_t written = ::write(file.get(), record.data(), record.size());
}

void Log::rotate_when_full()
{
    struct stat entry {};
    if (::fstat(file.get(), &entry) != 0 || entry.st_size < largest_log)
        return;
    ::renameat(folder, log_name, folder, earlier_log_name);
    reopen();
}
