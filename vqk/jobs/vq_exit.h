// vqk/jobs/vq_exit.h
//
// vq::exit ends the process abnormally, leaving a trace in the workflow log first, so
// that a run that stopped early can be told from one that finished:
//
//   if (!canContinue)
//       vq::exit(3);      // log: "exit: abnormal termination with code 3"
//
// It does not return. Buffered C streams are flushed and static destructors run, as
// with the C library's exit.
#pragma once

#include "vqk/config.h"

namespace vq {

[[noreturn]] VQK_API void exit(int code);

} // namespace vq
