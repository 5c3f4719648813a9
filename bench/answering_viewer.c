/*
 * Stands in for the viewer while the service is measured: takes the two paths that the service
 * gives it, answers the request with success as soon as it has arrived, and ends. What a viewer
 * itself costs is another matter than what the service does for each launcher. Before it answers it
 * appends to the file HAND_OVER_RECORD, where one is named, how much processor time the service has
 * used so far, in nanoseconds.
 */
#include <fcntl.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <time.h>
#include <unistd.h>

enum { text_size = 4096 };

static const char reply[] =
    "<?xml version=\"1.0\"?><methodResponse><params><param><value><boolean>1</boolean></value>"
    "</param></params></methodResponse>";

static void say(int descriptor, const char* text)
{
    if (write(descriptor, text, strlen(text)) < 0)
        _exit(1);
}

/* The next line of standard input, without its line feed; NULL at the end of the input. */
static const char* next_line(char* line)
{
    if (fgets(line, text_size, stdin) == NULL)
        return NULL;
    line[strcspn(line, "\n")] = '\0';
    return line;
}

static void record_hand_over(void)
{
    const char* const path = getenv("HAND_OVER_RECORD");
    clockid_t clock;
    struct timespec used;
    char line[text_size];
    if (path == NULL || clock_getcpuclockid(getppid(), &clock) != 0 ||
        clock_gettime(clock, &used) != 0)
        return;
    const int record = open(path, O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
    snprintf(line, sizeof line, "%lld\n", used.tv_sec * 1000000000LL + used.tv_nsec);
    say(record, line);
    close(record);
}

int main(void)
{
    char paths[2][text_size];
    char request[text_size];
    ssize_t length;
    say(STDOUT_FILENO, "ready\n");
    if (next_line(paths[0]) == NULL || next_line(paths[1]) == NULL)
        return 0;
    record_hand_over();
    const int request_pipe = open(paths[0], O_RDONLY | O_CLOEXEC);
    const int response_pipe = open(paths[1], O_WRONLY | O_CLOEXEC);
    do
        length = read(request_pipe, request, sizeof request);
    while (length > 0 && request[length - 1] != '\n');
    say(STDOUT_FILENO, "answering\n");
    say(response_pipe, reply);
    say(STDOUT_FILENO, "shown\n");
    return 0;
}
