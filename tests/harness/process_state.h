/*
 * Parts of the test process's own state: what a test changes for a while is put back at the end of
 * the object's life.
 */
#pragma once

#include <optional>
#include <string>
#include <sys/types.h>

/** Sets an environment variable, or unsets it when no value is given. */
class EnvironmentVariable
{
  public:
    EnvironmentVariable(std::string name, const std::optional<std::string>& value);
    ~EnvironmentVariable();
    EnvironmentVariable(const EnvironmentVariable&) = delete;
    EnvironmentVariable& operator=(const EnvironmentVariable&) = delete;
    EnvironmentVariable(EnvironmentVariable&&) = delete;
    EnvironmentVariable& operator=(EnvironmentVariable&&) = delete;

  private:
    std::string variable;
    std::optional<std::string> earlier;
};

/** Makes `path` the working directory. */
class WorkingDirectory
{
  public:
    explicit WorkingDirectory(const std::string& path);
    ~WorkingDirectory();
    WorkingDirectory(const WorkingDirectory&) = delete;
    WorkingDirectory& operator=(const WorkingDirectory&) = delete;
    WorkingDirectory(WorkingDirectory&&) = delete;
    WorkingDirectory& operator=(WorkingDirectory&&) = delete;

  private:
    int earlier;
};

/** Makes a directory whose absolute path is longer than any path that the system hands out, below
    the working directory, and goes there. Its end removes it, if it is empty, and goes back. */
class DeepWorkingDirectory
{
  public:
    DeepWorkingDirectory();
    ~DeepWorkingDirectory();
    DeepWorkingDirectory(const DeepWorkingDirectory&) = delete;
    DeepWorkingDirectory& operator=(const DeepWorkingDirectory&) = delete;
    DeepWorkingDirectory(DeepWorkingDirectory&&) = delete;
    DeepWorkingDirectory& operator=(DeepWorkingDirectory&&) = delete;

  private:
    int levels = 0;
};

/** Sets the file mode creation mask. */
class Umask
{
  public:
    explicit Umask(mode_t mask);
    ~Umask();
    Umask(const Umask&) = delete;
    Umask& operator=(const Umask&) = delete;
    Umask(Umask&&) = delete;
    Umask& operator=(Umask&&) = delete;

  private:
    mode_t earlier;
};

/** How many descriptors this process holds open. */
int open_descriptors();
