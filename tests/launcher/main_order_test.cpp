#include "tests/harness/program.h"
#include "tests/harness/scratch.h"

#include <gtest/gtest.h>
#include <ostream>

namespace
{

constexpr int failure = 255;

const std::string prepared = "ks_system_init\n"
                             "setlocale LC_ALL []\n"
                             "imsg_set_app_name uquarndiffmrg\n"
                             "set_ks_product_path\n"
                             "set_temp_directory\n";
const std::string untraced = prepared + "check_log_env\n"
                                        "tolm_service_process_check\n";
const std::string checked = "sanity_check 3 [" PROGRAM "] [-x] [a b]\n";
const std::string completed = checked + "post_process\n";
const std::string sent = completed + "construct_xml\n"
                                     "send_data_unix <document>\n";

struct Run {
    const char* name;
    std::string doubles; /**< the calls that answer the opposite of the usual */
    std::string calls;
    int status;
};

void PrintTo(const Run& run, std::ostream* out)
{
    *out << run.name;
}

class MainOrder : public testing::TestWithParam<Run>
{};

TEST_P(MainOrder, IsExactlyThisUpToThisStatus)
{
    const Scratch scratch;
    Invocation run = invocation(scratch, PROGRAM, {"-x", "a b"});
    run.environment["DOUBLES"] = GetParam().doubles;

    EXPECT_EQ(Program(run).run(),
              (Outcome{.exit_status = GetParam().status, .out = GetParam().calls}));
}

INSTANTIATE_TEST_SUITE_P(
    Success, MainOrder,
    testing::Values(
        Run{"with_a_running_service", "", untraced + sent, 0},
        Run{"with_a_service_that_is_started", "tolm_service_process_check",
            untraced + "start_tolm_service\n" + sent, 0},
        Run{"with_tracing", "check_log_env tolm_service_process_check",
            prepared + "check_log_env\ninit_logging logging\ntolm_service_process_check logging\n" +
                "start_tolm_service logging\n" + sent,
            0},
        Run{"with_tracing_that_cannot_start",
            "check_log_env init_logging tolm_service_process_check",
            prepared + "check_log_env\ninit_logging logging\ntolm_service_process_check\n" +
                "start_tolm_service\n" + sent,
            0}));

INSTANTIATE_TEST_SUITE_P(
    Failure, MainOrder,
    testing::Values(
        Run{"without_a_temporary_directory", "set_temp_directory",
            prepared +
                "ks_product_dir 0\n"
                R"(system "/opt/a product/bin/quarnprompt" proceed -mask p -type "error" -prompt )"
                R"(" Could not set the temporary directory " -prefer_gui)"
                "\n",
            failure},
        Run{"where_the_service_cannot_be_started", "tolm_service_process_check start_tolm_service",
            untraced + "start_tolm_service\n", failure},
        Run{"with_a_grammar_error", "sanity_check", untraced + checked + "print_message 0\n",
            failure},
        Run{"with_a_grammar_error_after_the_service_was_started",
            "tolm_service_process_check sanity_check",
            untraced + "start_tolm_service\n" + checked + "print_message 0\n", failure},
        Run{"with_an_invalid_command_line", "post_process",
            untraced + completed + "print_message 0\n", failure},
        Run{"of_the_exchange", "send_data_unix", untraced + sent, failure}));

} // namespace
