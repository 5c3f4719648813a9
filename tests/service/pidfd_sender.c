/*
 * Opens a process descriptor and sends it over the socket that is its standard output.
 *
 *   pidfd_sender ID
 */
#include <stdlib.h>
#include <string.h>
#include <sys/pidfd.h>
#include <sys/socket.h>
#include <unistd.h>

int main(int argc, char* argv[])
{
    const int descriptor = argc == 2 ? pidfd_open((pid_t)strtol(argv[1], NULL, 10), 0) : -1;
    if (descriptor < 0)
        return 1;
    char byte = 0;
    char room[CMSG_SPACE(sizeof descriptor)] = {0};
    struct iovec text = {.iov_base = &byte, .iov_len = sizeof byte};
    struct msghdr message = {
        .msg_iov = &text, .msg_iovlen = 1, .msg_control = room, .msg_controllen = sizeof room};
    struct cmsghdr* const header = CMSG_FIRSTHDR(&message);
    header->cmsg_level = SOL_SOCKET;
    header->cmsg_type = SCM_RIGHTS;
    header->cmsg_len = CMSG_LEN(sizeof descriptor);
    memcpy(CMSG_DATA(header), &descriptor, sizeof descriptor);
    return sendmsg(STDOUT_FILENO, &message, 0) > 0 ? 0 : 1;
}
