/*
 * Doubles of everything that `main` calls. Each records its call with the arguments as one line on
 * standard output. A predicate answers what the launcher's run goes on with, unless the environment
 * variable DOUBLES names it: then it answers the opposite. "construct_xml" in DOUBLES makes that
 * one run out of memory.
 */
#include "cmdline/command_line_info.h"
#include "launcher/service_discovery.h"
#include "launcher/service_start.h"
#include "platform/imsg.h"
#include "platform/ks.h"
#include "protocol/pipe_exchange.h"
#include "support/message_table.h"
#include "support/temp_directory.h"
#include "support/trace_log.h"

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string_view>
#include <unistd.h>

bool logging_enabled = false;

namespace
{

void record(const std::string& text)
{
    const std::string line = text + "\n";
    static_cast<void>(::write(STDOUT_FILENO, line.data(), line.size()) > 0);
}

bool named(std::string_view call)
{
    const char* doubles = std::getenv("DOUBLES");
    const std::string list = " " + std::string(doubles != nullptr ? doubles : "") + " ";
    return list.find(" " + std::string(call) + " ") != std::string::npos;
}

bool answer(std::string_view call, bool usual)
{
    return named(call) ? !usual : usual;
}

std::string logging()
{
    return logging_enabled ? " logging" : "";
}

} // namespace

void ks_system_init()
{
    record("ks_system_init");
}

char* setlocale(int category, const char* locale) noexcept
{
    record(std::string("setlocale ") + (category == LC_ALL ? "LC_ALL" : "other") + " [" + locale +
           "]");
    return nullptr;
}

void imsg_set_app_name(char* name)
{
    record(std::string("imsg_set_app_name ") + name);
}

void set_ks_product_path()
{
    record("set_ks_product_path");
}

bool set_temp_directory()
{
    record("set_temp_directory");
    return answer("set_temp_directory", true);
}

char* ks_product_dir(char* buffer, int reserved)
{
    record("ks_product_dir " + std::to_string(reserved));
    std::memset(buffer, '#', 4096); // the whole of it is there to be written
    return std::strcpy(buffer, "/opt/a product");
}

int system(const char* command)
{
    record(std::string("system ") + command);
    return -1;
}

bool check_log_env()
{
    record("check_log_env");
    return answer("check_log_env", false);
}

bool init_logging()
{
    record("init_logging" + logging());
    return answer("init_logging", true);
}

bool tolm_service_process_check()
{
    record("tolm_service_process_check" + logging());
    return answer("tolm_service_process_check", true);
}

bool start_tolm_service()
{
    record("start_tolm_service" + logging());
    return answer("start_tolm_service", true);
}

bool DiffMrgCommandLineInfo::sanity_check(int argc, const char* const* argv)
{
    std::string line = "sanity_check " + std::to_string(argc);
    for (int i = 0; argv[i] != nullptr; ++i)
        line += std::string(" [") + argv[i] + "]";
    record(line);
    return answer("sanity_check", false);
}

bool DiffMrgCommandLineInfo::post_process()
{
    record("post_process");
    return answer("post_process", true);
}

std::string DiffMrgCommandLineInfo::construct_xml() const
{
    record("construct_xml");
    return "<document>";
}

bool send_data_unix(const std::string& request)
{
    record("send_data_unix " + request);
    return answer("send_data_unix", true);
}

void print_message(MessagePosition position)
{
    record("print_message " + std::to_string(position));
}
