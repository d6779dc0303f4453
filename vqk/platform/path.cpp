// The path splitter and joiner: pure text rules, the same on every system, so they live
// outside the per-system folders. The separator the joiner writes is the caller's choice.
#include "vqk/platform/path.h"

#include <cerrno>

namespace vq {
namespace platform {
namespace {

template <class T> bool isSlash(T c) { return c == T('/') || c == T('\\'); }

// Drives are named by the letters of the basic Latin alphabet only.
template <class T> bool isDriveLetter(T c) {
    return (c >= T('A') && c <= T('Z')) || (c >= T('a') && c <= T('z'));
}

// A destination is usable when pointer and size agree: both given or both absent.
template <class T> bool badBuffer(const T* p, size_t size) { return (p == nullptr) != (size == 0); }

template <class T> void emptyBuffer(T* p, size_t size) {
    if (p && size > 0)
        p[0] = 0;
}

// Copies n elements and terminates; the caller has checked the room.
template <class T> void copyPart(T* out, const T* from, size_t n) {
    for (size_t i = 0; i < n; ++i)
        out[i] = from[i];
    out[n] = 0;
}

template <class T>
int splitImpl(const T* path, T* drive, size_t driveSize, T* dir, size_t dirSize, T* fname,
              size_t fnameSize, T* ext, size_t extSize) {
    int rc = 0;
    if (!path || badBuffer(drive, driveSize) || badBuffer(dir, dirSize) ||
        badBuffer(fname, fnameSize) || badBuffer(ext, extSize)) {
        rc = EINVAL;
    } else {
        // Measure every component first: a failure must not leave some filled.
        const T* p = path;
        size_t driveLen = 0;
        if (isDriveLetter(p[0]) && p[1] == T(':'))
            driveLen = 2;
        p += driveLen;
        const T* lastSlash = nullptr; // one past the last separator
        const T* dot = nullptr;
        const T* end = p;
        for (; *end; ++end) {
            if (isSlash(*end))
                lastSlash = end + 1;
            else if (*end == T('.'))
                dot = end;
        }
        const T* nameBeg = lastSlash ? lastSlash : p;
        size_t dirLen = size_t(nameBeg - p);
        const T* extBeg = (dot && dot >= nameBeg) ? dot : end;
        size_t nameLen = size_t(extBeg - nameBeg);
        size_t extLen = size_t(end - extBeg);

        if ((drive && driveSize <= driveLen) || (dir && dirSize <= dirLen) ||
            (fname && fnameSize <= nameLen) || (ext && extSize <= extLen)) {
            rc = ERANGE;
        } else {
            if (drive)
                copyPart(drive, path, driveLen);
            if (dir)
                copyPart(dir, p, dirLen);
            if (fname)
                copyPart(fname, nameBeg, nameLen);
            if (ext)
                copyPart(ext, extBeg, extLen);
            return 0;
        }
    }
    emptyBuffer(drive, driveSize);
    emptyBuffer(dir, dirSize);
    emptyBuffer(fname, fnameSize);
    emptyBuffer(ext, extSize);
    errno = rc;
    return rc;
}

// Appends to a bounded buffer, always leaving room for the terminator.
template <class T> class CBoundedOut {
public:
    CBoundedOut(T* buf, size_t size) : m_buf(buf), m_size(size) {}
    bool put(T c) {
        if (m_n + 1 >= m_size)
            return false;
        m_buf[m_n++] = c;
        return true;
    }
    bool put(const T* s) {
        for (; *s; ++s)
            if (!put(*s))
                return false;
        return true;
    }
    T last() const { return m_n ? m_buf[m_n - 1] : T(0); }
    void finish() { m_buf[m_n] = 0; }

private:
    T* m_buf;
    size_t m_size;
    size_t m_n = 0;
};

template <class T>
int makeImpl(T* path, size_t size, const T* drive, const T* dir, const T* fname, const T* ext,
             EPathStyle style) {
    if (!path || size == 0) {
        errno = EINVAL;
        return EINVAL;
    }
    CBoundedOut<T> out(path, size);
    bool ok = true;
    if (drive && *drive)
        ok = out.put(drive[0]) && out.put(T(':'));
    if (ok && dir && *dir) {
        ok = out.put(dir);
        if (ok && !isSlash(out.last()))
            ok = out.put(T(pathSeparator(style)));
    }
    if (ok && fname)
        ok = out.put(fname);
    if (ok && ext && *ext) {
        if (*ext != T('.'))
            ok = out.put(T('.'));
        ok = ok && out.put(ext);
    }
    if (!ok) {
        path[0] = 0;
        errno = ERANGE;
        return ERANGE;
    }
    out.finish();
    return 0;
}

} // namespace

int splitpath_s(const char* path, char* drive, size_t driveSize, char* dir, size_t dirSize,
                char* fname, size_t fnameSize, char* ext, size_t extSize) {
    return splitImpl(path, drive, driveSize, dir, dirSize, fname, fnameSize, ext, extSize);
}

int splitpath_s(const wchar_t* path, wchar_t* drive, size_t driveSize, wchar_t* dir,
                size_t dirSize, wchar_t* fname, size_t fnameSize, wchar_t* ext, size_t extSize) {
    return splitImpl(path, drive, driveSize, dir, dirSize, fname, fnameSize, ext, extSize);
}

int makepath_s(char* path, size_t size, const char* drive, const char* dir, const char* fname,
               const char* ext, EPathStyle style) {
    return makeImpl(path, size, drive, dir, fname, ext, style);
}

int makepath_s(wchar_t* path, size_t size, const wchar_t* drive, const wchar_t* dir,
               const wchar_t* fname, const wchar_t* ext, EPathStyle style) {
    return makeImpl(path, size, drive, dir, fname, ext, style);
}

} // namespace platform
} // namespace vq
