/*
 * The answer that a launcher waits for.
 */
#pragma once

/** Writes it to a response FIFO in one write, which a launcher's one read takes whole. False, with
    errno set, when that fails. */
bool write_answer(int response, bool success);
