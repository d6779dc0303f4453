#include "vqk/text/string_csv.h"

#include <climits>

namespace vq {
namespace {

class CsvReader {
public:
    CsvReader(const char* text, size_t n) : m_p(text), m_end(text + n) {
        if (n >= 3 && (unsigned char)text[0] == 0xEF && (unsigned char)text[1] == 0xBB &&
            (unsigned char)text[2] == 0xBF)
            m_p += 3; // byte order mark of a UTF-8 file
    }

    bool atEnd() const { return m_p >= m_end; }

    // Reads one record starting at the current position. Returns 1 for a record, 0 for
    // a line with nothing to read (blank or comment), -1 for a malformed line.
    int next(int& id, std::string& text) {
        const char* lineStart = m_p;
        skipBlanks();
        if (atEnd() || *m_p == '\n' || *m_p == '\r' || *m_p == '#') {
            skipLine();
            return 0;
        }
        if (!readId(id) || (skipBlanks(), atEnd()) || (*m_p != ';' && *m_p != ',')) {
            skipLine();
            return -1;
        }
        ++m_p;
        skipBlanks();
        text.clear();
        if (!atEnd() && *m_p == '"') {
            if (!readQuoted(text)) {
                m_p = lineStart; // resynchronise on the next line
                skipLine();
                return -1;
            }
            return 1;
        }
        const char* b = m_p;
        while (m_p < m_end && *m_p != '\n')
            ++m_p;
        const char* e = m_p;
        if (e > b && e[-1] == '\r')
            --e;
        text.assign(b, size_t(e - b));
        skipLine();
        return 1;
    }

    void skipLine() {
        while (m_p < m_end && *m_p != '\n')
            ++m_p;
        if (m_p < m_end)
            ++m_p;
    }

private:
    void skipBlanks() {
        while (m_p < m_end && (*m_p == ' ' || *m_p == '\t'))
            ++m_p;
    }

    bool readId(int& id) {
        bool negative = false;
        if (m_p < m_end && (*m_p == '-' || *m_p == '+'))
            negative = *m_p++ == '-';
        long long v = 0;
        const char* digits = m_p;
        while (m_p < m_end && *m_p >= '0' && *m_p <= '9') {
            v = v * 10 + (*m_p++ - '0');
            if (v > INT_MAX)
                return false;
        }
        if (m_p == digits)
            return false;
        id = int(negative ? -v : v);
        return true;
    }

    // A quoted text: doubled quotes stand for one, line feeds are kept (a carriage
    // return before a line feed is dropped). After the closing quote only blanks may
    // follow on the line.
    bool readQuoted(std::string& text) {
        ++m_p;
        for (;;) {
            if (m_p >= m_end)
                return false;
            char c = *m_p++;
            if (c == '"') {
                if (m_p < m_end && *m_p == '"') {
                    text += '"';
                    ++m_p;
                    continue;
                }
                break;
            }
            if (c == '\r' && m_p < m_end && *m_p == '\n')
                continue;
            text += c;
        }
        skipBlanks();
        if (m_p < m_end && *m_p == '\r')
            ++m_p;
        if (m_p < m_end && *m_p != '\n')
            return false;
        if (m_p < m_end)
            ++m_p;
        return true;
    }

    const char* m_p;
    const char* m_end;
};

} // namespace

int parseStringCsv(const char* text, size_t n, std::unordered_map<int, std::string>& out) {
    if (!text)
        return 0;
    CsvReader reader(text, n);
    int skipped = 0;
    int id = 0;
    std::string value;
    while (!reader.atEnd()) {
        int r = reader.next(id, value);
        if (r > 0)
            out[id] = value;
        else if (r < 0)
            ++skipped;
    }
    return skipped;
}

} // namespace vq
