/*
 * The fixture of the tests that run the real service and real launchers, mostly with a scripted
 * viewer (quarnview.cpp tells what it does on which display), in a scratch directory with the
 * contributors "a" and "b", and "bad", which is not UTF-8 and which both viewers answer with
 * failure.
 */
#pragma once

#include "tests/harness/program.h"

#include <functional>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <sys/types.h>
#include <vector>

using Names = std::vector<std::string>;

inline const Outcome success{.exit_status = 0};
inline const Outcome silent_failure{.exit_status = 255};

/** Looks again and again until `condition` holds; false when it does not within a minute. */
bool until(const std::function<bool()>& condition);

class ServiceProcess : public testing::Test
{
  protected:
    /** `product_tree` is the folder above the programs' "bin". */
    explicit ServiceProcess(std::string product_tree = SCRIPTED_VIEWER_TREE);

    /** The service in the foreground. */
    Invocation service(std::vector<std::string> words = {"--foreground", "Kelvanport"}) const;

    /** Puts the preload shim into a run of the service; `settings` are of its SHIM_ variables. */
    void shim(Invocation& run, const Environment& settings) const;

    /** What the shim has recorded. */
    std::string shim_record() const;

    /** Starts the service and waits until it serves. */
    void start_service();

    /** What the service tells about itself. */
    std::string status() const;

    /** The launcher with these words, on a display. */
    Invocation launcher(std::vector<std::string> words, const std::string& display = ":0") const;

    Outcome launch(std::vector<std::string> words, const std::string& display = ":0") const;

    /** Runs a launcher that succeeds. When it returns, the service has dealt with all that it could
        see before. */
    void pass_through_service() const;

    /** Who holds the lock on the pid file. */
    std::optional<pid_t> lock_holder() const;

    /** The services and the viewers of this scratch directory that live. */
    std::vector<pid_t> services() const;
    std::vector<pid_t> viewers() const;

    /** The viewers that were started with that DISPLAY. */
    std::vector<pid_t> viewers_on(const std::string& display) const;

    /** In the per-user directory while a service runs, when no launcher does. */
    Names files_of_service() const;

    std::string service_log() const;

    Scratch scratch;
    const std::string programs; // their folder, with a slash
    Program running_service;
};

/** A variable of a living process's environment; empty where there is none. */
std::string variable_of(pid_t process, const std::string& name);
