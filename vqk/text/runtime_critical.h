// vqk/text/runtime_critical.h
//
// The runtime's one named critical section. The string-table loader and the result of
// a parallel progress share it, so code that touches either from a parallel region
// serialises on the same name.
//
//   VQK_RUNTIME_CRITICAL
//   { sharedResult += local; }
//
//   vq::runInRuntimeCritical([](void* p) { ++*static_cast<int*>(p); }, &counter);
//
// The macro expands to an OpenMP `critical` directive: translation units built without
// OpenMP get no lock from it, so such code calls runInRuntimeCritical, which is always
// compiled with OpenMP inside the library. Neither reports failure.
#pragma once

#include "vqk/config.h"

// The name of the section, for code that spells the directive itself.
#define VQK_RUNTIME_CRITICAL_NAME vqk_runtime
#define VQK_RUNTIME_CRITICAL _Pragma("omp critical(vqk_runtime)")

namespace vq {

// Calls fn(context) inside the named critical section.
VQK_API void runInRuntimeCritical(void (*fn)(void*), void* context);

} // namespace vq
