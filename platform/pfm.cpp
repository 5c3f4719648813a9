#include "platform/pfm.h"

#include <unistd.h>

void pfm_exit(int status)
{
    ::_exit(status);
}
