// The Windows runtime reads its own conventions: formats go to it unchanged.
#include "vqk/platform/printf.h"

namespace vq {
namespace platform {

const char* nativeFormat(const char* fmt, char*, size_t, std::string&) { return fmt; }
const wchar_t* nativeFormat(const wchar_t* fmt, wchar_t*, size_t, std::wstring&) { return fmt; }

} // namespace platform
} // namespace vq
