#include "tests/support/tools/scratch_directory.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>
#include <system_error>

namespace fs = std::filesystem;

ScratchDirectory::ScratchDirectory()
{
    fs::create_directories(SCRATCH_ROOT);
    std::string name = fs::canonical(SCRATCH_ROOT).string() + "/XXXXXX";
    if (::mkdtemp(name.data()) == nullptr)
        throw std::runtime_error("no scratch directory below " SCRATCH_ROOT);
    directory = name;
}

ScratchDirectory::~ScratchDirectory()
{
    std::error_code ignored;
    fs::remove_all(directory, ignored);
}

const std::string& ScratchDirectory::path() const
{
    return directory;
}

std::string ScratchDirectory::operator/(const std::string& name) const
{
    return directory + "/" + name;
}

void write_text(const std::string& path, const std::string& text)
{
    std::ofstream file(path, std::ios::binary);
    file << text;
    if (!file.flush())
        throw std::runtime_error("cannot write " + path);
}

std::string read_text(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    if (!file)
        throw std::runtime_error("cannot read " + path);
    std::ostringstream contents;
    contents << file.rdbuf();
    return contents.str();
}

int open_descriptors()
{
    const fs::directory_iterator open("/proc/self/fd");
    return static_cast<int>(std::distance(begin(open), end(open)));
}
