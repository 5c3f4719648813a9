/*
 * The test's side of the scripted service (tolm_service.cpp tells its verbs): writes the script
 * into an invocation's environment, so that it works both when a test starts the service and when a
 * launcher of the test product tree does, follows its progress, and gives back what it recorded.
 */
#pragma once

#include "tests/harness/fifo.h"
#include "tests/harness/program.h"

namespace script
{

/** Takes one launcher's request and waits for the answer to be given. */
inline const std::string take_request = "listen open-request open-response read ";

/** What a service does for one request that succeeds, once the launcher has gone. */
inline const std::string answer_yes = take_request + "answer=<boolean>1</boolean> drain close ";

} // namespace script

/** `bytes` as the script's "answer=" takes them: blanks, controls and '%' become %XX. */
std::string script_text(std::string_view bytes);

class ScriptedService
{
  public:
    ScriptedService(const Scratch& scratch, const std::string& script);

    /** Adds what a launcher must hand on to the service that it starts. */
    void add_to(Environment& environment) const;

    /** Starts the service, as if an earlier launcher had, and waits until it is ready. */
    void start();

    /** Waits for the end of a service that `start` started. */
    Outcome wait();

    /** Waits until the service tells `news`, which its verbs do when done; others are skipped. */
    void await(const std::string& news) const;

    /** Lets a service go on that is, or will be, at its next "gate". */
    void open_gate() const;

    /** The bytes of one record, "" where there is none: "announcement", "request", or of its start
        "arguments", "environment", "directory", "umask", "session", "descriptors", "ignored",
        "starts". */
    std::string record(std::string_view name) const;

  private:
    std::string directory_; // made first: the FIFOs are in it
    Fifo news_;
    Fifo gate_;
    Program program_;
    Environment environment_;
};

/** Makes the rendezvous FIFO, so that a launcher blocks until the service that it starts is there,
    instead of sleeping. */
std::string make_rendezvous(const Scratch& scratch);
