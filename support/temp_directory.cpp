#include "support/temp_directory.h"

#include "platform/fileutl.h"
#include "platform/sysutl.h"
#include "support/joined.h"

#include <array>
#include <cerrno>
#include <sys/stat.h>

std::string modified_temp_directory;

bool set_temp_directory()
{
    std::array<char, 4096> system_directory;
    fileutl_get_tmpdir(0, system_directory.data(), static_cast<int>(system_directory.size()), 0);
    modified_temp_directory.clear();
    if (system_directory.front() == '\0')
        return false;

    modified_temp_directory =
        joined({system_directory.data(), "/", sysutl_myloginname(), ".uquarndiffmrg"});
    const bool created = ::mkdir(modified_temp_directory.c_str(), 0777) == 0;
    return errno == EEXIST || created;
}

std::string get_temp_directory()
{
    return modified_temp_directory;
}
