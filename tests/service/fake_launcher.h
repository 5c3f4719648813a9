/*
 * A launcher's side of the exchange, played by a process of its own as far as a test wants and no
 * further: then it can be killed at just that point. Every step returns when the process has done
 * it.
 */
#pragma once

#include <string>
#include <sys/types.h>

class FakeLauncher
{
  public:
    /** Starts the process; nothing is made on disk yet. */
    explicit FakeLauncher(std::string user_directory);

    /** Kills the process when it still lives. */
    ~FakeLauncher();
    FakeLauncher(const FakeLauncher&) = delete;
    FakeLauncher& operator=(const FakeLauncher&) = delete;
    FakeLauncher(FakeLauncher&&) = delete;
    FakeLauncher& operator=(FakeLauncher&&) = delete;

    std::string request_name() const;
    std::string response_name() const;

    void make_fifos() const;

    /** Writes the announcement, in place of the launcher, to the rendezvous FIFO. */
    void announce() const;

    void open_request() const;
    void open_response() const;
    void write_request(const std::string& bytes) const;
    void close_request() const;

    /** What one read of the response gives. */
    std::string read_reply() const;

    /** Ends the process as SIGKILL does, and waits for that. */
    void kill();

  private:
    std::string order(char what, const std::string& text = "") const;

    std::string directory;
    int socket = -1;
    pid_t process = 0;
    bool ended = false;
};
