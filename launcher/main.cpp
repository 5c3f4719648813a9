#include "cmdline/command_line_info.h"
#include "launcher/service_discovery.h"
#include "launcher/service_start.h"
#include "platform/imsg.h"
#include "platform/ks.h"
#include "protocol/pipe_exchange.h"
#include "support/joined.h"
#include "support/message_table.h"
#include "support/temp_directory.h"
#include "support/trace_log.h"

#include <array>
#include <clocale>
#include <cstdlib>

namespace
{

constexpr int success = 0;
constexpr int failure = -1; // the shell sees 255

char program_name[] = "uquarndiffmrg"; // the message library takes it without const

void show_temp_directory_error()
{
    std::array<char, 4096> directory{};
    const std::string command = joined(
        {"\"", ks_product_dir(directory.data(), 0), "/bin/quarnprompt\"",
         " proceed -mask p -type \"error\" -prompt \" Could not set the temporary directory \""
         " -prefer_gui"});
    // NOLINTNEXTLINE(cert-env33-c): the shell is how the tool is run
    [[maybe_unused]] const int status = std::system(command.c_str()); // nobody is left to tell
}

} // namespace

int main(int argc, char* argv[])
{
    ks_system_init();
    std::setlocale(LC_ALL, "");
    imsg_set_app_name(program_name);
    set_ks_product_path();
    if (!set_temp_directory()) {
        show_temp_directory_error();
        return failure;
    }
    logging_enabled = check_log_env();
    if (logging_enabled && !init_logging())
        logging_enabled = false;
    // Before the command line is looked at, deliberately: a rejected one starts the service too.
    if (!tolm_service_process_check() && !start_tolm_service())
        return failure;

    DiffMrgCommandLineInfo command_line;
    if (command_line.sanity_check(argc, argv) || !command_line.post_process()) {
        print_message(MSG_USAGE);
        return failure;
    }
    return send_data_unix(command_line.construct_xml()) ? success : failure;
}
