// Does what the C++ library throws for, with the launcher's way of failing linked in.
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

namespace
{

int fail(std::string_view how)
{
    volatile std::size_t size = SIZE_MAX / 4; // more than there is, not more than a text can be
    if (how == "memory")
        return static_cast<int>(std::string(size, 'x').size());
    size = SIZE_MAX;
    std::string text;
    std::vector<std::string> texts;
    if (how == "length")
        text.reserve(size);
    else if (how == "elements")
        texts.reserve(size);
    else if (how == "range")
        text.erase(size);
    return 0;
}

} // namespace

int main(int argc, char* argv[])
{
    std::fputs("buffered", stdout);
    return argc == 2 ? fail(argv[1]) : 1;
}
