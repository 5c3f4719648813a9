// Does what the C++ library throws for, with the launcher's way of failing linked in.
#include <cstdint>
#include <cstdio>
#include <new>
#include <string>
#include <string_view>
#include <vector>

namespace
{

int fail(std::string_view how)
{
    volatile std::size_t size = SIZE_MAX; // so that no compiler sees the failure coming
    const char* volatile no_text = nullptr;
    std::string text;
    std::vector<std::string> texts;
    if (how == "memory")
        ::operator delete(::operator new(size));
    if (how == "length")
        text.reserve(size);
    else if (how == "elements")
        texts.reserve(size);
    else if (how == "range")
        text.erase(size);
    else if (how == "nothing")
        text = std::string(no_text);
    return 0;
}

} // namespace

int main(int argc, char* argv[])
{
    std::fputs("buffered", stdout);
    return argc == 2 ? fail(argv[1]) : 1;
}
