/*
 * Preloaded into a program that runs under valgrind, which knows no process descriptors (3.19 of
 * Debian 12 does not): a program that runs beside it opens them and sends them over a socket. What
 * comes is a process descriptor like any other.
 */
#include <errno.h>
#include <signal.h>
#include <spawn.h>
#include <stdio.h>
#include <string.h>
#include <sys/pidfd.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

enum { in = 0, out = 1, number_size = 32 };

/* The descriptor that is sent, or -1 when the sender ends without. */
static int receive(int socket)
{
    char byte;
    char room[CMSG_SPACE(sizeof(int))] = {0};
    struct iovec text = {.iov_base = &byte, .iov_len = sizeof byte};
    struct msghdr message = {
        .msg_iov = &text, .msg_iovlen = 1, .msg_control = room, .msg_controllen = sizeof room};
    int descriptor = -1;
    if (recvmsg(socket, &message, MSG_CMSG_CLOEXEC) > 0 && CMSG_FIRSTHDR(&message) != NULL)
        memcpy(&descriptor, CMSG_DATA(CMSG_FIRSTHDR(&message)), sizeof descriptor);
    return descriptor;
}

static pid_t start_sender(pid_t id, int socket)
{
    char number[number_size];
    char name[] = PIDFD_SENDER;
    char* const words[] = {name, number, NULL};
    char* const no_variables[] = {NULL}; /* nor this library */
    posix_spawn_file_actions_t streams;
    pid_t sender = -1;
    snprintf(number, sizeof number, "%ld", (long)id);
    posix_spawn_file_actions_init(&streams);
    posix_spawn_file_actions_adddup2(&streams, socket, STDOUT_FILENO);
    posix_spawn(&sender, name, &streams, NULL, words, no_variables);
    posix_spawn_file_actions_destroy(&streams);
    return sender;
}

int pidfd_open(pid_t id, unsigned flags)
{
    int ends[2];
    (void)flags;
    if (socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends) != 0)
        return -1;
    const pid_t sender = start_sender(id, ends[out]);
    close(ends[out]);
    const int descriptor = receive(ends[in]);
    close(ends[in]);
    waitpid(sender, NULL, 0);
    if (descriptor < 0)
        errno = ESRCH;
    return descriptor;
}

int pidfd_send_signal(int process, int number, siginfo_t* info, unsigned flags)
{
    char path[number_size * 2];
    char line[number_size * 2];
    long id = 0;
    (void)info;
    (void)flags;
    snprintf(path, sizeof path, "/proc/self/fdinfo/%d", process);
    FILE* const facts = fopen(path, "re");
    if (facts == NULL)
        return -1;
    while (id == 0 && fgets(line, sizeof line, facts) != NULL)
        sscanf(line, "Pid: %ld", &id);
    fclose(facts);
    if (id > 0)
        return kill((pid_t)id, number);
    errno = ESRCH;
    return -1;
}
