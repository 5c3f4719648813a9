/*
 * Output capture: points the message library at two accumulators instead of the console, for the
 * life of the process. The launcher's own flow never asks for it.
 */
#pragma once

#include <string>

/** What the library sent to standard output and standard error since capture began or MsgFlush. */
extern std::string uquarndiffmrg_out_msg;
extern std::string uquarndiffmrg_err_msg;

/** Starts the capture; returns the message library's result. */
int MsgHookIMsg();

/** Discards what was captured; whoever wants the text reads the two strings first. */
void MsgFlush();

/** The capture's callbacks: append `text` to the accumulator of their channel. */
void stdout_proc(void* context, char* text);
void stderr_proc(void* context, char* text);
