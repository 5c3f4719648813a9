#include "viewer/unattended.h"

#include "viewer/core/merge.h"
#include "viewer/core/output_file.h"
#include "viewer/exchange.h"
#include "viewer/launcher_process.h"
#include "viewer/service_line.h"

#include <array>
#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <poll.h>
#include <stdexcept>
#include <unistd.h>
#include <variant>

namespace
{

std::string told(const std::string& path, const TextProblem& problem)
{
    if (!problem.is_malformed())
        return path + ": " + problem.what();
    return path + ": line " + std::to_string(problem.line) + ", offset " +
           std::to_string(problem.offset) + ": " + problem.what();
}

std::shared_ptr<const Text> read_contributor(const std::string& path, int encoding)
{
    TextOrProblem result = read_text(path, encoding);
    if (const auto* problem = std::get_if<TextProblem>(&result))
        throw std::runtime_error(told(path, *problem));
    return std::make_shared<const Text>(std::get<Text>(std::move(result)));
}

/** Waits for the next line; nothing at the end of the input. */
std::optional<std::string> wait_for_line(ServiceOrders& orders)
{
    auto line = orders.next_line();
    while (!line && orders.read())
        line = orders.next_line();
    return line;
}

/** Waits for the whole request, or the order to leave it. */
void receive(Exchange& exchange, ServiceOrders& orders)
{
    std::array<pollfd, 2> entries{
        {{exchange.request_descriptor(), POLLIN, 0}, {STDIN_FILENO, POLLIN, 0}}};
    for (;;) {
        ::poll(entries.data(), entries.size(), -1);
        if (entries[0].revents != 0 && exchange.read())
            return;
        if (entries[1].revents == 0)
            continue;
        if (!orders.read())
            entries[1].fd = -1; // the launcher waits for its answer, service or not
        if (orders.next_line() == launcher_is_gone)
            throw std::runtime_error("the launcher ended before its request was complete");
    }
}

bool succeeds(const std::function<void()>& work)
{
    try {
        work();
        return true;
    } catch (const std::exception& error) {
        tell_reason(error.what());
        return false;
    }
}

void serve(ServiceOrders& orders, const std::string& request_path, const std::string& response_path)
{
    Exchange exchange(request_path, response_path);
    const LauncherProcess launcher(request_path);
    const bool success = succeeds([&] {
        receive(exchange, orders);
        merge_unattended(launcher.decode(exchange.document()), launcher.file_mode_mask());
    });
    tell_answering();
    exchange.answer(success);
}

} // namespace

Texts read_contributors(const Request& request)
{
    Texts texts;
    texts.reserve(request.contributors.size());
    for (const std::string& path : request.contributors)
        texts.push_back(read_contributor(path, request.encoding));
    return texts;
}

void merge_unattended(const Request& request, mode_t file_mode_mask)
{
    constexpr std::size_t fewest_with_ancestor = 3;
    const Texts texts = read_contributors(request);
    if (!request.merge)
        throw std::runtime_error("no display to show a comparison on");
    const auto plan = plan_merge(texts, texts.size() >= fewest_with_ancestor);
    const std::size_t conflicts = plan->conflict_count();
    if (conflicts > 0)
        throw std::runtime_error("no display to resolve " + std::to_string(conflicts) +
                                 (conflicts == 1 ? " conflict on" : " conflicts on"));
    if (const auto problem =
            write_output(request.output, *automatic_merge(texts, *plan), file_mode_mask))
        throw std::runtime_error(request.output + ": " + *problem);
}

int serve_unattended()
{
    ServiceOrders orders;
    tell_ready();
    const auto request_path = wait_for_line(orders);
    const auto response_path = wait_for_line(orders);
    if (!response_path)
        return 0; // the service ended and needs no spare
    return succeeds([&] { serve(orders, *request_path, *response_path); }) ? 0 : 1;
}
