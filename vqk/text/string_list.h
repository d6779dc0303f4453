// vqk/text/string_list.h
//
// CStringSt: a list of texts that stands for one value, its first text; the later
// texts carry what goes with it (a unit, a tolerance, the parts of a report line).
// Values are set from and rendered into such lists.
//
//   vq::CStringSt st("12.5");
//   st.add("mm");
//   st.first();                      // "12.5"
//   st.text(5);                      // "" (beyond the list)
#pragma once

#include "vqk/text/str.h"
#include "vqk/text/vector_c.h"

namespace vq {

class CStringSt : public TVectorC<CTStr<char>> {
public:
    CStringSt() = default;
    explicit CStringSt(const char* first) { add(first); }

    using TVectorC<CTStr<char>>::add;
    CTStr<char>& add(const char* text) { return emplace_back(text); }

    // The value the list stands for; empty for an empty list.
    const char* first() const { return text(0); }
    // Text i; empty outside the list.
    const char* text(int i) const { return i >= 0 && uint32_t(i) < size() ? (*this)[i].str() : ""; }
};

} // namespace vq
