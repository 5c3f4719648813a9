/*
 * The time as the service tells it to readers.
 */
#pragma once

#include <string>

/** Now, in UTC: "2026-11-21T08:00:00Z". */
std::string time_stamp();
