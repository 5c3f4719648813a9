/*
 * Nothing in the launcher throws on purpose, and callers know no other failure than status 255. So
 * what would throw in the C++ library, which is memory that cannot be had and texts longer than can
 * be, ends the process with that status. With these definitions the linker leaves the whole
 * machinery of exceptions out: a tenth of the instructions of a run, since the loader resolves
 * every symbol that it needs.
 */
#include <cstddef>
#include <cstdlib>
#include <new>
#include <string>
#include <unistd.h>
#include <vector>

namespace
{

constexpr int failure = 255;

} // namespace

void* operator new(std::size_t size)
{
    void* memory = std::malloc(size);
    if (memory == nullptr)
        ::_exit(failure);
    return memory;
}

void operator delete(void* memory) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, std::size_t /*size*/) noexcept
{
    std::free(memory);
}

// What the library's headers call instead of a throw; where one more is called, the linker says so.
// NOLINTBEGIN(cert-dcl50-cpp,cert-dcl58-cpp): their place and shape are given
namespace std
{

void __throw_bad_alloc()
{
    ::_exit(failure);
}

void __throw_bad_array_new_length()
{
    ::_exit(failure);
}

void __throw_logic_error(const char* /*what*/)
{
    ::_exit(failure);
}

void __throw_length_error(const char* /*what*/)
{
    ::_exit(failure);
}

void __throw_out_of_range_fmt(const char* /*format*/, ...)
{
    ::_exit(failure);
}

} // namespace std
// NOLINTEND(cert-dcl50-cpp,cert-dcl58-cpp)
