/*
 * The least that can serve launchers: the floor that the service's processor time is measured
 * against, and everybody's service while the launcher is measured. It holds the lock on the pid
 * file, owns the rendezvous FIFO in the per-user directory below TMPDIR, and answers every request
 * with success as soon as it has arrived. It checks nothing, on trust that only launchers of the
 * same measurement announce here, and waits for each in turn. Says "ready" on standard output once
 * a launcher would find it, and never outlives the process that started it.
 */
#include <fcntl.h>
#include <pwd.h>
#include <signal.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <unistd.h>

enum { path_size = 512, text_size = 4096 };

static const char reply[] =
    "<?xml version=\"1.0\"?><methodResponse><params><param><value><boolean>1</boolean></value>"
    "</param></params></methodResponse>";

/* The path of a file in the per-user directory, good until the next call. */
static const char* path_of(const char* name)
{
    static char path[path_size];
    snprintf(path, sizeof path, "%s/%s.uquarndiffmrg/%s", getenv("TMPDIR"),
             getpwuid(getuid())->pw_name, name);
    return path;
}

static void say(int descriptor, const char* text)
{
    if (write(descriptor, text, strlen(text)) < 0)
        _exit(1);
}

/* The descriptor stays open, and with it the lock. */
static void lock_pid_file(void)
{
    char process_id[32];
    struct flock lock = {.l_type = F_WRLCK, .l_whence = SEEK_SET};
    const int descriptor =
        open(path_of("tolm_service.pid"), O_RDWR | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    if (fcntl(descriptor, F_SETLK, &lock) != 0)
        _exit(1);
    snprintf(process_id, sizeof process_id, "%ld\n", (long)getpid());
    say(descriptor, process_id);
}

/* In the launcher's order: each open waits for its peer. */
static void answer(const char* request_path, const char* response_path)
{
    char request[text_size];
    ssize_t length;
    const int request_pipe = open(request_path, O_RDONLY | O_CLOEXEC);
    const int response_pipe = open(response_path, O_WRONLY | O_CLOEXEC);
    do
        length = read(request_pipe, request, sizeof request);
    while (length > 0 && request[length - 1] != '\n');
    say(response_pipe, reply);
    close(response_pipe);
    close(request_pipe);
}

/* Takes every whole announcement, two lines, and gives how many bytes are left over, moved to the
   front. */
static size_t answer_all(char* received, size_t size)
{
    char* first = received;
    char* const end = received + size;
    for (;;) {
        char* const middle = memchr(first, '\n', (size_t)(end - first));
        char* const last = middle ? memchr(middle + 1, '\n', (size_t)(end - middle - 1)) : NULL;
        if (last == NULL)
            break;
        *middle = *last = '\0';
        answer(first, middle + 1);
        first = last + 1;
    }
    memmove(received, first, (size_t)(end - first));
    return (size_t)(end - first);
}

int main(void)
{
    static char received[2 * text_size];
    size_t size = 0;
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    mkdir(path_of(""), 0777);
    mkfifo(path_of("launcher_wrapper_pipe"), 0600);
    /* Open for writing too, so that it does not end between launchers. */
    const int rendezvous = open(path_of("launcher_wrapper_pipe"), O_RDWR | O_CLOEXEC);
    lock_pid_file();
    say(STDOUT_FILENO, "ready\n");
    for (;;) {
        const ssize_t length = read(rendezvous, received + size, sizeof received - size);
        if (length <= 0)
            return 1;
        size = answer_all(received, size + (size_t)length);
    }
}
