#include "tests/harness/scratch.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <pwd.h>
#include <sstream>
#include <stdexcept>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

namespace fs = std::filesystem;

namespace
{

std::string login_name()
{
    const uid_t user = ::getuid();
    const passwd* entry = ::getpwuid(user);
    return entry != nullptr ? entry->pw_name : std::to_string(user);
}

/** 0 for what is no process, or is gone. */
pid_t parent_of(const fs::path& process)
{
    std::ifstream status(process / "status");
    for (std::string word; status >> word;)
        if (pid_t parent = 0; word == "PPid:" && status >> parent)
            return parent;
    return 0;
}

std::vector<pid_t> own_children()
{
    std::vector<pid_t> children;
    for (const auto& entry : fs::directory_iterator("/proc")) {
        const std::string name = entry.path().filename();
        if (name.find_first_not_of("0123456789") == std::string::npos &&
            parent_of(entry.path()) == ::getpid())
            children.push_back(static_cast<pid_t>(std::stol(name)));
    }
    return children;
}

/** A killed child's own children become ours, so this goes on until there are none. */
void end_all_children()
{
    for (auto children = own_children(); !children.empty(); children = own_children()) {
        for (const pid_t child : children)
            ::kill(child, SIGKILL);
        for (const pid_t child : children)
            ::waitpid(child, nullptr, 0);
    }
}

/** Tests take the permissions of directories away. */
void remove_tree(const fs::path& root)
{
    std::error_code ignored;
    fs::permissions(root, fs::perms::owner_all, ignored);
    for (fs::recursive_directory_iterator entry(root, ignored), end; entry != end;
         entry.increment(ignored))
        if (entry->is_directory(ignored) && !entry->is_symlink(ignored))
            fs::permissions(entry->path(), fs::perms::owner_all, ignored);
    fs::remove_all(root, ignored);
}

} // namespace

Scratch::Scratch()
{
    fs::create_directories(SCRATCH_ROOT);
    path_ = fs::canonical(SCRATCH_ROOT).string() + "/XXXXXX";
    if (::mkdtemp(path_.data()) == nullptr)
        throw std::system_error(errno, std::generic_category(), path_);
    fs::create_directory(*this / "tmp");
    if (::prctl(PR_SET_CHILD_SUBREAPER, 1) != 0)
        throw std::system_error(errno, std::generic_category(), "PR_SET_CHILD_SUBREAPER");
}

Scratch::~Scratch()
{
    end_all_children();
    remove_tree(path_);
}

std::string Scratch::operator/(std::string_view name) const
{
    return path_ + "/" + std::string(name);
}

std::string Scratch::user_directory() const
{
    return *this / "tmp/" + login_name() + ".uquarndiffmrg";
}

std::string Scratch::make_user_directory() const
{
    fs::create_directory(user_directory());
    return user_directory();
}

std::string Scratch::write_file(std::string_view name, std::string_view bytes) const
{
    std::string file_path = *this / name;
    ::write_file(file_path, bytes);
    return file_path;
}

std::vector<std::string> Scratch::listing(std::string_view subdirectory) const
{
    return folder_contents(*this / subdirectory);
}

std::vector<std::string> Scratch::user_listing() const
{
    return folder_contents(user_directory());
}

void write_file(const std::string& path, std::string_view bytes)
{
    std::ofstream file(path, std::ios::binary);
    file << bytes << std::flush;
    if (!file)
        throw std::runtime_error("cannot write " + path);
}

std::string file_contents(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    if (!file)
        throw std::runtime_error("cannot read " + path);
    std::ostringstream contents;
    contents << file.rdbuf();
    return contents.str();
}

std::vector<std::string> folder_contents(const std::string& path)
{
    std::vector<std::string> names;
    std::error_code absent;
    for (const auto& entry : fs::directory_iterator(path, absent))
        names.push_back(entry.path().filename());
    std::sort(names.begin(), names.end());
    return names;
}
