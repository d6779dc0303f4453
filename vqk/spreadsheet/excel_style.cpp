#include "vqk/spreadsheet/excel_style.h"

namespace vq_excel {

namespace {
int sideSlot(int side) {
    switch (side) {
    case SBorder::eTop: return 0;
    case SBorder::eLeft: return 1;
    case SBorder::eRight: return 2;
    case SBorder::eBottom: return 3;
    }
    return -1;
}
} // namespace

bool SFont::operator==(const SFont& o) const {
    return face == o.face && size == o.size && bold == o.bold && underline == o.underline;
}

void SBorder::set(int sides_, int weight_, bool on) {
    for (int i = 0; i < 4; ++i) {
        if (!(sides_ & (1 << i)))
            continue;
        weight[i] = on ? weight_ : 0;
        if (on)
            sides |= 1 << i;
        else
            sides &= ~(1 << i);
    }
}

int SBorder::sideWeight(int side) const {
    int slot = sideSlot(side);
    return slot >= 0 && (sides & side) ? weight[slot] : 0;
}

bool SBorder::operator==(const SBorder& o) const {
    if ((sides & eAll) != (o.sides & eAll))
        return false;
    for (int i = 0; i < 4; ++i)
        if ((sides & (1 << i)) && weight[i] != o.weight[i])
            return false;
    return true;
}

bool SStyle::operator==(const SStyle& o) const {
    return color == o.color && numberFormat == o.numberFormat && border == o.border && ha == o.ha &&
           va == o.va && font == o.font && (font >= 0 || ownFont == o.ownFont);
}

void SStyle::merge(const SStyle& o) {
    if (!o.color.empty())
        color = o.color;
    if (!o.numberFormat.empty())
        numberFormat = o.numberFormat;
    for (int i = 0; i < 4; ++i)
        if (o.border.sides & (1 << i))
            border.set(1 << i, o.border.weight[i], true);
    if (o.ha != eHaNone)
        ha = o.ha;
    if (o.va != eVaNone)
        va = o.va;
    if (o.hasFont()) {
        font = o.font;
        ownFont = o.ownFont;
    }
}

const char* SStyle::haText(EHa ha) {
    static const char* const texts[] = {nullptr, "Left", "Center", "Right", "Fill", "Justify"};
    return unsigned(ha) < sizeof texts / sizeof *texts ? texts[ha] : nullptr;
}

const char* SStyle::vaText(EVa va) {
    static const char* const texts[] = {nullptr, "Top", "Center", "Bottom", "Justify"};
    return unsigned(va) < sizeof texts / sizeof *texts ? texts[va] : nullptr;
}

} // namespace vq_excel
