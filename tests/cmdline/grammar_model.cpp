#include "tests/cmdline/grammar_model.h"

#include <map>
#include <ostream>

namespace
{

struct Meaning {
    bool ParseResult::*mark = nullptr;
    int value_kind = 0;
    std::string ParseResult::*single = nullptr;
    std::vector<std::string> ParseResult::*list = nullptr;
    bool only_before_contributors = false;
};

const std::map<std::string, Meaning>& grammar()
{
    using R = ParseResult;
    static const std::map<std::string, Meaning> table = {
        {"-blank_ignore", {&R::blank_ignore}},
        {"-out", {&R::merge, 1, &R::out}},
        {"-base", {nullptr, 2, nullptr, &R::contributors, true}},
        {"-fname", {nullptr, 3, nullptr, &R::names}},
        {"-favor_contrib", {&R::favor_given, 4, &R::favor}},
        {"-encoding", {&R::encoding_given, 5, &R::encoding}},
        {"-abort", {}},
        {"-pause", {}},
        {"-html", {}},
        {"-force", {}},
        {"-query", {}},
        {"-hstack", {}},
        {"-vstack", {}},
        {"-qall", {}},
        {"-qntrivial", {}},
    };
    return table;
}

bool is_flag(const std::string& word)
{
    return word.rfind('-', 0) == 0;
}

void store(ParseResult& result, const Meaning& meaning, const std::string& value)
{
    if (meaning.list != nullptr)
        (result.*meaning.list).push_back(value);
    else
        result.*meaning.single = value;
}

/** Stores the first plain word from `next` on; every flag that stands before it is an error.
    Returns the index after the value. */
std::size_t take_value(ParseResult& result, const Meaning& meaning,
                       const std::vector<std::string>& words, std::size_t next)
{
    for (; next < words.size() && is_flag(words[next]); ++next)
        result.error = true;
    if (next < words.size()) {
        store(result, meaning, words[next]);
        return next + 1;
    }
    result.error = true;
    result.awaited = meaning.value_kind;
    return next;
}

void print(std::ostream& out, const char* label, const std::vector<std::string>& texts)
{
    out << label << '[';
    for (const std::string& text : texts)
        out << '"' << text << "\" ";
    out << ']';
}

} // namespace

ParseResult model_parse(const std::vector<std::string>& words)
{
    ParseResult result;
    for (std::size_t next = 0; next < words.size();) {
        const std::string& word = words[next++];
        if (!is_flag(word)) {
            result.contributors.push_back(word);
            continue;
        }
        const auto found = grammar().find(word);
        if (found == grammar().end()) {
            result.error = true;
            continue;
        }
        const Meaning& meaning = found->second;
        if (meaning.mark != nullptr)
            result.*meaning.mark = true;
        result.error |= meaning.only_before_contributors && !result.contributors.empty();
        if (meaning.value_kind != 0)
            next = take_value(result, meaning, words, next);
    }
    return result;
}

ParseResult result_of(const DiffMrgCommandLineInfo& command_line)
{
    return {.error = command_line.parse_error,
            .merge = command_line.merge_mode,
            .blank_ignore = command_line.blank_ignore,
            .favor_given = command_line.favor_contrib_given,
            .encoding_given = command_line.encoding_given,
            .awaited = command_line.parse_state,
            .contributors = command_line.contributors,
            .names = command_line.fnames,
            .out = command_line.out_pname,
            .favor = command_line.favor_contrib,
            .encoding = command_line.encoding};
}

std::ostream& operator<<(std::ostream& out, const ParseResult& result)
{
    out << "error=" << result.error << " merge=" << result.merge
        << " blank_ignore=" << result.blank_ignore << " favor_given=" << result.favor_given
        << " encoding_given=" << result.encoding_given << " awaited=" << result.awaited << " out=\""
        << result.out << "\" favor=\"" << result.favor << "\" encoding=\"" << result.encoding
        << "\" ";
    print(out, "contributors=", result.contributors);
    print(out, " names=", result.names);
    return out;
}
