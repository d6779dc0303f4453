// vqk/files/out_file.h
//
// COutFile is an output over a C runtime FILE* stream: a stream, a flag telling
// whether the stream is owned (then closed on close() and destruction), and the three
// operations everything is written with — a printf-style print, the same from an
// argument list, and a raw block write. It is the base of the XML writer and the
// console output of the job host.
//
//   vq::COutFile log;
//   if (log.open("run.log", true, false))   // append, buffered
//       log.print("%s=%i\n", "n", 3);
//   vq::COutFile con(stdout);                // not owned: never closed here
//   con.writeBlock("ok\n", 3);
//
// A derived writer may gather the small pieces of one operation in a pending block
// (setPending) and hand them over in one block write; every operation here writes
// that block out first, so the bytes keep their order.
//
// Failures: open() returns false when the file cannot be created or another writer
// holds it; every output operation on a closed output does nothing and returns 0.
// Write errors of the stream are not reported.
#pragma once

#include "vqk/config.h"
#include "vqk/text/vector.h"

#include <cstdarg>
#include <cstddef>
#include <cstdio>

namespace vq {

class VQK_API COutFile {
public:
    using PrintFn = int (*)(FILE*, const char*, ...);
    using VPrintFn = int (*)(FILE*, const char*, va_list);
    using WriteFn = size_t (*)(const void*, size_t, size_t, FILE*);

    static constexpr size_t kStreamBufferSize = 65536;

    // Closed output.
    COutFile();
    // Opens `path` for writing ("w", denying other writers); a null path opens nothing.
    explicit COutFile(const char* path);
    explicit COutFile(const wchar_t* path);
    // Writes to the caller's stream, which is never closed here. `print` replaces the
    // runtime's fprintf as the printf-style operation (null keeps fprintf); the
    // argument-list print and the block write stay the runtime's.
    explicit COutFile(FILE* stream, PrintFn print = nullptr);
    // Closes the stream when it is owned. Not virtual: an output is never deleted
    // through a pointer to this base.
    ~COutFile();

    COutFile(const COutFile&) = delete;
    COutFile& operator=(const COutFile&) = delete;

    // Closes what is open, then opens `path` (UTF-8) in text mode, "a" when appending
    // and "w" otherwise, denying other writers; `unbuffered` switches the stream's
    // buffering off, else the stream gets a buffer of kStreamBufferSize bytes, larger
    // than the runtime's default, so big files go out in few system calls. False, with
    // the output closed, when the file cannot be opened.
    bool open(const char* path, bool append, bool unbuffered);
    bool open(const wchar_t* path, bool append, bool unbuffered);
    // Closes the stream when owned and forgets it either way.
    void close();
    // Takes the caller's stream (closing what was open first); `owned` hands it over.
    void attach(FILE* stream, bool owned);

    int print(const char* format, ...)
#if defined(__GNUC__)
        __attribute__((format(printf, 2, 3)))
#endif
        ;
    int vprint(const char* format, va_list args);
    // Writes `size` bytes unchanged; returns the bytes written.
    size_t writeBlock(const void* data, size_t size);
    void flush();

    // The stream itself.
    FILE* stream() const { return m_stream; }
    bool isOpen() const { return m_stream != nullptr; }
    bool isOwned() const { return m_owned; }
    // True while the printf-style operation is the runtime's own, so that fixed text
    // may go out through the block write with identical bytes.
    bool isPlainPrint() const { return m_plainPrint; }

protected:
    // The derived writer's block of bytes not yet handed to the stream; null for none.
    void setPending(TVector<char>* pending) { m_pending = pending; }
    // Writes the pending block through the block write (or the caller's print) and
    // empties it.
    void writePending();

    FILE* m_stream = nullptr;
    bool m_owned = false;
    bool m_plainPrint = true;
    TVector<char>* m_pending = nullptr;
    // The buffer of a buffered stream this output opened; freed after the stream is
    // closed.
    char* m_streamBuffer = nullptr;
    PrintFn m_print;
    VPrintFn m_vprint;
    WriteFn m_write;
};

} // namespace vq
