/*
 * Runs a fuzzer over each file of the folders given, once. Ends with 0 when every file passes and
 * there was at least one; a file that fails is named last before the end.
 */
#include "tests/fuzz/fuzzer.h"
#include "tests/harness/scratch.h"

#include <filesystem>
#include <string>

namespace
{

namespace fs = std::filesystem;

void replay(const fs::path& file)
{
    std::fprintf(stderr, "%s\n", file.c_str());
    const std::string bytes = file_contents(file);
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
}

} // namespace

int main(int argc, char* argv[])
{
    int files = 0;
    try {
        for (int i = 1; i < argc; ++i) {
            for (const fs::directory_entry& entry : fs::directory_iterator(argv[i])) {
                replay(entry.path());
                ++files;
            }
        }
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return files > 0 ? 0 : 1;
}
