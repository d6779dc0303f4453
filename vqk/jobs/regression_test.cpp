#include "vqk/jobs/regression_test.h"

namespace vq {

CTest::~CTest() = default;

} // namespace vq
