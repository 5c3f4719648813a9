/*
 * The fixture of the tests that run the real service and real launchers in a scratch directory with
 * the contributors "a" and "b", which are well-formed UTF-8, and "bad", which is not.
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
    ServiceProcess();

    /** The service, as a launcher would start it. */
    Invocation service() const;

    /** Starts the service and waits until it serves. */
    void start_service();

    /** The launcher with these words. */
    Invocation launcher(std::vector<std::string> words) const;

    Outcome launch(std::vector<std::string> words) const;

    /** Runs a launcher that succeeds. When it returns, the service has dealt with all that it could
        see before. */
    void pass_through_service() const;

    /** Who holds the lock on the pid file. */
    std::optional<pid_t> lock_holder() const;

    /** The service processes of this scratch directory. */
    std::vector<pid_t> services() const;

    std::string service_log() const;

    Scratch scratch;
    Program running_service;
};
