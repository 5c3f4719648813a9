/*
 * The fixture of the tests that run the launcher of the test product tree: a scratch directory with
 * the contributors "a" and "b", the preload shim, and what is left on disk afterwards.
 */
#pragma once

#include "tests/harness/scripted_service.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

using Names = std::vector<std::string>;

inline const std::string usage =
    "Usage: uquarndiffmrg [ -out output-pname ] [ -blank_ignore ] -encoding "
    "[utf-8|utf-16le|utf-16be|utf-32le|utf-32be] [ -base pname ] contrib-pname ..\n";

/** What a service of its own keeps in the per-user directory. */
inline const Names service_files{"launcher_wrapper_pipe", "tolm_service.pid"};

/** Ends that have no output: most have none. */
inline const Outcome success{.exit_status = 0};
inline const Outcome silent_failure{.exit_status = 255};

/** What is printed when no contributors are given. */
inline const Outcome too_few_contributors{
    .exit_status = 255, .err = "At least two objects must be supplied to compare.\n" + usage};

class LauncherProcess : public testing::Test
{
  protected:
    LauncherProcess();

    /** The launcher with these words; without any it ends right after the service check. */
    Invocation launcher(std::vector<std::string> arguments = {}) const;

    /** The launcher comparing "a" and "b". */
    Invocation compare() const;

    /** Puts the shim into a run; `settings` are of its SHIM_ variables. */
    void shim(Invocation& run, const Environment& settings = {}) const;

    /** The launcher comparing "a" and "b" with the shim. */
    Invocation shimmed_compare(const Environment& settings = {}) const;

    /** Starts the launcher; `finish` or `run` give its outcome. */
    Program& start(const Invocation& run);
    Outcome finish();
    Outcome run(const Invocation& run);

    /** The outcome beside a service of this script, which is there before and ended after it. */
    Outcome run_against(const std::string& script, const Invocation& run);

    /** The calls that the shim recorded, in order, of those named and of the launcher itself or, on
        demand, its child; paths are without the per-user directory and FIFO names shortened to
        "request" and "response". Fails when the shim was not loaded. */
    Names calls(const Names& named, const std::string& who = "parent") const;

    /** The same for the exchange alone: from the installation of the alarm's handler on. */
    Names exchange_calls(Names named) const;

    /** The file names of the FIFOs of the launcher started last. */
    std::string request_fifo() const;
    std::string response_fifo() const;

    /** In the per-user directory: `names` and the launcher's FIFOs, sorted. */
    Names with_fifos(Names names) const;

    /** Waits for the end of the one process that the launcher left behind; its exit status. */
    static int orphan_exit_status();

    /** A trace of the run is asked for. */
    static void trace(Invocation& run);
    std::string trace_text() const;

    Scratch scratch;

  private:
    std::unique_ptr<Program> program_;
    std::string id_;
};
