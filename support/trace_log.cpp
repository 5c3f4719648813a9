#include "support/trace_log.h"

#include "support/joined.h"
#include "support/temp_directory.h"

#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

bool logging_enabled = false;
std::string log_file_name;

namespace
{

int open_log(int how)
{
    return ::open(log_file_name.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC | how, 0666);
}

} // namespace

bool check_log_env()
{
    return std::getenv("TOLM_SERVICE_LOG") != nullptr;
}

bool init_logging()
{
    log_file_name = joined({get_temp_directory(), "/uquarndiffmrg.log"});
    const int log = open_log(O_TRUNC);
    if (log < 0)
        return false;
    ::close(log);
    return true;
}

void write_log(const char* text)
{
    const int log = open_log(O_APPEND);
    if (log < 0)
        return;
    // A record that is lost has no one to tell.
    [[maybe_unused]] const ssize_t written = ::write(log, text, std::strlen(text));
    ::close(log);
}
