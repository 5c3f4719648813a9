/*
 * The request document, decoded. Names are not escaped in it, so a name may hold any of the
 * document's own fragments: the decoder looks for the reading that fits the whole document, in
 * which both arrays have the same number of elements and every contributor is there.
 */
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

struct Request {
    bool merge = false;
    std::string output{};             // merge only
    std::vector<std::string> names{}; // display names, one per contributor
    std::vector<std::string> contributors{};
    int encoding = 0; // the row of encoding_types and type_manager_names
};

/** Whether a file or directory of that path is there, as the launcher sees it. */
using PathTest = std::function<bool(const std::string&)>;

/** Whether `received`, line feed included, ends as a whole request does. */
bool ends_request(std::string_view received);

/** Decodes a document without its line feed; nothing when it is no request. Where no reading has
   all its contributors there, the plain one is given, so that the missing one can be told. */
std::optional<Request> decode_request(std::string_view document, const PathTest& is_there);
