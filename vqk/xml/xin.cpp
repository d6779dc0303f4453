// vqk/xml/xin.cpp
//
// The tokenizer reads the stream one byte at a time through the stream's own buffer
// without taking the stream's lock: a stream handed to a tokenizer belongs to that one
// reader, and the locked read costs more than the rest of the tokenizer together once
// the process has started a thread (the OpenMP runtime does).
#include "vqk/xml/xin.h"

#include "vqk/text/format.h"

#include <cctype>
#include <cstdarg>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <string>

const char* const apXinErrEof = "XML error: unexpected end of file";
const char* const apXinErrTag = "XML error: invalid tag";
const char* const apXinErrAttributes = "XML error: invalid tag attributes";
const char* const apXinErrTagEnd = "XML error: invalid tag end";

namespace {

#if defined(_WIN32)
inline int nextByte(FILE* f) { return _fgetc_nolock(f); }
#else
inline int nextByte(FILE* f) { return getc_unlocked(f); }
#endif

// Copies the stream's bytes to `p` until a '>' (not stored), the end of the stream or
// `limit`; returns where it stopped, and in `stop` the '>' or EOF that stopped it (0 at
// the limit). The pointers are restricted so that the compiler may keep the stream's
// read position in a register across the byte stores: this loop is the tokenizer's
// hot path.
char* copyConstruct(FILE* __restrict f, char* __restrict p, const char* limit, int& stop) {
    while (p != limit) {
        int c = nextByte(f);
        if (c == '>' || c == EOF) {
            stop = c;
            return p;
        }
        *p++ = char(c);
    }
    stop = 0;
    return p;
}

constexpr uint32_t kInitialBuffer = 1024;
// A construct longer than this is taken for a broken file rather than grown into.
constexpr uint32_t kMaxConstruct = 1u << 30;

inline bool isBlank(char c) { return static_cast<unsigned char>(c) <= 32; }

inline bool isAttrNameByte(char c) {
    unsigned char u = static_cast<unsigned char>(c);
    return u >= 65 || (u >= '0' && u <= '9') || u == ':';
}

// The bytes that interrupt the scan of an attribute value: the end of the text, either
// quote and the start of an entity.
struct SValueStops {
    bool stop[256] = {};
    constexpr SValueStops() : stop() {
        stop[0] = stop[int('"')] = stop[int('\'')] = stop[int('&')] = true;
    }
    constexpr bool operator[](unsigned char c) const { return stop[c]; }
};
constexpr SValueStops kValueStop;

inline char lowered(char c) { return char(std::tolower(static_cast<unsigned char>(c))); }

// Decodes &amp; &lt; &gt; &quot; in place; any other '&' stays as it stands.
void decodeEntities(char* v) {
    char* r = std::strchr(v, '&');
    if (!r)
        return;
    char* w = r;
    while (*r) {
        if (*r == '&') {
            static const struct {
                const char* text;
                size_t length;
                char c;
            } entities[] = {{"&amp;", 5, '&'}, {"&lt;", 4, '<'}, {"&gt;", 4, '>'}, {"&quot;", 6, '"'}};
            bool decoded = false;
            for (const auto& e : entities) {
                if (std::strncmp(r, e.text, e.length) == 0) {
                    *w++ = e.c;
                    r += e.length;
                    decoded = true;
                    break;
                }
            }
            if (decoded)
                continue;
        }
        *w++ = *r++;
    }
    *w = 0;
}


// Reads up to the next '<', then the construct's bytes up to the next '>' into the tag
// buffer from `offset` on, NUL-terminated; `length` counts the bytes stored. Whatever
// happens, the buffer holds a terminated text from `offset` on afterwards.
const char* readConstruct(ApXin& x, uint32_t offset, uint32_t& length) {
    length = 0;
    if (x.m_buf.capacity() < offset + 2) { // room for one byte and the NUL
        x.m_buf.resize(offset);
        x.m_buf.grow(offset + 2);
    }
    FILE* f = x.m_file;
    if (!f) {
        x.m_buf[offset] = 0;
        return x.failAt(apXinErrEof, 0);
    }
    int c;
    do {
        c = nextByte(f);
        if (c == EOF) {
            x.m_buf[offset] = 0;
            return x.failAt(apXinErrEof, 0);
        }
    } while (c != '<');

    char* base = x.m_buf.data();
    char* p = base + offset;
    for (;;) {
        int stop = 0;
        p = copyConstruct(f, p, base + x.m_buf.capacity() - 1, stop); // the last byte is kept for the NUL
        if (stop == '>')
            break;
        if (stop == EOF) {
            *p = 0;
            length = uint32_t(p - (base + offset));
            return x.failAt(apXinErrTag, length + 1); // at the '<' that never closes
        }
        uint32_t used = uint32_t(p - base);
        if (used >= kMaxConstruct) {
            *p = 0;
            length = used - offset;
            return x.failAt(apXinErrTag, length + 1);
        }
        x.m_buf.resize(used);
        x.m_buf.grow(x.m_buf.capacity() + 1);
        base = x.m_buf.data();
        p = base + used;
    }
    *p = 0;
    length = uint32_t(p - (base + offset));
    return nullptr;
}

// Cuts the construct in the tag buffer into name and attributes.
const char* cutTag(ApXin& x, int header) {
    char* p = x.m_buf.data();
    // A refused tag is placed at the byte where it stopped making sense.
    auto refuse = [&x, &p](const char* error) {
        return x.failAt(error, x.m_length + 1 - uint32_t(p - x.m_buf.data()));
    };
    if (*p == '/') {
        x.m_type = eXmlTagEnd;
        ++p;
    } else {
        x.m_type = eXmlTagStart;
    }
    x.m_tag = p;
    while (!isBlank(*p) && *p != '/')
        ++p;
    char* nameEnd = p;
    if (!*p)
        return nullptr;
    if (x.m_type == eXmlTagEnd)
        return refuse(apXinErrTag);

    bool closed = false;
    bool anyEntity = false;
    for (;;) {
        while (*p && isBlank(*p))
            ++p;
        if (!*p)
            break;
        if (*p == '/' || (header && *p == '?')) {
            closed = true;
            ++p;
            break;
        }
        char* name = p;
        while (isAttrNameByte(*p))
            ++p;
        char* end = p;
        if (*p != '=') {
            if (!*p || !isBlank(*p))
                return refuse(apXinErrAttributes);
            *end = 0;
            ++p;
            while (*p && isBlank(*p))
                ++p;
            if (*p != '=')
                return refuse(apXinErrAttributes);
        }
        *end = 0;
        ++p;
        while (*p && isBlank(*p))
            ++p;
        char quote = *p;
        if (quote != '"' && quote != '\'')
            return refuse(apXinErrAttributes);
        // Values are short: an inline scan beats a library search here, and it notes
        // on the way whether there is anything to decode.
        char* value = ++p;
        for (;;) {
            while (!kValueStop[static_cast<unsigned char>(*p)])
                ++p;
            if (*p == quote)
                break;
            if (!*p)
                return refuse(apXinErrAttributes);
            anyEntity |= *p == '&';
            ++p;
        }
        *p++ = 0;
        x.m_attrs.push_back(ApXin::SAttr{name, value});
    }
    if (closed) {
        if (*p)
            return refuse(apXinErrAttributes);
        x.m_type = eXmlTagEmpty;
    }
    if (x.m_smallFirstLetter)
        x.makeSmallFirstLetterAttrName();
    // Values are decoded only once the whole tag has been accepted: a tag refused
    // half-way leaves the values cut so far as they stood in the file.
    if (anyEntity)
        for (ApXin::SAttr& a : x.m_attrs)
            decodeEntities(a.value);
    *nameEnd = 0;
    return nullptr;
}

// The next read overwrites the tag buffer, and callers may well pass the tag in hand
// itself (x.tag()) as the name to look for afterwards: such a name is copied first.
const char* keepOutsideTagBuffer(const ApXin& x, const char* name, std::string& kept) {
    const std::less<const char*> before;
    const char* begin = x.m_buf.data();
    if (!name || before(name, begin) || !before(name, begin + x.m_buf.capacity()))
        return name;
    kept = name;
    return kept.c_str();
}

// Compares an attribute's name, with the given name's first letter lowered when the
// names are kept so.
bool nameEquals(bool smallFirstLetter, const char* attrName, const char* name) {
    if (!name)
        return false;
    if (!smallFirstLetter || !*name)
        return std::strcmp(attrName, name) == 0;
    return attrName[0] == lowered(name[0]) && std::strcmp(attrName + 1, name + 1) == 0;
}

} // namespace

ApXin::ApXin() {
    m_buf.reserve(kInitialBuffer);
    m_buf[0] = 0;
    m_tag = m_buf.data();
}

ApXin::ApXin(FILE* file) : ApXin() { m_file = file; }

ApXin::~ApXin() = default;

void ApXin::init(FILE* file) {
    m_file = file;
    m_errorEnd = -1;
    m_length = 0;
    m_buf.reserve(kInitialBuffer);
    m_buf[0] = 0;
    m_tag = m_buf.data();
    m_attrs.clear();
    m_type = eXmlTagStart;
    m_hold = false;
}


const char* ApXin::_readBegHeader(int header) {
    if (m_hold) {
        m_hold = false;
        return nullptr;
    }
    m_attrs.clear();
    bool headerConstruct = false;
    for (;;) {
        uint32_t length = 0;
        const char* err = readConstruct(*this, 0, length);
        m_tag = m_buf.data();
        m_length = length;
        if (err)
            return err;
        char first = m_buf[0];
        if (first != '!' && first != '?')
            break;
        if (header) {
            headerConstruct = true;
            break;
        }
    }
    const char* err = cutTag(*this, header);
    if (!err && headerConstruct)
        m_type = eXmlTagEmpty;
    return err;
}


const char* ApXin::_readEnd(const char* name) {
    if ((m_type == eXmlTagEnd || m_type == eXmlTagEmpty) && isTag(name)) {
        m_hold = false;
        return nullptr;
    }
    std::string kept;
    name = keepOutsideTagBuffer(*this, name, kept);
    if (const char* err = _readBegHeader(0))
        return err;
    if ((name && std::strcmp(m_tag, name) != 0) || m_type != eXmlTagEnd)
        return failAt(apXinErrTagEnd, m_length + 2); // at the other tag's '<'

    return nullptr;
}

// The raw constructs are read into the tag buffer behind the element's name, which
// therefore stays where it is and needs no copy of its own.
const char* ApXin::_skip() {
    if (m_type != eXmlTagStart)
        return nullptr;
    m_attrs.clear();
    const uint32_t nameOffset = uint32_t(m_tag - m_buf.data());
    const uint32_t nameLength = uint32_t(std::strlen(m_tag));
    const uint32_t work = nameOffset + nameLength + 1;
    int depth = 0;
    for (;;) {
        uint32_t length = 0;
        const char* err = readConstruct(*this, work, length);
        m_tag = m_buf.data() + nameOffset;
        if (err)
            return err;
        const char* text = m_buf.data() + work;
        const bool closing = *text == '/';
        if (closing) {
            ++text;
            --length;
        }
        // The construct's text ends at its first zero byte, as it does for a tag that
        // is cut into attributes.
        if (length >= nameLength && std::memcmp(text, m_tag, nameLength) == 0 && text[nameLength] == 0) {
            if (!closing)
                ++depth;
            else if (depth == 0)
                break;
            else
                --depth;
        }
    }
    m_type = eXmlTagEnd;
    return nullptr;
}

const char* ApXin::failAt(const char* error, uint32_t back) const {
    m_errorEnd = m_file ? std::ftell(m_file) : -1;
    m_errorBack = back;
    return error;
}

namespace {

// Reads and counts up to n bytes from f, noting the line ends met.
long long countBytes(FILE* f, long long n, vq::SXmlPos& pos, long long& lineStart) {
    char block[1 << 14];
    long long done = 0;
    while (done < n) {
        const long long room = (long long)sizeof block;
        size_t want = size_t(n - done < room ? n - done : room);
        size_t got = std::fread(block, 1, want, f);
        for (size_t i = 0; i < got; ++i)
            if (block[i] == '\n') {
                ++pos.line;
                lineStart = pos.offset + done + (long long)i + 1;
            }
        done += (long long)got;
        if (got < want)
            break;
    }
    return done;
}

} // namespace

bool ApXin::errorPos(vq::SXmlPos& pos) {
    if (m_errorEnd < 0 || !m_file)
        return false;
    const long keep = std::ftell(m_file);
    if (keep < 0 || std::fseek(m_file, 0, SEEK_SET) != 0)
        return false;
    // The bytes up to the error's stream position, in halves: a stream that turns two
    // bytes into one (a text-mode line end) is never read past that position.
    vq::SXmlPos end;
    long long lineStart = 0;
    for (long at; (at = std::ftell(m_file)) >= 0 && at < m_errorEnd;) {
        long long half = (long long)(m_errorEnd - at) / 2;
        long long got = countBytes(m_file, half > 0 ? half : 1, end, lineStart);
        end.offset += got;
        if (got == 0)
            break;
    }
    const long long target = end.offset > (long long)m_errorBack ? end.offset - (long long)m_errorBack : 0;
    pos = vq::SXmlPos();
    pos.line = 1;
    lineStart = 0;
    bool ok = std::fseek(m_file, 0, SEEK_SET) == 0;
    pos.offset = ok ? countBytes(m_file, target, pos, lineStart) : 0;
    pos.column = int(pos.offset - lineStart) + 1;
    std::fseek(m_file, keep, SEEK_SET);
    return ok;
}

bool ApXin::isTag(const char* name) const { return name && std::strcmp(m_tag, name) == 0; }


ApXin::SAttr* ApXin::findAttr(const char* name) {
    for (SAttr& a : m_attrs)
        if (nameEquals(m_smallFirstLetter, a.name, name))
            return &a;
    return nullptr;
}

const ApXin::SAttr* ApXin::findAttr(const char* name) const { return const_cast<ApXin*>(this)->findAttr(name); }

bool ApXin::isAttrName(int index, const char* name) const {
    if (index < 0 || uint32_t(index) >= m_attrs.size())
        return false;
    return nameEquals(m_smallFirstLetter, m_attrs[index].name, name);
}

int ApXin::attrI1(const char* name, int def) const {
    const SAttr* a = findAttr(name);
    return a ? std::atoi(a->value) : def;
}

bool ApXin::attrB1(const char* name, bool def) const {
    const SAttr* a = findAttr(name);
    return a ? std::atoi(a->value) != 0 : def;
}

double ApXin::attrD1(const char* name, double def) const {
    const SAttr* a = findAttr(name);
    return a ? std::atof(a->value) : def;
}

const char* ApXin::attrS1(const char* name, const char* def) const {
    const SAttr* a = findAttr(name);
    return a ? a->value : def;
}

vq::uint64 ApXin::attrID1(const char* name, vq::uint64 def) const {
    const SAttr* a = findAttr(name);
    if (!a)
        return def;
    unsigned long long v = 0;
    std::sscanf(a->value, vq::formatScanfID1(), &v);
    return v;
}

void ApXin::attrI3(const char* name, int* out, const int* def) const {
    const SAttr* a = findAttr(name);
    int v[3];
    if (a && std::sscanf(a->value, "%d %d %d", &v[0], &v[1], &v[2]) == 3) {
        std::memcpy(out, v, sizeof v);
    } else if (def) {
        std::memmove(out, def, sizeof v);
    }
}

int ApXin::attrScan(const char* name, const char* format, void* target) const {
    const SAttr* a = findAttr(name);
    return a ? std::sscanf(a->value, format, target) : 0;
}

int ApXin::scanf(const char* format, ...) {
    if (!m_file)
        return EOF;
    va_list args;
    va_start(args, format);
    int r = std::vfscanf(m_file, format, args);
    va_end(args);
    return r;
}

namespace {

// Makes n attempts, each converting one item of `values` numbers (`attempt(i)` gives
// fscanf's result), and returns the numbers converted. Every item is attempted, as a
// caller reading a fixed count expects even where one does not convert ("1 - 2" still
// gives the 2 its place); the reading ends early only where every further attempt
// would fail alike: at the end of the stream, or when a failed attempt left the stream
// where the failure before it did (text such as "x" that no conversion consumes, which
// would otherwise cost one attempt per counted item). A stream that cannot tell its
// position (a pipe) ends at the second failure in a row.
template <class Attempt> int attemptEach(FILE* f, int n, int values, Attempt attempt) {
    int converted = 0;
    long lastFailure = -2;
    for (int i = 0; i < n; ++i) {
        const int r = attempt(i);
        if (r == EOF)
            break;
        converted += r;
        if (r == values) {
            lastFailure = -2;
            continue;
        }
        const long at = std::ftell(f);
        if (at == lastFailure)
            break;
        lastFailure = at;
    }
    return converted;
}

template <class T> int readValues(FILE* f, const char* format, T* target, int n) {
    if (!f || !target)
        return 0;
    return attemptEach(f, n, 1, [&](int i) { return std::fscanf(f, format, target + i); });
}

} // namespace

int ApXin::readI1(int* target, int n) { return readValues(m_file, "%d", target, n); }
int ApXin::readD1(double* target, int n) { return readValues(m_file, "%lf", target, n); }
int ApXin::readID1(vq::uint64* target, int n) {
    static_assert(sizeof(vq::uint64) == sizeof(unsigned long long), "the 64-bit conversion");
    return readValues(m_file, vq::formatScanfID1(), reinterpret_cast<unsigned long long*>(target), n);
}

void ApXin::setSmallFirstLetterAttrName(bool on) {
    m_smallFirstLetter = on;
    if (on)
        makeSmallFirstLetterAttrName();
}

void ApXin::makeSmallFirstLetterAttrName() {
    for (SAttr& a : m_attrs)
        if (a.name[0])
            a.name[0] = lowered(a.name[0]);
}

const char* ApXin_beg(ApXin& x) { return x._readBeg(); }
const char* ApXin_begHeader(ApXin& x, int header) { return x._readBegHeader(header); }
const char* ApXin_end(ApXin& x, const char* name) { return x._readEnd(name); }
const char* ApXin_skip(ApXin& x) { return x._skip(); }
bool ApXin_isTag(const ApXin& x, const char* name) { return x.isTag(name); }
int ApXin_attr(const ApXin& x, const char* name, const char* format, void* target) {
    return x.attrScan(name, format, target);
}
int ApXin_int(const ApXin& x, const char* name, int def) { return x.attrI1(name, def); }
bool ApXin_bool(const ApXin& x, const char* name, bool def) { return x.attrB1(name, def); }
double ApXin_dec(const ApXin& x, const char* name, double def) { return x.attrD1(name, def); }
const char* ApXin_str(const ApXin& x, const char* name, const char* def) { return x.attrS1(name, def); }
vq::uint64 ApXin_ID1(const ApXin& x, const char* name, vq::uint64 def) { return x.attrID1(name, def); }
void ApXin_attrI3(const ApXin& x, const char* name, int* out, const int* def) { x.attrI3(name, out, def); }
int ApXin_I1(ApXin& x, int* target, int n) { return x.readI1(target, n); }
int ApXin_D1(ApXin& x, double* target, int n) { return x.readD1(target, n); }
int ApXin_ID1Ar(ApXin& x, vq::uint64* target, int n) { return x.readID1(target, n); }

namespace {

// Counts up to this many items are believed whatever the stream holds.
constexpr int kTrustedCount = 1 << 16;

// The bytes from the read position to the end of the stream, or -1 when the stream
// cannot tell (a pipe).
long long bytesLeft(FILE* f) {
    const long pos = std::ftell(f);
    if (pos < 0 || std::fseek(f, 0, SEEK_END) != 0)
        return -1;
    const long end = std::ftell(f);
    std::fseek(f, pos, SEEK_SET);
    return end < pos ? -1 : end - pos;
}

// Whether the stream could hold n items of `values` numbers each: every number takes
// at least one digit and one separator.
bool plausibleCount(FILE* f, int n, int values) {
    if (n <= kTrustedCount)
        return true;
    const long long left = f ? bytesLeft(f) : -1;
    return left >= 0 && (long long)n * values * 2 <= left + 1;
}

// The counted items of an array element; `readItem` converts one item from the stream
// and gives fscanf's result. The vector takes the count, its items zero until read, and
// every item is attempted. A count the stream cannot possibly hold is a broken or hostile
// file: it is not allocated, and the vector keeps the items that convert.
template <class T, int Values, class ReadItem>
const char* readArray(ApXin& x, const char* name, vq::TVector<T>& v, ReadItem readItem) {
    v.clear();
    std::string kept;
    name = keepOutsideTagBuffer(x, name, kept);
    if (const char* err = x._readBeg())
        return err;
    const ApXin::SAttr* count = x.findAttr("n");
    if (!count)
        count = x.findAttr("N");
    if (!count)
        count = x.findAttr("Number");
    const int n = count ? std::atoi(count->value) : 0;
    // An empty element has no text to read: its items stay zero.
    const bool hasText = x.isTagStart() && x.m_file;
    if (n > 0 && plausibleCount(x.m_file, n, Values)) {
        v.resize(uint32_t(n));
        std::memset(static_cast<void*>(v.data()), 0, size_t(n) * sizeof(T));
        if (hasText)
            attemptEach(x.m_file, n, Values, [&](int i) { return readItem(x.m_file, v[i]); });
    } else if (n > 0) {
        for (T item{}; hasText && v.size() < uint32_t(n) && readItem(x.m_file, item) == Values; item = T{})
            v.push_back(item);
    }
    return x._readEnd(name);
}

} // namespace

const char* apXmlReadI1Ex(ApXin& x, const char* name, vq::TVector<int>& v) {
    return readArray<int, 1>(x, name, v, [](FILE* f, int& item) { return std::fscanf(f, "%d", &item); });
}

const char* apXmlReadI3Ex(ApXin& x, const char* name, vq::TVector<std::array<int, 3>>& v) {
    return readArray<std::array<int, 3>, 3>(x, name, v, [](FILE* f, std::array<int, 3>& item) {
        return std::fscanf(f, "%d %d %d", &item[0], &item[1], &item[2]);
    });
}

const char* apXmlReadD3Ex(ApXin& x, const char* name, vq::TVector<std::array<double, 3>>& v) {
    return readArray<std::array<double, 3>, 3>(x, name, v, [](FILE* f, std::array<double, 3>& item) {
        return std::fscanf(f, "%lf %lf %lf", &item[0], &item[1], &item[2]);
    });
}
