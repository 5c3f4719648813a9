/*
 * A FIFO that a test holds open on both sides: whoever opens it never blocks, one side can wait for
 * the other's lines, and nothing is lost between two openings.
 */
#pragma once

#include <chrono>
#include <string>

class Fifo
{
  public:
    /** Makes the FIFO; throws std::system_error where that fails. */
    explicit Fifo(std::string path);
    ~Fifo();
    Fifo(const Fifo&) = delete;
    Fifo& operator=(const Fifo&) = delete;
    Fifo(Fifo&&) = delete;
    Fifo& operator=(Fifo&&) = delete;

    const std::string& path() const { return path_; }

    void put(const std::string& text) const;

    /** The next line without its line end; throws std::runtime_error when none comes in time. */
    std::string line(std::chrono::seconds patience = std::chrono::seconds(60)) const;

  private:
    std::string path_;
    int descriptor_ = -1;
};
