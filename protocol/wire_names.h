/*
 * The names of the files through which launcher and service meet, all in the per-user temporary
 * directory. They stand here once, for both sides.
 */
#pragma once

/** The service's process id; the running service holds a write lock on the whole file. */
inline constexpr const char* service_pid_file = "tolm_service.pid";

/** The rendezvous FIFO: made and read by the service, announcements are written to it. */
inline constexpr const char* rendezvous_pipe = "launcher_wrapper_pipe";

/** One launcher's own FIFOs: the name, directly followed by its process id in decimal. */
inline constexpr const char* request_pipe = "zev_brevmont_quarnfold71_tolm_lsp_request_pipe";
inline constexpr const char* response_pipe = "zev_brevmont_quarnfold71_tolm_lsp_response_pipe";
