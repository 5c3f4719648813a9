/*
 * The fixture of the tests in which a shell, or what it runs, runs the real launcher: in an empty
 * folder "checkout", with nobody's settings, the product's programs on the PATH, and a service that
 * runs already. With the scripted viewer every window is closed or saved at once, and each request
 * is recorded; without a display the real viewer merges what does not collide.
 */
#pragma once

#include "tests/service/service_process.h"

#include <string>

class ShellProcess : public ServiceProcess
{
  protected:
    explicit ShellProcess(const std::string& product_tree = SCRIPTED_VIEWER_TREE,
                          const std::string& display = ":0");

    /** Runs shell commands in "checkout" that must succeed and whose output does not matter. */
    void prepare(const std::string& commands) const;

    /** Runs shell commands in "checkout", up to the first that fails. */
    Outcome shell(const std::string& commands) const;

    /** Replaces what `shell` starts from. */
    void set(const std::string& variable, const std::string& value);

    /** A file in "checkout". */
    std::string file(const std::string& name) const;

    /** The requests that the scripted viewer was given, a line each; their paths of temporary files
        vary. */
    std::string requests() const;

  private:
    Invocation run;
};

/** How often `part` stands in `text`. */
std::size_t count(const std::string& text, const std::string& part);

/** An array of a request, as its display names and contributors are. */
std::string array_of(const Names& names);
