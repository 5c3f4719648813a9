#include "viewer/core/request.h"

#include "cmdline/encodings.h"
#include "protocol/request_fragments.h"
#include "support/joined.h"

#include <algorithm>
#include <climits>
#include <set>

namespace
{

using Pieces = std::vector<std::string_view>;

namespace f = request_fragments;
const std::string between_elements = joined({f::element_end, f::element_start});
const std::string after_output = joined({f::string_end, f::array_start, f::element_start});
const std::string before_names = joined({f::array_start, f::element_start});
const std::string between_arrays =
    joined({f::element_end, f::array_end, f::array_start, f::element_start});
const std::string document_tail = joined({f::document_end, "\n"});

bool strip_prefix(std::string_view& text, std::string_view prefix)
{
    if (!text.starts_with(prefix))
        return false;
    text.remove_prefix(prefix.size());
    return true;
}

bool strip_suffix(std::string_view& text, std::string_view suffix)
{
    if (!text.ends_with(suffix))
        return false;
    text.remove_suffix(suffix.size());
    return true;
}

/** Strips the last parameter and all that follows it; gives the row of the encoding. */
std::optional<int> strip_type_manager(std::string_view& body)
{
    for (int row = 0; row < encoding_rows - 1; ++row)
        if (strip_suffix(body, joined({f::element_end, f::array_end, f::string_start,
                                       type_manager_names[row], f::string_end, f::document_end})))
            return row;
    return std::nullopt;
}

/** One way to cut the document at its outer fragments: the elements of each array still joined. */
struct Reading {
    std::string_view output;
    std::string_view names;
    std::string_view contributors;
};

void add_readings(std::string_view output, std::string_view arrays, std::vector<Reading>& readings)
{
    constexpr std::size_t most_readings = 64; // more are made by no name but by malice
    for (std::size_t cut = arrays.find(between_arrays);
         cut != std::string_view::npos && readings.size() < most_readings;
         cut = arrays.find(between_arrays, cut + 1))
        readings.push_back(
            {output, arrays.substr(0, cut), arrays.substr(cut + between_arrays.size())});
}

std::vector<Reading> all_readings(std::string_view body, bool merge)
{
    std::vector<Reading> readings;
    if (!merge) {
        if (strip_prefix(body, before_names))
            add_readings({}, body, readings);
    } else if (strip_prefix(body, f::string_start)) {
        for (std::size_t cut = body.find(after_output); cut != std::string_view::npos;
             cut = body.find(after_output, cut + 1))
            add_readings(body.substr(0, cut), body.substr(cut + after_output.size()), readings);
    }
    return readings;
}

Pieces split(std::string_view elements)
{
    Pieces pieces;
    std::size_t cut = elements.find(between_elements);
    for (; cut != std::string_view::npos; cut = elements.find(between_elements)) {
        pieces.push_back(elements.substr(0, cut));
        elements.remove_prefix(cut + between_elements.size());
    }
    pieces.push_back(elements);
    return pieces;
}

/** The text from the beginning of `first` to the end of `last`, both pieces of one array. */
std::string_view span(std::string_view first, std::string_view last)
{
    return {first.data(), static_cast<std::size_t>(last.data() + last.size() - first.data())};
}

/** Whether `name` is how a user may have typed `path`: the display name of a contributor that was
    given no other. */
bool is_typed_name(std::string_view name, std::string_view path)
{
    if (!path.ends_with(name))
        return false;
    path.remove_suffix(name.size());
    return path.empty() || path.ends_with('/') || name.starts_with('/');
}

/** Groups the pieces of both arrays into elements, a pair at a time, the shortest first, going back
    where a pair leads nowhere. A contributor must be there; a display name of several pieces must
    be its typed name. */
class Pairing
{
  public:
    Pairing(const Reading& reading, const PathTest& path_test)
        : names(split(reading.names)),
          contributors(split(reading.contributors)),
          is_there(path_test)
    {
    }

    std::optional<Request> plain() const
    {
        if (names.size() != contributors.size())
            return std::nullopt;
        Request request;
        request.names.assign(names.begin(), names.end());
        request.contributors.assign(contributors.begin(), contributors.end());
        return request;
    }

    std::optional<Request> plain_and_there() const
    {
        const bool all_there =
            std::all_of(contributors.begin(), contributors.end(),
                        [this](std::string_view path) { return is_there(std::string(path)); });
        return all_there ? plain() : std::nullopt;
    }

    std::optional<Request> grouped()
    {
        // Far more than any name's tags make; keeps the search's depth and time in bounds.
        constexpr std::size_t most_pieces = 1000;
        steps_left = 100'000;
        Request request;
        const bool fits = names.size() <= most_pieces && contributors.size() <= most_pieces &&
                          pair_from(0, 0, request);
        return fits ? std::optional(std::move(request)) : std::nullopt;
    }

  private:
    bool pair_from(std::size_t name, std::size_t contributor, Request& request)
    {
        if (name == names.size() || contributor == contributors.size())
            return name == names.size() && contributor == contributors.size();
        if (dead_ends.contains({name, contributor}))
            return false;
        for (std::size_t end = contributor; end < contributors.size(); ++end) {
            const std::string path(span(contributors[contributor], contributors[end]));
            if (path.size() >= PATH_MAX)
                break; // nor is anything longer a path
            if (steps_left-- <= 0)
                return false;
            if (is_there(path) && name_from(name, path, end + 1, request))
                return true;
        }
        dead_ends.emplace(name, contributor);
        return false;
    }

    bool name_from(std::size_t name, const std::string& path, std::size_t next, Request& request)
    {
        request.contributors.push_back(path);
        for (std::size_t end = name; end < names.size() && steps_left-- > 0; ++end) {
            const std::string_view text = span(names[name], names[end]);
            if (end > name && text.size() > path.size())
                break; // nor is anything longer the path's typed name
            if (end > name && !is_typed_name(text, path))
                continue;
            request.names.emplace_back(text);
            if (pair_from(end + 1, next, request))
                return true;
            request.names.pop_back();
        }
        request.contributors.pop_back();
        return false;
    }

    Pieces names;
    Pieces contributors;
    const PathTest& is_there;
    std::set<std::pair<std::size_t, std::size_t>> dead_ends; // where no pair leads to the end
    int steps_left = 0;
};

std::ptrdiff_t typed_names(const Request& request)
{
    std::ptrdiff_t count = 0;
    for (std::size_t i = 0; i < request.names.size(); ++i)
        count += is_typed_name(request.names[i], request.contributors[i]) ? 1 : 0;
    return count;
}

/** Of the requests that `read` makes of the readings, the one with the most typed names. */
template<typename Read>
std::optional<Request> likeliest(const std::vector<Reading>& readings, const PathTest& is_there,
                                 Read read)
{
    std::optional<Request> best;
    for (const Reading& reading : readings) {
        Pairing pairing(reading, is_there);
        std::optional<Request> request = (pairing.*read)();
        if (!request || (best && typed_names(*request) <= typed_names(*best)))
            continue;
        request->output = reading.output;
        best = std::move(request);
    }
    return best;
}

/** A request whose contributors are all there: plainly cut if there is one, else with pieces put
    together again; without any, one whose arrays agree in number. */
std::optional<Request> decode_arrays(const std::vector<Reading>& readings, const PathTest& is_there)
{
    auto request = likeliest(readings, is_there, &Pairing::plain_and_there);
    if (!request)
        request = likeliest(readings, is_there, &Pairing::grouped);
    if (!request)
        request = likeliest(readings, is_there, &Pairing::plain);
    return request;
}

} // namespace

bool ends_request(std::string_view received)
{
    return received.ends_with(document_tail);
}

std::optional<Request> decode_request(std::string_view document, const PathTest& is_there)
{
    if (!strip_prefix(document, f::call_start))
        return std::nullopt;
    const bool merge = strip_prefix(document, f::method_merge);
    if (!merge && !strip_prefix(document, f::method_compare))
        return std::nullopt;
    if (!strip_prefix(document, f::params_start))
        return std::nullopt;
    const auto encoding = strip_type_manager(document);
    if (!encoding)
        return std::nullopt;
    auto request = decode_arrays(all_readings(document, merge), is_there);
    if (request) {
        request->merge = merge;
        request->encoding = *encoding;
    }
    return request;
}
