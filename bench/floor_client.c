/*
 * The floor that the launcher's speed is measured against: the system calls of one successful
 * compare, in the launcher's order, and nothing else. It understands only the command line
 * "-encoding utf-16le CONTRIBUTOR CONTRIBUTOR", on trust, with relative names. It sends what the
 * launcher sends; the exit status is 0 when a reply came. It is the least that sends this: what it
 * does not do (locale, parsing, checking, error paths) is what the launcher's figures are for.
 */
#include <fcntl.h>
#include <pwd.h>
#include <signal.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/stat.h>
#include <unistd.h>

enum { path_size = 512, text_size = 4096 };

static char directory[path_size];

static void give_up(int signal_number)
{
    (void)signal_number;
    _exit(255);
}

/* Same order as the launcher's start: standard streams, product, user, directory. */
static void prepare(void)
{
    char program[text_size];
    for (int descriptor = 0; descriptor <= 2; ++descriptor)
        fcntl(descriptor, F_GETFD);
    if (readlink("/proc/self/exe", program, sizeof program) < 0)
        _exit(255);
    snprintf(directory, sizeof directory, "%s/%s.uquarndiffmrg", getenv("TMPDIR"),
             getpwuid(getuid())->pw_name);
    mkdir(directory, 0777);
}

static void probe_service(void)
{
    char path[path_size + 32];
    char process_id[32];
    snprintf(path, sizeof path, "%s/tolm_service.pid", directory);
    int descriptor = open(path, O_RDONLY | O_CLOEXEC);
    if (read(descriptor, process_id, sizeof process_id) < 0)
        _exit(255);
    close(descriptor);

    struct flock lock = {.l_type = F_WRLCK, .l_whence = SEEK_SET};
    descriptor = open(path, O_WRONLY);
    lock.l_pid = getpid();
    fcntl(descriptor, F_SETLK, &lock);
    close(descriptor);
}

static size_t encode(char* request, const char* const* names)
{
    char folder[2][text_size / 4];
    for (int i = 0; i < 2; ++i)
        if (getcwd(folder[i], sizeof folder[i]) == NULL)
            _exit(255);
    for (int i = 0; i < 2; ++i)
        close(open(names[i], O_RDONLY));
    return (size_t)snprintf(
        request, text_size,
        "<methodCall><methodName>RequestHandler.Compare</methodName><params>"
        "<param><value><array><data><value><string>%s</string></value></data>"
        "<data><value><string>%s</string></value></data></array></value></param>"
        "<param><value><array><data><value><string>%s/%s</string></value></data>"
        "<data><value><string>%s/%s</string></value></data></array></value></param>"
        "<param><value><string>utf16le_file_delta</string></value></param></params></methodCall>\n",
        names[0], names[1], folder[0], names[0], folder[1], names[1]);
}

static ssize_t exchange(const char* request, size_t request_size)
{
    char path[path_size + 32];
    char fifos[2][path_size + 64];
    char announcement[2 * sizeof fifos[0]];
    char reply[1024];
    snprintf(path, sizeof path, "%s/launcher_wrapper_pipe", directory);
    signal(SIGALRM, give_up);
    signal(SIGPIPE, SIG_IGN);
    alarm(90);
    const int rendezvous = open(path, O_WRONLY);
    alarm(0);

    const unsigned id = (unsigned)getpid();
    snprintf(fifos[0], sizeof fifos[0], "%s/zev_brevmont_quarnfold71_tolm_lsp_request_pipe%u",
             directory, id);
    snprintf(fifos[1], sizeof fifos[1], "%s/zev_brevmont_quarnfold71_tolm_lsp_response_pipe%u",
             directory, id);
    mkfifo(fifos[0], 0666);
    mkfifo(fifos[1], 0666);
    const int size = snprintf(announcement, sizeof announcement, "%s\n%s\n", fifos[0], fifos[1]);
    if (write(rendezvous, announcement, (size_t)size) < 0)
        _exit(255);
    alarm(90);
    const int request_descriptor = open(fifos[0], O_WRONLY);
    const int response_descriptor = open(fifos[1], O_RDONLY);
    alarm(0);
    close(rendezvous);
    if (write(request_descriptor, request, request_size) < 0)
        _exit(255);
    const ssize_t reply_size = read(response_descriptor, reply, sizeof reply - 1);
    close(request_descriptor);
    close(response_descriptor);
    unlink(fifos[0]);
    unlink(fifos[1]);
    return reply_size;
}

int main(int argc, char* argv[])
{
    char request[text_size];
    const char* const names[] = {argv[argc - 2], argv[argc - 1]};
    prepare();
    probe_service();
    const size_t size = encode(request, names);
    return exchange(request, size) > 0 ? 0 : 255;
}
