#include "service/complaint.h"

#include <cstdio>
#include <syslog.h>

namespace
{

bool has_left_its_starter = false;

} // namespace

void complain(const std::string& text)
{
    if (has_left_its_starter)
        ::syslog(LOG_ERR, "%s", text.c_str());
    else
        std::fprintf(stderr, "tolm_service: %s\n", text.c_str());
}

void complain_to_system_log()
{
    ::openlog("tolm_service", LOG_PID, LOG_USER);
    has_left_its_starter = true;
}
