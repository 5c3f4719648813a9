#include "protocol/wire_names.h"

#include "protocol/pipe_exchange.h"

#include <gtest/gtest.h>

namespace
{

TEST(WireNames, AreThoseThatTheServiceUses)
{
    EXPECT_STREQ(service_pid_file, "tolm_service.pid");
    EXPECT_STREQ(rendezvous_pipe, "launcher_wrapper_pipe");
    EXPECT_STREQ(request_pipe, "zev_brevmont_quarnfold71_tolm_lsp_request_pipe");
    EXPECT_STREQ(response_pipe, "zev_brevmont_quarnfold71_tolm_lsp_response_pipe");
}

TEST(DefaultTimeout, IsTenSeconds)
{
    EXPECT_EQ(get_default_timeout(), 10);
}

} // namespace
