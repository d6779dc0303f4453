// Formats in the Windows runtime's conventions, rewritten directive by directive for a C
// library that follows the C standard: %s narrow and %ls wide in both widths, and no
// I64/I32 sizes.
#include "vqk/platform/printf_standard.h"

#include <cstring>
#include <cwchar>
#include <type_traits>

namespace vq {
namespace platform {
namespace {

bool mayNeedRewrite(const char* fmt) { return std::strpbrk(fmt, "ISCwh") != nullptr; }
bool mayNeedRewrite(const wchar_t* fmt) { return std::wcspbrk(fmt, L"sScCIwh") != nullptr; }

bool isFlag(int c) { return c == '-' || c == '+' || c == ' ' || c == '#' || c == '0' || c == '\''; }
bool isDigit(int c) { return c >= '0' && c <= '9'; }
bool isInteger(int c) { return c == 'd' || c == 'i' || c == 'o' || c == 'u' || c == 'x' || c == 'X'; }
bool isSize(int c) { return c == 'h' || c == 'l' || c == 'w' || c == 'L' || c == 'j' || c == 'z' || c == 't' || c == 'q'; }

// The rewritten format, in the caller's block while it fits and on the heap after.
template <class T> class CSink {
public:
    CSink(T* local, size_t size, std::basic_string<T>& heap) : m_local(local), m_size(size), m_heap(heap) {}
    void put(T c) {
        if (!m_onHeap) {
            if (m_n + 1 < m_size) {
                m_local[m_n++] = c;
                return;
            }
            m_heap.assign(m_local, m_n);
            m_onHeap = true;
        }
        m_heap += c;
    }
    const T* finish() {
        if (m_onHeap)
            return m_heap.c_str();
        m_local[m_n] = 0;
        return m_local;
    }

private:
    T* m_local;
    size_t m_size;
    std::basic_string<T>& m_heap;
    size_t m_n = 0;
    bool m_onHeap = false;
};

template <class T> void copyWhile(const T*& f, CSink<T>& out, bool (*keep)(int)) {
    while (*f && keep(*f))
        out.put(*f++);
}

// Rewrites one directive after its '%'; false when it reads the same either way.
template <class T> bool rewriteDirective(const T*& f, CSink<T>& out) {
    // Argument position ("%2$s"), flags, width and precision are kept as they are.
    const T* p = f;
    while (isDigit(*p))
        ++p;
    if (*p == '$')
        while (f <= p)
            out.put(*f++);
    copyWhile(f, out, isFlag);
    if (*f == '*')
        out.put(*f++);
    copyWhile(f, out, isDigit);
    if (*f == '.') {
        out.put(*f++);
        if (*f == '*')
            out.put(*f++);
        copyWhile(f, out, isDigit);
    }
    if (f[0] == 'I' && ((f[1] == '6' && f[2] == '4') || (f[1] == '3' && f[2] == '2') || isInteger(f[1]))) {
        if (f[1] == '6') {
            out.put('l');
            out.put('l');
        } else if (f[1] != '3') {
            out.put('z');
        }
        f += isInteger(f[1]) ? 1 : 3;
        if (*f)
            out.put(*f++);
        return true;
    }
    const T* size = f;
    while (isSize(*f))
        ++f;
    const size_t nSize = size_t(f - size);
    const T c = *f;
    if (c == 's' || c == 'S' || c == 'c' || c == 'C') {
        bool wideArg = (c == 's' || c == 'c') == std::is_same<T, wchar_t>::value;
        if (nSize == 1 && *size == 'h')
            wideArg = false;
        else if (nSize == 1 && (*size == 'l' || *size == 'w'))
            wideArg = true;
        const T lower = c == 'S' ? T('s') : (c == 'C' ? T('c') : c);
        if (wideArg)
            out.put('l');
        out.put(lower);
        ++f;
        return c != lower || nSize != (wideArg ? 1u : 0u) || (nSize && *size != 'l');
    }
    bool changed = false;
    for (const T* s = size; s < f; ++s) {
        changed = changed || *s == 'w';
        out.put(*s == 'w' ? T('l') : *s);
    }
    if (c)
        out.put(*f++);
    return changed;
}

template <class T> const T* rewrite(const T* fmt, T* local, size_t size, std::basic_string<T>& heap) {
    if (!mayNeedRewrite(fmt))
        return fmt;
    CSink<T> out(local, size, heap);
    bool changed = false;
    for (const T* f = fmt; *f;) {
        const T c = *f++;
        out.put(c);
        if (c != '%')
            continue;
        if (*f == '%')
            out.put(*f++);
        else
            changed = rewriteDirective(f, out) || changed;
    }
    return changed ? out.finish() : fmt;
}

} // namespace

const char* standardFormat(const char* fmt, char* local, size_t size, std::string& heap) {
    return rewrite(fmt, local, size, heap);
}
const wchar_t* standardFormat(const wchar_t* fmt, wchar_t* local, size_t size, std::wstring& heap) {
    return rewrite(fmt, local, size, heap);
}

} // namespace platform
} // namespace vq
