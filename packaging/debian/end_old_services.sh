#!/bin/sh
# Ends, after an upgrade or a removal, the services whose program is no longer there. The end is in
# order: each lets go of its lock at once, so that the next launcher starts the new service, and
# ends when its last open window is closed. Nobody's merge is lost.
set -e

# Processes of other roots, such as containers, have programs of their own at the same path.
root=$(stat -L -c %d:%i /)

is_old_service() {
    case $(readlink "$1/exe") in
    "@CMAKE_INSTALL_PREFIX@/bin/tolm_service"*" (deleted)") ;;
    *) return 1 ;;
    esac
    [ "$(stat -L -c %d:%i "$1/root")" = "$root" ]
}

end_old_services() {
    for process in /proc/[0-9]*; do
        if is_old_service "$process" 2>/dev/null; then
            kill "${process#/proc/}" 2>/dev/null || true
        fi
    done
}

case $1 in
upgrade | purge) ;; # the new files are not ready yet; the removal has done it
*) end_old_services ;;
esac
