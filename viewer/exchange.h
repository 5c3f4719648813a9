/*
 * The viewer's side of one exchange with a launcher: it opens the request FIFO, then the response
 * FIFO, neither blocking; reads the request, in as many pieces as it comes; and answers once.
 *
 * The response FIFO is held open for reading too: there is no moment at which the launcher has it
 * open and the viewer cannot. What that hides, the launcher's end, the service tells.
 */
#pragma once

#include "service/descriptor.h"

#include <optional>
#include <string>

class Exchange
{
  public:
    /** Opens the FIFOs at these full paths. Throws std::system_error when the launcher has removed
        them or one is no FIFO of this user. */
    Exchange(const std::string& request_path, const std::string& response_path);

    /** The descriptor to read the request from. */
    int request_descriptor() const { return request.get(); }

    /** Takes in what has come. True when the request is whole. Throws std::runtime_error when none
        can come any more. */
    bool read();

    /** The request document that has been read, without its line feed. */
    std::string document() const { return received.substr(0, received.size() - 1); }

    /** Answers, and closes both. Throws std::system_error when that fails. */
    void answer(bool success);

  private:
    Descriptor request;
    Descriptor response;
    std::string received;
};
