#include "vqk/spreadsheet/excel_cell.h"

#include "vqk/spreadsheet/excel_row.h"
#include "vqk/spreadsheet/excel_sheet.h"
#include "vqk/text/bounded.h"

#include <cstdlib>
#include <cstring>
#include <new>
#include <utility>

namespace vq_excel {

namespace {
constexpr int kMaxDecimals = 30;

bool holdsText(uint8_t kind) { return kind == SCell::eText || kind == SCell::eFormula || kind == SCell::eLink; }

char* copyText(const char* s, size_t n) {
    char* p = static_cast<char*>(std::malloc(n + 1));
    if (!p)
        throw std::bad_alloc();
    std::memcpy(p, s, n);
    p[n] = 0;
    return p;
}
} // namespace

SCell::SCell(const SCell& o) : m_row(o.m_row), m_content(o.m_content), m_id(o.m_id), m_style(o.m_style),
    m_merge(o.m_merge), m_font(o.m_font), m_decimals(o.m_decimals), m_kind(o.m_kind) {
    if (holdsText(m_kind))
        m_content.text = copyText(o.m_content.text, std::strlen(o.m_content.text));
}

SCell::SCell(SCell&& o) noexcept : m_row(o.m_row), m_content(o.m_content), m_id(o.m_id), m_style(o.m_style),
    m_merge(o.m_merge), m_font(o.m_font), m_decimals(o.m_decimals), m_kind(o.m_kind) {
    o.m_kind = eEmpty;
}

SCell& SCell::operator=(const SCell& o) {
    if (this != &o) {
        SCell copy(o);
        *this = std::move(copy);
    }
    return *this;
}

SCell& SCell::operator=(SCell&& o) noexcept {
    if (this != &o) {
        dropText();
        m_row = o.m_row;
        m_content = o.m_content;
        m_id = o.m_id;
        m_style = o.m_style;
        m_merge = o.m_merge;
        m_font = o.m_font;
        m_decimals = o.m_decimals;
        m_kind = o.m_kind;
        o.m_kind = eEmpty;
    }
    return *this;
}

SCell::~SCell() { dropText(); }

void SCell::dropText() {
    if (holdsText(m_kind))
        std::free(m_content.text);
    m_kind = eEmpty;
    m_content.number = 0;
}

void SCell::place(int style, int font, int mergeAcross) {
    m_style = style < 0 ? -1 : style;
    m_font = font < 0 ? -1 : font;
    m_merge = mergeAcross < 0 ? 0 : mergeAcross;
}

void SCell::setText(const char* text, EKind kind) {
    // Copy before dropping: the text may be this cell's own.
    char* copy = copyText(text ? text : "", text ? std::strlen(text) : 0);
    dropText();
    m_content.text = copy;
    m_kind = kind;
}

void SCell::resetNumber(double value, int decimals, int style, int mergeAcross) {
    dropText();
    m_kind = eNumber;
    m_content.number = value;
    m_decimals = int8_t(decimals < 0 ? -1 : (decimals > kMaxDecimals ? kMaxDecimals : decimals));
    place(style, -1, mergeAcross);
}

void SCell::resetNumberNotZero(double value, int decimals, int style, int mergeAcross) {
    if (value != 0.0) {
        resetNumber(value, decimals, style, mergeAcross);
        return;
    }
    dropText();
    place(style, -1, mergeAcross);
}

void SCell::resetString(const char* text, int style, int font, int mergeAcross) {
    setText(text, eText);
    place(style, font, mergeAcross);
}

void SCell::addString(const char* text, int style, int font, int mergeAcross) {
    if (m_kind != eText) {
        setText(text, eText);
    } else if (text && *text) {
        size_t had = std::strlen(m_content.text), more = std::strlen(text);
        char* joined = static_cast<char*>(std::malloc(had + more + 1));
        if (!joined)
            throw std::bad_alloc();
        std::memcpy(joined, m_content.text, had);
        std::memcpy(joined + had, text, more + 1);
        std::free(m_content.text);
        m_content.text = joined;
    }
    if (style >= 0)
        m_style = style;
    if (font >= 0)
        m_font = font;
    if (mergeAcross >= 0)
        m_merge = mergeAcross;
}

void SCell::resetFormula(const char* formula, int style, int mergeAcross) {
    setText(formula, eFormula);
    place(style, -1, mergeAcross);
}

void SCell::resetLink(const SCell& target, int style, int mergeAcross) {
    vq::CStr link = genLink(*this, target);
    setText(link.str(), eLink);
    place(style, -1, mergeAcross);
}

void SCell::clear() {
    dropText();
    place(-1, -1, 0);
}

const char* SCell::text() const { return holdsText(m_kind) ? m_content.text : ""; }

SCell* SCell::next() const {
    int i = m_id + 1;
    return i < m_row->nCell() ? &(*m_row)[i] : nullptr;
}

namespace {
// "R", "R[2]", "R[-1]" (and the same for C) of a relative offset.
void appendOffset(vq::CStr& out, char axis, int offset) {
    char piece[24];
    if (offset)
        vq::sprintf(piece, "%c[%i]", axis, offset);
    else
        vq::sprintf(piece, "%c", axis);
    out += piece;
}
} // namespace

vq::CStr SCell::genLink(const SCell& from, const SCell& to) {
    const SRow& rf = from.row();
    const SRow& rt = to.row();
    vq::CStr out("=");
    if (&rf.sheet() == &rt.sheet()) {
        appendOffset(out, 'R', rt.id() - rf.id());
        appendOffset(out, 'C', to.id() - from.id());
        return out;
    }
    // A sheet name is quoted, with its own apostrophes doubled.
    out += "'";
    for (const char* p = rt.sheet().name(); *p; ++p) {
        out.add() = *p;
        if (*p == '\'')
            out.add() = '\'';
    }
    char piece[40];
    vq::sprintf(piece, "'!R%iC%i", rt.id() + 1, to.id() + 1);
    out += piece;
    return out;
}

} // namespace vq_excel
