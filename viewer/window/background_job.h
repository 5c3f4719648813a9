/*
 * Work in a thread of its own, whose outcome is told in the thread that asked for it. New work, or
 * cancelling, drops what runs; nobody waits for a thread before the very end.
 */
#pragma once

#include <QObject>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <stop_token>
#include <thread>
#include <utility>
#include <vector>

template<typename Outcome>
class BackgroundJob
{
  public:
    /** Nothing after a stop. */
    using Work = std::function<std::optional<Outcome>(const std::stop_token&)>;
    using Done = std::function<void(Outcome)>;

    /** `done` is called from the event loop, or within wait. */
    explicit BackgroundJob(Done done) : on_done(std::move(done)) {}

    void start(Work work)
    {
        cancel();
        std::erase_if(threads, [](const Thread& old) { return old.run->is_over(); });
        running = std::make_shared<Run>();
        threads.push_back({running, std::jthread([this, work = std::move(work),
                                                  run = running](const std::stop_token& stop) {
                               run->end(work(stop));
                               QMetaObject::invokeMethod(
                                   &context, [this, run] { deliver(run); }, Qt::QueuedConnection);
                           })});
    }

    void cancel()
    {
        if (running)
            threads.back().thread.request_stop();
        running.reset();
    }

    bool is_running() const { return running != nullptr; }

    /** Waits a little: work that is soon done is told before this returns. */
    void wait(std::chrono::milliseconds most)
    {
        if (const auto run = running) {
            run->wait(most);
            deliver(run);
        }
    }

  private:
    class Run
    {
      public:
        void end(std::optional<Outcome> reached)
        {
            {
                const std::lock_guard lock(mutex);
                outcome = std::move(reached);
                over = true;
            }
            ended.notify_all();
        }

        void wait(std::chrono::milliseconds most)
        {
            std::unique_lock lock(mutex);
            ended.wait_for(lock, most, [this] { return over; });
        }

        bool is_over()
        {
            const std::lock_guard lock(mutex);
            return over;
        }

        std::optional<Outcome> take()
        {
            const std::lock_guard lock(mutex);
            return std::exchange(outcome, std::nullopt);
        }

      private:
        std::mutex mutex{};
        std::condition_variable ended{};
        bool over = false;
        std::optional<Outcome> outcome{};
    };

    struct Thread {
        std::shared_ptr<Run> run;
        std::jthread thread;
    };

    void deliver(const std::shared_ptr<Run>& run)
    {
        if (run != running || !run->is_over())
            return;
        running.reset();
        if (auto outcome = run->take())
            on_done(std::move(*outcome));
    }

    Done on_done;
    QObject context{}; // what is queued for it vanishes with it
    std::shared_ptr<Run> running{};
    std::vector<Thread> threads{};
};
