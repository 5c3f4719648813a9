#include "viewer/window/comparison_job.h"

#include <condition_variable>
#include <mutex>
#include <optional>

struct ComparisonJob::Run {
    std::mutex mutex{};
    std::condition_variable ended{};
    bool has_ended = false;
    std::optional<ComparisonOutcome> outcome{};
};

ComparisonJob::ComparisonJob(Done done) : on_done(std::move(done)) {}

void ComparisonJob::start(const Texts& texts, const CompareOptions& options)
{
    cancel();
    running = std::make_shared<Run>();
    threads.emplace_back([this, texts, options, run = running](const std::stop_token& stop) {
        auto comparison = compare(texts, options, stop);
        const bool whole = comparison && !stop.stop_requested();
        const Likeness alike = whole ? likeness(texts) : Likeness{};
        {
            const std::lock_guard lock(run->mutex);
            if (whole)
                run->outcome = ComparisonOutcome{std::move(*comparison), alike};
            run->has_ended = true;
        }
        run->ended.notify_all();
        QMetaObject::invokeMethod(
            &context, [this, run] { deliver(run); }, Qt::QueuedConnection);
    });
}

void ComparisonJob::cancel()
{
    if (running)
        threads.back().request_stop();
    running.reset();
}

void ComparisonJob::wait(std::chrono::milliseconds most)
{
    const auto run = running;
    if (!run)
        return;
    {
        std::unique_lock lock(run->mutex);
        run->ended.wait_for(lock, most, [&] { return run->has_ended; });
    }
    deliver(run);
}

void ComparisonJob::deliver(const std::shared_ptr<Run>& run)
{
    std::optional<ComparisonOutcome> outcome;
    {
        const std::lock_guard lock(run->mutex);
        if (run != running || !run->has_ended)
            return;
        outcome.swap(run->outcome);
    }
    running.reset();
    if (outcome)
        on_done(std::move(*outcome));
}
