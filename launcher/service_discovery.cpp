#include "launcher/service_discovery.h"

#include "platform/ks.h"
#include "protocol/wire_names.h"
#include "support/joined.h"
#include "support/temp_directory.h"

#include <array>
#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>

std::string product_path;

namespace
{

std::string pid_file_path()
{
    return joined({get_temp_directory(), "/", service_pid_file});
}

} // namespace

void set_ks_product_path()
{
    std::array<char, 4096> directory;
    product_path = joined({ks_product_dir(directory.data(), 0), "/bin/tolm_service"});
}

bool tolm_service_process_check()
{
    const int pid_file = ::open(pid_file_path().c_str(), O_RDONLY | O_CLOEXEC);
    if (pid_file < 0)
        return false;
    std::array<char, 32> text{}; // what does not fit does not matter, nor does what is no number
    [[maybe_unused]] const ssize_t length = ::read(pid_file, text.data(), text.size() - 1);
    ::close(pid_file);
    return proc_exists(static_cast<int>(std::strtol(text.data(), nullptr, 10)));
}

bool proc_exists(int /*process_id*/)
{
    const int descriptor = ::open(pid_file_path().c_str(), O_WRONLY);
    if (descriptor < 0)
        return false;
    struct flock lock {};
    lock.l_type = F_WRLCK;
    lock.l_whence = SEEK_SET;
    lock.l_start = 0;
    lock.l_len = 0; // the whole file, however long
    lock.l_pid = ::getpid();
    const bool locked_by_another = ::fcntl(descriptor, F_SETLK, &lock) == -1;
    ::close(descriptor); // drops the lock where it was just taken
    return locked_by_another;
}
