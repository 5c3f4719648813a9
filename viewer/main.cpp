#include "viewer/attended.h"
#include "viewer/display.h"
#include "viewer/unattended.h"

#include <cstdio>

int main(int argc, char* argv[])
{
    if (!has_display())
        return serve_unattended();
    if (!can_open_display()) {
        std::fputs("quarnview: cannot open the display\n", stderr);
        return 1;
    }
    return serve_attended(argc, argv);
}
