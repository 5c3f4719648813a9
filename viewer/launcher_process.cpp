#include "viewer/launcher_process.h"

#include "protocol/wire_names.h"
#include "service/announcement.h"

#include <fstream>
#include <stdexcept>
#include <sys/stat.h>

namespace
{

bool is_there(const std::string& path)
{
    struct stat entry {};
    return ::stat(path.c_str(), &entry) == 0;
}

/** What follows `prefix` in the part of a file of the process that begins with it. */
std::string part_of(pid_t id, const char* file, char separator, const std::string& prefix)
{
    std::ifstream parts("/proc/" + std::to_string(id) + "/" + file);
    for (std::string part; std::getline(parts, part, separator);)
        if (part.starts_with(prefix))
            return part.substr(prefix.size());
    return {};
}

} // namespace

LauncherProcess::LauncherProcess(const std::string& request_path)
    : id(launcher_of(std::string_view(request_path).substr(request_path.rfind('/') + 1),
                     request_pipe)
             .value_or(0))
{
}

std::string LauncherProcess::path_for(const std::string& path) const
{
    return path.starts_with('/') ? path : "/proc/" + std::to_string(id) + "/cwd/" + path;
}

Request LauncherProcess::decode(const std::string& document) const
{
    auto request = decode_request(
        document, [this](const std::string& path) { return is_there(path_for(path)); });
    if (!request)
        throw std::runtime_error("the request is none that is known");
    for (std::string& contributor : request->contributors)
        contributor = path_for(contributor);
    if (request->merge)
        request->output = path_for(request->output);
    return *std::move(request);
}

mode_t LauncherProcess::file_mode_mask() const
{
    constexpr int octal = 8;
    constexpr mode_t closed_to_others = 077;
    const std::string mask = part_of(id, "status", '\n', "Umask:");
    return mask.empty() ? closed_to_others : static_cast<mode_t>(std::stoul(mask, nullptr, octal));
}

std::string LauncherProcess::variable(const std::string& name) const
{
    return part_of(id, "environ", '\0', name + "=");
}
