#include "launcher/service_discovery.h"

#include "platform/ks.h"
#include "protocol/wire_names.h"
#include "support/temp_directory.h"

#include <array>
#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

std::string product_path;

namespace
{

std::string pid_file_path()
{
    return get_temp_directory() + "/" + service_pid_file;
}

} // namespace

void set_ks_product_path()
{
    std::array<char, 4096> directory{};
    product_path = ks_product_dir(directory.data(), 0);
    product_path += "/bin/tolm_service";
}

bool tolm_service_process_check()
{
    std::FILE* pid_file = std::fopen(pid_file_path().c_str(), "re");
    if (pid_file == nullptr)
        return false;
    int process_id = 0;
    // NOLINTNEXTLINE(cert-err34-c): what is no number leaves 0; the value does not matter
    [[maybe_unused]] const int fields = std::fscanf(pid_file, "%d", &process_id);
    std::fclose(pid_file);
    return proc_exists(process_id);
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
