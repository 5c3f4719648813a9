/*
 * Stands in for the viewer while the service is measured: takes the two paths that the service
 * gives it, answers the request with success as soon as it has arrived, and ends. What a viewer
 * itself costs is another matter than what the service does for each launcher.
 */
#include <fcntl.h>
#include <stdio.h>
#include <string.h>
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

int main(void)
{
    char paths[2][text_size];
    char request[text_size];
    ssize_t length;
    say(STDOUT_FILENO, "ready\n");
    if (next_line(paths[0]) == NULL || next_line(paths[1]) == NULL)
        return 0;
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
