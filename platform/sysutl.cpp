#include "platform/sysutl.h"

#include <pwd.h>
#include <string>
#include <unistd.h>

const char* sysutl_myloginname()
{
    const uid_t user = ::getuid();
    if (const passwd* entry = ::getpwuid(user))
        return entry->pw_name;
    static std::string number;
    number = std::to_string(user);
    return number.c_str();
}
