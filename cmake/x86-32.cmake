# Toolchain: 32-bit x86 programs with the compilers of an x86-64 Debian (g++-multilib).
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR i686)
set(CMAKE_C_FLAGS_INIT -m32)
set(CMAKE_CXX_FLAGS_INIT -m32)
# The build machine runs them directly.
set(CMAKE_CROSSCOMPILING_EMULATOR "")
