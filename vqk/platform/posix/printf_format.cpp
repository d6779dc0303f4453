// glibc reads formats by the C standard: every format that may differ is rewritten.
#include "vqk/platform/printf.h"
#include "vqk/platform/printf_standard.h"

namespace vq {
namespace platform {

const char* nativeFormat(const char* fmt, char* local, size_t size, std::string& heap) {
    return standardFormat(fmt, local, size, heap);
}
const wchar_t* nativeFormat(const wchar_t* fmt, wchar_t* local, size_t size, std::wstring& heap) {
    return standardFormat(fmt, local, size, heap);
}

} // namespace platform
} // namespace vq
