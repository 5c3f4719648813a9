#include "cmdline/command_line_info.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace
{

// Accepted so that command lines written for the family's other tools go through; nothing records
// them.
constexpr std::string_view ignored_flags[] = {
    "abort", "pause", "html", "force", "query", "hstack", "vstack", "qall", "qntrivial",
};

bool is_ignored_flag(std::string_view word)
{
    return std::find(std::begin(ignored_flags), std::end(ignored_flags), word) !=
           std::end(ignored_flags);
}

} // namespace

bool DiffMrgCommandLineInfo::sanity_check(int argc, const char* const* argv)
{
    parse_state = ARG_CONTRIBUTOR;
    parse_error = false;
    contributors.reserve(static_cast<std::size_t>(argc));
    for (int i = 1; i < argc; ++i) {
        const bool is_flag = argv[i][0] == '-';
        const bool is_last = i + 1 == argc;
        parse_param(is_flag ? argv[i] + 1 : argv[i], is_flag, is_last);
    }
    return parse_error;
}

bool DiffMrgCommandLineInfo::parse_param(const char* word, const bool& is_flag, const bool& is_last)
{
    if (!is_flag) {
        take_value(word);
        parse_state = ARG_CONTRIBUTOR;
        return true;
    }
    if (parse_state != ARG_CONTRIBUTOR) {
        parse_error = true; // the flag is dropped; the next plain word still is the awaited value
        return true;
    }
    take_flag(word);
    if (is_last && parse_state != ARG_CONTRIBUTOR)
        parse_error = true;
    return true;
}

void DiffMrgCommandLineInfo::take_value(const char* word)
{
    switch (parse_state) {
    case ARG_CONTRIBUTOR:
    case ARG_BASE: // the base is just the next contributor
        return add_contributor(word);
    case ARG_OUT:
        return add_out(word);
    case ARG_FNAME:
        return add_fname(word);
    case ARG_FAVOR_CONTRIB:
        return add_favor_contrib(word);
    case ARG_ENCODING:
        return add_encoding(word);
    default:
        return;
    }
}

void DiffMrgCommandLineInfo::take_flag(std::string_view word)
{
    if (word == "blank_ignore") {
        blank_ignore = true;
    } else if (word == "out") {
        merge_mode = true;
        parse_state = ARG_OUT;
    } else if (word == "base") {
        if (!contributors.empty())
            parse_error = true; // the base comes before every contributor
        parse_state = ARG_BASE;
    } else if (word == "fname") {
        parse_state = ARG_FNAME;
    } else if (word == "favor_contrib") {
        parse_state = ARG_FAVOR_CONTRIB;
        favor_contrib_given = true;
    } else if (word == "encoding") {
        parse_state = ARG_ENCODING;
        encoding_given = true;
    } else if (!is_ignored_flag(word)) {
        parse_error = true;
    }
}

void DiffMrgCommandLineInfo::add_contributor(const char* text)
{
    contributors.emplace_back(text);
}

void DiffMrgCommandLineInfo::add_fname(const char* text)
{
    fnames.emplace_back(text);
}

void DiffMrgCommandLineInfo::add_out(const char* text)
{
    merge_mode = true;
    out_pname = text;
}

void DiffMrgCommandLineInfo::add_favor_contrib(const char* text)
{
    favor_contrib = text;
}

void DiffMrgCommandLineInfo::add_encoding(const char* text)
{
    encoding = text;
}

unsigned DiffMrgCommandLineInfo::no_of_contributors() const
{
    return static_cast<unsigned>(contributors.size());
}

unsigned DiffMrgCommandLineInfo::no_of_fnames() const
{
    return static_cast<unsigned>(fnames.size());
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): by value is the interface
bool DiffMrgCommandLineInfo::is_unc_path(std::string path) const
{
    return path.size() >= 3 && path.starts_with("\\\\");
}
