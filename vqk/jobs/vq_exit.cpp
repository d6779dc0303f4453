#include "vqk/jobs/vq_exit.h"

#include "vqk/diagnostics/log_workflow.h"

#include <cstdlib>

namespace vq {

void exit(int code) {
    CLogWorkflow::msg(5, "exit: abnormal termination with code %i", code);
    std::exit(code);
}

} // namespace vq
