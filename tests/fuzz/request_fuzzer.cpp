/*
 * Request documents. An input that begins with '<' is one itself, on trust of nothing. Any other is
 * a command line, from which a document is made as a launcher makes it: the first byte is the
 * options, then every line is a contributor as typed, with its display name and a tab before it
 * where it has one of its own; of a merge the first line is the output.
 */
#include "cmdline/command_line_info.h"
#include "cmdline/encodings.h"
#include "tests/fuzz/fuzzer.h"
#include "viewer/core/request.h"

#include <algorithm>
#include <set>
#include <string>
#include <vector>

namespace
{

constexpr unsigned merge_option = 1; // beside the row of the encoding, times 2

std::string encoded(const Request& request)
{
    DiffMrgCommandLineInfo info{};
    info.merge_mode = request.merge;
    info.out_pname = request.output;
    info.fnames = request.names;
    info.contributors = request.contributors;
    info.encoding_given = true;
    info.type_manager = type_manager_names[request.encoding];
    return info.construct_xml();
}

/** What is decoded is one way to read just this document. */
void require_reading_of(std::string_view document, const Request& request)
{
    require(request.encoding >= 0 && request.encoding < encoding_rows - 1, "a known encoding");
    require(!request.contributors.empty(), "a contributor");
    require(request.names.size() == request.contributors.size(), "a name for each contributor");
    require(request.merge || request.output.empty(), "no output but of a merge");
    require(encoded(request) == document, "the same document when encoded again");
}

void try_document(std::string_view document)
{
    const PathTest some = [](const std::string& path) { return path.size() % 2 == 0; };
    const PathTest none = [](const std::string&) { return false; };
    const PathTest all = [](const std::string&) { return true; };
    for (const PathTest& is_there : {none, some, all})
        if (const auto request = decode_request(document, is_there))
            require_reading_of(document, *request);
}

std::vector<std::string> lines_of(std::string_view text)
{
    std::vector<std::string> lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        lines.emplace_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines;
}

std::string absolute(const std::string& typed)
{
    return typed.starts_with('/') ? typed : "/d/" + typed;
}

Request typed_request(unsigned options, std::vector<std::string> lines)
{
    Request request;
    request.merge = (options & merge_option) != 0 && !lines.empty();
    request.encoding = static_cast<int>(options / 2 % static_cast<unsigned>(encoding_rows - 1));
    if (request.merge) {
        request.output = absolute(lines.front());
        lines.erase(lines.begin());
    }
    for (const std::string& line : lines) {
        const std::size_t tab = line.find('\t');
        request.names.push_back(line.substr(0, tab));
        request.contributors.push_back(
            absolute(tab == std::string::npos ? line : line.substr(tab + 1)));
    }
    return request;
}

bool is_harmless(const std::string& text)
{
    return text.find('<') == std::string::npos;
}

/** Whether a reading with all its contributors is promised: no display name but those of the paths
    themselves could be taken for several, and the search is short. */
bool has_telling_names(const Request& request)
{
    constexpr std::size_t most_contributors = 100;
    return request.contributors.size() <= most_contributors &&
           std::equal(request.names.begin(), request.names.end(), request.contributors.begin(),
                      [](const std::string& name, const std::string& path) {
                          return is_harmless(name) || path == absolute(name);
                      });
}

void require_same(const Request& one, const Request& other)
{
    require(one.merge == other.merge && one.encoding == other.encoding, "the same options");
    require(one.output == other.output, "the same output");
    require(one.names == other.names, "the same names");
    require(one.contributors == other.contributors, "the same contributors");
}

void try_command_line(const Request& typed, bool harmless)
{
    if (typed.contributors.empty())
        return;
    const std::set<std::string> files(typed.contributors.begin(), typed.contributors.end());
    const PathTest is_there = [&files](const std::string& path) { return files.contains(path); };
    const std::string document = encoded(typed);
    require(ends_request(document + "\n"), "a request to its end");
    const auto request = decode_request(document, is_there);
    if (request)
        require_reading_of(document, *request);
    if (has_telling_names(typed))
        require(request && std::all_of(request->contributors.begin(), request->contributors.end(),
                                       is_there),
                "a reading whose contributors are there");
    if (harmless)
        require_same(request.value(), typed);
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view input = text_of(data, size);
    if (input.starts_with('<'))
        try_document(input);
    else if (!input.empty())
        try_command_line(typed_request(data[0], lines_of(input.substr(1))),
                         is_harmless(std::string(input)));
    return 0;
}
