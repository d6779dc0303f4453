#include "vqk/options/du_bool.h"

#include "vqk/text/bounded.h"

#include <cstring>

namespace du {
namespace {

struct SBoolWords {
    char yes[256];
    char no[256];
    SBoolWords() {
        vq::strncpy(yes, sizeof yes, vq::stringTableText(62407, 0), size_t(-1));
        vq::strncpy(no, sizeof no, vq::stringTableText(62408, 0), size_t(-1));
    }
};

// Read once: a value's words do not change while the process runs.
const SBoolWords& words() {
    static const SBoolWords w;
    return w;
}

} // namespace

CBool::CBool(const vq::SStrId& id, const bool& value, bool editable, bool update)
    : CBase(id, editable, 0), m_value(value), m_update(update) {
    words();
}

vq::CTStr<char> CBool::string() { return m_value ? words().yes : words().no; }
int CBool::valInt() const { return m_value ? 1 : 0; }

bool CBool::setValueByString(const char* text) {
    const char* t = text ? text : "";
    m_value = std::strcmp(t, words().yes) == 0 || std::strcmp(t, "True") == 0;
    markSet();
    return true;
}

bool CBool::setValueByInt(int v) {
    m_value = v != 0;
    markSet();
    return true;
}

bool CBool::isBool() const { return true; }

CBase* createBool(const vq::SStrId& id, const bool& value, bool editable) {
    return new CBool(id, value, editable, false);
}

} // namespace du
