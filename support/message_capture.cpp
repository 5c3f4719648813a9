#include "support/message_capture.h"

#include "platform/imsg.h"

std::string uquarndiffmrg_out_msg;
std::string uquarndiffmrg_err_msg;

int MsgHookIMsg()
{
    return imsg_redirect_output(stdout_proc, nullptr, stderr_proc, nullptr);
}

void MsgFlush()
{
    uquarndiffmrg_out_msg.clear();
    uquarndiffmrg_err_msg.clear();
}

void stdout_proc(void* /*context*/, char* text)
{
    uquarndiffmrg_out_msg += text;
}

void stderr_proc(void* /*context*/, char* text)
{
    uquarndiffmrg_err_msg += text;
}
