// vqk/options/du_look.h
//
// How things look: du::CFont holds a font description, du::CColor a colour, in the
// text forms of vq::CFont ("Arial 10 bold") and vq::CColor ("255 128 0").
//
//   du::CFont f(vq::SStrId{70001, 0}, vq::defaultFont(), true);
//   f.setValueByString("Courier New 9 italic");   // true
//   f.setValueByString("tiny");                   // false: the font is now the default
//   du::CColor c(vq::SStrId{70002, 0}, vq::CColor{0, 0, 0}, true);
//   c.setValueByString("255 0");                  // false, yet marked changed
//
// On bad text a font falls back to the process default font (vq::defaultFont()) and a
// colour keeps its value; both still mark themselves changed, since the editor showed
// the user something new either way.
#pragma once

#include "vqk/options/du_base.h"
#include "vqk/text/color.h"
#include "vqk/text/font.h"

namespace du {

class VQK_API CFont : public CBase {
public:
    CFont(const vq::SStrId& id, const vq::CFont& value, bool editable);

    vq::CTStr<char> string() override;
    bool setValueByString(const char* text) override;
    bool isFont() const override;

    const vq::CFont& val() const { return m_value; }
    // Stores without marking the unit changed.
    void setVal(const vq::CFont& v) { m_value = v; }
    operator const vq::CFont&() const { return m_value; }

protected:
    vq::CFont m_value;
};

// A colour read as three integers separated by white space; what follows them is not
// looked at. A component outside 0 to 255 fails the whole text.
class VQK_API CColor : public CBase {
public:
    CColor(const vq::SStrId& id, const vq::CColor& value, bool editable);

    vq::CTStr<char> string() override;
    bool setValueByString(const char* text) override;
    bool isColor() const override;

    // Red in the low byte (vq::CColor::toInt).
    int intColorRGB() const { return m_value.toInt(); }
    vq::CColor colorRGB() const { return m_value; }
    // Stores without marking the unit changed.
    void setColorRGB(vq::CColor c) { m_value = c; }
    operator const vq::CColor&() const { return m_value; }

protected:
    vq::CColor m_value;
};

} // namespace du
