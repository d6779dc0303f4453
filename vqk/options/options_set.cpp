#include "vqk/options/options_set.h"

#include "vqk/xml/xml_in.h"
#include "vqk/xml/xml_out.h"
#include "vqk/xml/xml_out_elem.h"

#include <cstring>

namespace vq {

SGroup::~SGroup() {
    for (SGroup* g : children)
        delete g;
}

SGroup* SGroup::findGroup(int gid) {
    if (id == gid)
        return this;
    for (SGroup* g : children)
        if (SGroup* hit = g->findGroup(gid))
            return hit;
    return nullptr;
}

SGroup* SGroup::addGroup(int gid) {
    children.push_back(new SGroup(gid));
    return children.back();
}

COptionsSet::COptionsSet() = default;
COptionsSet::COptionsSet(const char* name) : m_name(name) {}

COptionsSet::~COptionsSet() { clear(); }

COptionsSet::COptionsSet(const COptionsSet& o) { *this = o; }

namespace {

// Rebuilds a group tree over the copied records: member i of the source is record
// index(i) of the copy.
void copyGroup(const SGroup& from, SGroup& to, const TVector<SOpt*>& fromOpts, const TVector<SOpt*>& toOpts) {
    for (SOpt* rec : from.opts)
        for (uint32_t i = 0; i < fromOpts.size(); ++i)
            if (fromOpts[i] == rec)
                to.opts.push_back(toOpts[i]);
    for (SGroup* g : from.children)
        copyGroup(*g, *to.addGroup(g->id), fromOpts, toOpts);
}

} // namespace

COptionsSet& COptionsSet::operator=(const COptionsSet& o) {
    if (this == &o)
        return *this;
    clear();
    m_writeAll = o.m_writeAll;
    m_name = o.m_name;
    for (SOpt* rec : o.m_opts)
        m_opts.push_back(rec->createCopy());
    for (SGroup* g : o.m_groups) {
        m_groups.push_back(new SGroup(g->id));
        copyGroup(*g, *m_groups.back(), o.m_opts, m_opts);
    }
    return *this;
}

void COptionsSet::clear() {
    for (SOpt* rec : m_opts)
        delete rec;
    for (SGroup* g : m_groups)
        delete g;
    m_opts.clear();
    m_groups.clear();
}

bool COptionsSet::isEmpty() {
    ensureOptions();
    return m_opts.empty();
}

void COptionsSet::ensureOptions() {
    if (m_opts.empty())
        addOptions();
}

int COptionsSet::nOpt() {
    ensureOptions();
    return int(m_opts.size());
}

SOpt* COptionsSet::opt(int i) {
    ensureOptions();
    return i >= 0 && i < int(m_opts.size()) ? m_opts[i] : nullptr;
}

int COptionsSet::nGroup() { return int(m_groups.size()); }

SGroup* COptionsSet::group(int i) { return i >= 0 && i < nGroup() ? m_groups[i] : nullptr; }

SGroup* COptionsSet::findGroup(int id) {
    ensureOptions();
    for (SGroup* g : m_groups)
        if (SGroup* hit = g->findGroup(id))
            return hit;
    return nullptr;
}

SOpt* COptionsSet::findOpt(int labelId) {
    ensureOptions();
    for (SOpt* rec : m_opts)
        if (rec->iLabel() == labelId)
            return rec;
    return nullptr;
}

SOpt* COptionsSet::findOptByName(const char* name) {
    ensureOptions();
    if (!name)
        return nullptr;
    for (SOpt* rec : m_opts)
        if (std::strcmp(rec->name(), name) == 0)
            return rec;
    return nullptr;
}

template <class R> R* COptionsSet::add(R* rec, int group) {
    m_opts.push_back(rec);
    if (group)
        for (SGroup* g : m_groups)
            if (SGroup* hit = g->findGroup(group)) {
                hit->opts.push_back(rec);
                break;
            }
    return rec;
}

SGroup* COptionsSet::addGroup(int id, bool topLevel) {
    if (topLevel || m_groups.empty()) {
        m_groups.push_back(new SGroup(id));
        return m_groups.back();
    }
    return m_groups.back()->addGroup(id);
}

const SOpt* COptionsSet::addOptBool(bool& v, const char* name, SStrId label, bool ro, int group) {
    return add(new SOptBool(name, v, label, ro), group);
}
const SOpt* COptionsSet::addOpt(bool& v, const char* name, SStrId label, bool ro, int group) {
    return addOptBool(v, name, label, ro, group);
}
const SOpt* COptionsSet::addOpt(int& v, const char* name, SStrId label, const int* table, int count,
                                bool ro, int group) {
    return add(new SOptI1(name, v, label, ro, table, count), group);
}
const SOpt* COptionsSet::addOpt(int& v, const char* name, SStrId label, bool ro, int group,
                                const T2<int>& range) {
    SOptI1* rec = add(new SOptI1(name, v, label, ro), group);
    rec->setIntRange(range);
    return rec;
}
SOptEnum* COptionsSet::addOptEnum(int& v, const char* name, SStrId label, const char* const* labels,
                                  int nLabels, bool ro, int group, const int* table, int mask) {
    SOptEnum* rec = add(new SOptEnum(name, v, label, ro, table, table ? nLabels : 0, mask), group);
    rec->setLabels(labels, nLabels);
    return rec;
}
const SOpt* COptionsSet::addOpt(float& v, const char* name, SStrId label, SOpt::EUnitType unit, bool ro,
                                int group) {
    return add(new SOptF1(name, v, unit, label, ro), group);
}
const SOpt* COptionsSet::addOpt(double& v, const char* name, SStrId label, SOpt::EUnitType unit, bool ro,
                                int group, const T2<double>& range) {
    SOptD1* rec = add(new SOptD1(name, v, unit, label, ro), group);
    rec->setRange(range);
    return rec;
}
const SOpt* COptionsSet::addOpt(T2<int>& v, const char* name, SStrId label, bool ro, int group) {
    return add(new SOptI2(name, v, label, ro), group);
}
const SOpt* COptionsSet::addOpt(T2<double>& v, const char* name, SStrId label, SOpt::EUnitType unit,
                                bool ro, int group) {
    return add(new SOptD2(name, v, unit, label, ro), group);
}
const SOpt* COptionsSet::addOpt(T3<int>& v, const char* name, SStrId label, bool ro, int group) {
    return add(new SOptI3(name, v, label, ro), group);
}
const SOpt* COptionsSet::addOpt(T3<double>& v, const char* name, SStrId label, SOpt::EUnitType unit,
                                bool ro, int group) {
    return add(new SOptD3(name, v, unit, label, ro), group);
}
const SOpt* COptionsSet::addOpt(CColor& v, const char* name, SStrId label, bool ro, int group) {
    return add(new SOptColor(name, v, label, ro), group);
}
const SOpt* COptionsSet::addOpt(CFont& v, const char* name, SStrId label, bool ro, int group) {
    return add(new SOptFont(name, v, label, ro), group);
}
SOptString* COptionsSet::addOpt(CStringSt& v, const char* name, SStrId label, bool ro, int group) {
    return add(new SOptString(name, v, label, ro), group);
}
const SOpt* COptionsSet::addOpt(TVector<int>& v, const char* name, SStrId label, bool ro, int group) {
    return add(new SOptArrT<int>(name, v, label, ro), group);
}
const SOpt* COptionsSet::addOpt(TVector<T2<int>>& v, const char* name, SStrId label, bool ro, int group) {
    return add(new SOptArrT<T2<int>>(name, v, label, ro), group);
}
const SOpt* COptionsSet::addOpt(TVector<double>& v, const char* name, SStrId label, bool ro, int group) {
    return add(new SOptArrT<double>(name, v, label, ro), group);
}
const SOpt* COptionsSet::addOpt(TVector<T2<double>>& v, const char* name, SStrId label, bool ro,
                                int group) {
    return add(new SOptArrT<T2<double>>(name, v, label, ro), group);
}
const SOpt* COptionsSet::addOpt(TVector<T3<double>>& v, const char* name, SStrId label, bool ro,
                                int group) {
    return add(new SOptArrT<T3<double>>(name, v, label, ro), group);
}
const SOpt* COptionsSet::addOpt(TVector<bool>& v, const char* name, SStrId label, bool ro, int group) {
    return add(new SOptArrT<bool>(name, v, label, ro), group);
}
const SOpt* COptionsSet::addOpt(TVector<T2<bool>>& v, const char* name, SStrId label, bool ro,
                                int group) {
    return add(new SOptArrT<T2<bool>>(name, v, label, ro), group);
}
const SOpt* COptionsSet::addOpt(TVectorC<CTStr<char>>& v, const char* name, SStrId label, bool ro,
                                int group) {
    return add(new SOptArrT<CTStr<char>>(name, v, label, ro), group);
}
const SOpt* COptionsSet::addOptEx(SOpt* rec, bool ro, int group) {
    if (!rec)
        return nullptr;
    if (ro)
        rec->setReadOnly(true);
    return add(rec, group);
}

bool COptionsSet::write(CXmlOut& out) {
    ensureOptions();
    preWrite();
    {
        CXmlOutElem set(out, "OptionsSet");
        out.attrStr("name", m_name.str());
        for (SOpt* rec : m_opts)
            if (m_writeAll || rec->isSaved())
                rec->write_base(out);
        postWrite();
    }
    return true;
}

int COptionsSet::read(CXmlIn& in) {
    ensureOptions();
    int applied = 0;
    try {
        if (!findElem(in, "OptionsSet", "name", m_name.str()))
            return 0;
        if (in.isTagStart()) {
            for (;;) {
                in.read(nullptr);
                if (in.isTagEnd()) {
                    if (in.isTag("OptionsSet"))
                        break;
                    continue;
                }
                SOpt* rec = in.isTag("opt") ? findOptByName(in.attrStr("name", "")) : nullptr;
                if (rec) {
                    rec->read_base(in);
                    ++applied;
                } else if (in.isTagStart()) {
                    in.skip();
                }
            }
        }
    } catch (const char*) {
        // What was read stays read; the file-level reader checks a document whole
        // before it applies any of it.
    }
    postRead();
    return applied;
}

} // namespace vq
