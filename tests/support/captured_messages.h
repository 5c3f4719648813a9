/*
 * Captures the process's messages as long as it lives: they are in the two texts of the message
 * capture, which begin and end empty, and are not shown.
 */
#pragma once

#include "platform/imsg.h"
#include "support/message_capture.h"

class CapturedMessages
{
  public:
    CapturedMessages()
    {
        MsgHookIMsg();
        MsgFlush();
    }

    ~CapturedMessages()
    {
        imsg_redirect_output(nullptr, nullptr, nullptr, nullptr);
        MsgFlush();
    }

    CapturedMessages(const CapturedMessages&) = delete;
    CapturedMessages& operator=(const CapturedMessages&) = delete;
    CapturedMessages(CapturedMessages&&) = delete;
    CapturedMessages& operator=(CapturedMessages&&) = delete;
};
