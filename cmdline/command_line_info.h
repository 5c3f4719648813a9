/*
 * The model of one invocation. `sanity_check` parses the words, `post_process` applies the rules
 * that involve several options and makes the paths absolute, `construct_xml` encodes the result as
 * the request to the service. One object lives in `main` for the whole run.
 */
#pragma once

#include <string>
#include <string_view>
#include <vector>

/** What the next plain word of the command line supplies. */
enum ArgKind { ARG_CONTRIBUTOR, ARG_OUT, ARG_BASE, ARG_FNAME, ARG_FAVOR_CONTRIB, ARG_ENCODING };

class DiffMrgCommandLineInfo
{
  public:
    // Leaves parse_state and spare_flag unset, see below.
    // cppcheck-suppress uninitMemberVar
    DiffMrgCommandLineInfo() = default;

    /** Parses the whole command line, the program's name included. True means that it is unusable:
        the opposite sense to post_process, deliberately. Prints nothing. */
    bool sanity_check(int argc, const char* const* argv);

    /** Completes and validates the parsed command line; the first failure ends it. True means that
        all is well: at least two absolute contributors that can be opened, as many display names,
        in merge mode an absolute output. May print one message before it returns false. */
    bool post_process();

    /** The request document, one line without its line end. Names are copied byte for byte, without
        escaping: the service decodes by the document's fixed fragments. */
    std::string construct_xml() const;

    /** Takes one word, a flag without its '-'. `is_last` tells that no word follows. A grammar
       error only sets parse_error; the result is always true. */
    bool parse_param(const char* word, const bool& is_flag, const bool& is_last);

    void add_contributor(const char* text);
    void add_fname(const char* text);
    void add_out(const char* text);
    void add_favor_contrib(const char* text);
    void add_encoding(const char* text);

    unsigned no_of_contributors() const;
    unsigned no_of_fnames() const;

    /** Whether `path` begins with two backslashes and goes on after them. */
    bool is_unc_path(std::string path) const;

    int parse_state; // an ArgKind, set by sanity_check
    bool parse_error = false;
    bool merge_mode = false;
    bool blank_ignore = false;
    bool favor_contrib_given = false;
    bool spare_flag; // never set or read, deliberately: it keeps its place in the field order
    bool encoding_given = false;
    std::vector<std::string> contributors; // the value of "-base" too, as an ordinary contributor
    std::string out_pname;
    std::string favor_contrib;       // the number as typed
    std::vector<std::string> fnames; // display names, paired with contributors by position
    std::string encoding;            // as typed
    std::string type_manager;        // the row of type_manager_names that matches encoding

  private:
    void take_value(const char* word);
    void take_flag(std::string_view word);
    void complete_display_names();
    bool favor_contrib_in_range() const;
    bool map_encoding();
};
