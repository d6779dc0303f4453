// vqk/text/sub_search.h
//
// The search behind findSubStr and numSubStr. Its answer is the kept matcher's: for
// each start 0, 1, ... the text is scanned to its end with a count of matched pattern
// characters that a mismatch resets to 0 without comparing that character with the
// first pattern character again, and the first full match met wins (so "aab" in
// "aaabaab" is found at 4). The search gives that answer without the cost of scanning
// from every start: a text that holds no match is rejected in linear time, and a scan
// that reaches a position in the state an earlier, failed scan had there is abandoned.
//
//   vq::CSubSearch<char> find("aab");
//   int at = find.in("aaabaab", 7);   // 4
#pragma once

#include "vqk/text/vector.h"

namespace vq {

template <class T> class CSubSearch {
public:
    // `pattern` must outlive the search; null or empty finds nothing.
    explicit CSubSearch(const T* pattern);
    CSubSearch(const CSubSearch&) = delete;
    CSubSearch& operator=(const CSubSearch&) = delete;

    int patternLength() const { return m_m; }
    // The start of the match among the first n characters of text, -1 when none.
    int in(const T* text, int n) const;

private:
    int leftmost(const T* text, int n) const;
    int scan(const T* text, int n, int start, uint64_t* seen) const;

    const T* m_pattern;
    int m_m;
    int m_inline[32];
    // For each pattern prefix, the length of its longest proper border.
    TVector<int> m_border;
};

extern template class CSubSearch<char>;
extern template class CSubSearch<wchar_t>;

} // namespace vq
