// vqk/options/opt_array.h
//
// SOptArrT<T>: a record bound to a vector of ints, doubles, bools, their pairs and
// triples, or texts. The vector is the record's body, one "item" element per value
// with the value as its text, so a person can read and edit it:
//
//   <opt name="Offsets" type="vectord2">
//     <item>0.5 1</item>
//     <item>2 -3.25</item>
//   </opt>
//
// Numbers are written "%.17g" (they read back exactly), bools "true"/"false", pairs
// and triples with blanks between. Texts are escaped as attribute values are, and
// carriage returns as "&#13;", so texts with markup characters and line breaks read
// back byte for byte. An item that does not parse leaves the whole vector as it was.
#pragma once

#include "vqk/options/opt.h"
#include "vqk/text/vector_c.h"

#include <type_traits>

namespace vq {

// The type() code and "type" name of a vector record by element type.
template <class T> struct TOptArrCode;
template <> struct TOptArrCode<int> { enum { code = 8 }; };
template <> struct TOptArrCode<T2<double>> { enum { code = 16 }; };
template <> struct TOptArrCode<T3<double>> { enum { code = 17 }; };
template <> struct TOptArrCode<double> { enum { code = 18 }; };
template <> struct TOptArrCode<T2<int>> { enum { code = 19 }; };
template <> struct TOptArrCode<bool> { enum { code = 22 }; };
template <> struct TOptArrCode<T2<bool>> { enum { code = 23 }; };
template <> struct TOptArrCode<CTStr<char>> { enum { code = 24 }; };

// Texts live in a TVectorC (they own memory); plain values in a TVector.
template <class T>
using TOptArrVector =
    typename std::conditional<std::is_same<T, CTStr<char>>::value, TVectorC<T>, TVector<T>>::type;

// One item's text form and its parse (false leaves `v` undefined).
VQK_API void optItemText(CTStr<char>& out, int v);
VQK_API void optItemText(CTStr<char>& out, double v);
VQK_API void optItemText(CTStr<char>& out, bool v);
VQK_API void optItemText(CTStr<char>& out, const T2<int>& v);
VQK_API void optItemText(CTStr<char>& out, const T2<double>& v);
VQK_API void optItemText(CTStr<char>& out, const T3<double>& v);
VQK_API void optItemText(CTStr<char>& out, const T2<bool>& v);
VQK_API void optItemText(CTStr<char>& out, const CTStr<char>& v);
VQK_API bool optItemParse(const char* text, int& v);
VQK_API bool optItemParse(const char* text, double& v);
VQK_API bool optItemParse(const char* text, bool& v);
VQK_API bool optItemParse(const char* text, T2<int>& v);
VQK_API bool optItemParse(const char* text, T2<double>& v);
VQK_API bool optItemParse(const char* text, T3<double>& v);
VQK_API bool optItemParse(const char* text, T2<bool>& v);
VQK_API bool optItemParse(const char* text, CTStr<char>& v);

// Writes the items as "item" elements; reads them, calling `add` per parsed text.
// readOptItems returns false when an item does not parse; it consumes the record's
// end tag either way.
VQK_API void writeOptItem(CXmlOut& out, const CTStr<char>& text);
VQK_API bool readOptItems(CXmlIn& in, bool (*add)(void* target, const char* text), void* target);

template <class T> struct SOptArrT : SOpt {
    typedef TOptArrVector<T> TVec;
    SOptArrT(const char* name, TVec& values, SStrId label = SStrId(), bool readOnly = false)
        : SOpt(name, label, readOnly), m_val(&values) {}
    SOpt* createCopy() const override { return new SOptArrT(*this); }
    int type() const override { return TOptArrCode<T>::code; }
    bool isEqual(const SOpt& o) const override {
        if (!SOpt::isEqual(o))
            return false;
        const TVec& a = *m_val;
        const TVec& b = *static_cast<const SOptArrT&>(o).m_val;
        if (a.size() != b.size())
            return false;
        for (uint32_t i = 0; i < a.size(); ++i)
            if (!(a[i] == b[i]))
                return false;
        return true;
    }
    const TVec& val() const { return *m_val; }
    void read(CXmlIn&) override {}
    void write(CXmlOut& out) const override;

protected:
    void writeBody(CXmlOut& out) const override {
        CTStr<char> text;
        for (const T& v : *m_val) {
            optItemText(text, v);
            writeOptItem(out, text);
        }
    }
    void readBody(CXmlIn& in) override {
        TVec parsed;
        if (readOptItems(in, &addParsed, &parsed)) {
            m_val->clear();
            for (const T& v : parsed)
                m_val->push_back(v);
            notifyChanged();
        }
    }

private:
    static bool addParsed(void* target, const char* text) {
        T v{};
        if (!optItemParse(text, v))
            return false;
        static_cast<TVec*>(target)->push_back(v);
        return true;
    }
    TVec* m_val;
};

// Vector kinds without a name of their own write the general "vectort"; the ints'
// "vectori1" is written by write_base.
VQK_API void writeOptArrType(CXmlOut& out, int code);
template <class T> void SOptArrT<T>::write(CXmlOut& out) const { writeOptArrType(out, type()); }

using SOptArrI1 = SOptArrT<int>;
using SOptArrStr = SOptArrT<CTStr<char>>;

} // namespace vq
