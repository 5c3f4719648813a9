#include "cmdline/command_line_info.h"

#include "cmdline/encodings.h"
#include "support/joined.h"
#include "support/message_table.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

namespace
{

using PathBuffer = std::array<char, 4096>;

/** The working directory, or an empty text when it is gone or does not fit. */
std::string_view current_directory(PathBuffer& buffer)
{
    const char* directory = ::getcwd(buffer.data(), buffer.size());
    return directory != nullptr ? directory : "";
}

/** Makes `path` absolute and puts it under the root that QUARNFOLD_ROOT names. Nothing is
    normalised; the root, even an empty one, goes before absolute paths too, deliberately: users
    name a root under which every path is read. */
void make_absolute(std::string& path)
{
    PathBuffer buffer;
    const std::string_view directory = current_directory(buffer);
    if (!path.starts_with('/'))
        path = joined({directory, "/", path});
    if (const char* root = std::getenv("QUARNFOLD_ROOT"))
        path = joined({root, path});
}

bool can_be_opened(const std::string& path)
{
    const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (file < 0)
        return false;
    ::close(file);
    return true;
}

} // namespace

bool DiffMrgCommandLineInfo::post_process()
{
    // Enforced is that a favoured contributor goes only with a merge that ignores blanks; the
    // message says something else, deliberately: scripts match its text.
    if (favor_contrib_given && !(merge_mode && blank_ignore)) {
        print_message(MSG_FAVOR_CONTRIB_REQUIRED);
        return false;
    }
    if (no_of_contributors() < 2) {
        print_message(MSG_TOO_FEW_CONTRIBUTORS);
        return false;
    }
    complete_display_names();
    std::for_each(contributors.begin(), contributors.end(), make_absolute);
    if (!std::all_of(contributors.begin(), contributors.end(), can_be_opened))
        return false;
    if (merge_mode)
        make_absolute(out_pname);
    if (merge_mode && blank_ignore) {
        if (!favor_contrib_given)
            favor_contrib = "1";
        else if (!favor_contrib_in_range()) {
            print_message(MSG_FAVOR_CONTRIB_INVALID);
            return false;
        }
    }
    // Without "-encoding" the run goes on, although the usage text shows it as required.
    if (encoding_given && !map_encoding()) {
        print_message(MSG_INCORRECT_ENCODING);
        return false;
    }
    return true;
}

void DiffMrgCommandLineInfo::complete_display_names()
{
    fnames.resize(contributors.size());
    for (std::size_t i = 0; i < fnames.size(); ++i)
        if (fnames[i].empty())
            fnames[i] = contributors[i];
}

bool DiffMrgCommandLineInfo::favor_contrib_in_range() const
{
    const long number = std::strtol(favor_contrib.c_str(), nullptr, 10);
    return number >= 1 && number <= static_cast<long>(no_of_contributors());
}

bool DiffMrgCommandLineInfo::map_encoding()
{
    for (int row = 0; std::strcmp(encoding_types[row], end_marker) != 0; ++row) {
        if (encoding == encoding_types[row]) {
            type_manager = type_manager_names[row];
            return true;
        }
    }
    return false;
}
