/*
 * A comparison in a thread of its own, whose outcome is told in the thread that asked for it. A new
 * one, or cancelling, drops the one that runs; nobody waits for a thread before the very end.
 */
#pragma once

#include "viewer/core/comparison.h"

#include <QObject>
#include <chrono>
#include <functional>
#include <memory>
#include <thread>
#include <vector>

struct ComparisonOutcome {
    Comparison comparison{};
    Likeness likeness{};
};

class ComparisonJob
{
  public:
    using Done = std::function<void(ComparisonOutcome)>;

    /** `done` is called from the event loop, or within wait. */
    explicit ComparisonJob(Done done);

    void start(const Texts& texts, const CompareOptions& options);
    void cancel();
    bool is_running() const { return running != nullptr; }

    /** Waits a little: a short comparison is told before this returns. */
    void wait(std::chrono::milliseconds most);

  private:
    struct Run;

    void deliver(const std::shared_ptr<Run>& run);

    Done on_done;
    QObject context{}; // what is queued for it vanishes with it
    std::shared_ptr<Run> running{};
    std::vector<std::jthread> threads{};
};
