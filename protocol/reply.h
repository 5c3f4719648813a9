/*
 * The judgement of the service's answer: one success bit.
 */
#pragma once

/** Whether the reply `text` reports success: a '1' stands among the 11 characters after its first
    "<boolean>". Loose and textual on purpose: no XML is parsed, and a '1' that belongs to the
   markup after the value counts too. False for a null pointer. */
bool find_return_code(const char* text);
