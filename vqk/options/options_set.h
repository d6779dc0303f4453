// vqk/options/options_set.h
//
// COptionsSet: a named collection of option records bound to a subclass's members,
// organised in groups, stored as one "OptionsSet" element of the per-user options file.
// Records are declared in addOptions(), called by the first operation that needs them.
//
//   class CMySettings : public vq::COptionsSet {
//   public:
//       CMySettings() : COptionsSet("My") {}
//       int limit = 30;
//       vq::CStringSt schema;
//   protected:
//       void addOptions() override {
//           addOpt(limit, "limit", vq::SStrId{});
//           addOpt(schema, "schema", vq::SStrId{});
//       }
//   };
//   CMySettings s;
//   s.read(vq::optionsFilePath());      // absent file or set: the defaults stay
//   s.write(vq::optionsFilePath());     // merged into the file, other sets kept
//
// read() returns the number of "opt" elements applied (0 when the file holds no set of
// this name), -1 when the file is missing or cannot be opened, -2 when it is damaged
// (not readable to its end); on -1 and -2 no variable has changed. write(path) returns
// false when the set could not be merged (a damaged target stays byte for byte as it
// was). Copies of a set hold copies of its records, still bound to the same variables.
#pragma once

#include "vqk/options/opt_array.h"
#include "vqk/options/opt_kinds.h"

namespace vq {

struct VQK_API SGroup {
    explicit SGroup(int id = 0) : id(id) {}
    ~SGroup();
    SGroup(const SGroup&) = delete;
    SGroup& operator=(const SGroup&) = delete;
    SGroup* findGroup(int id);
    SGroup* addGroup(int id);

    int id;
    TVector<SOpt*> opts;        // members, owned by the set
    TVector<SGroup*> children;  // owned
};

class VQK_API COptionsSet {
public:
    COptionsSet();
    explicit COptionsSet(const char* name);
    virtual ~COptionsSet();
    COptionsSet(const COptionsSet& o);
    COptionsSet& operator=(const COptionsSet& o);

    virtual void postRead() {}
    virtual void preWrite() {}
    virtual void postWrite() {}

    void setName(const char* name) { m_name = name; }
    const char* name() const { return m_name.str(); }
    void setWriteAll(bool on) { m_writeAll = on; }
    bool writeAll() const { return m_writeAll; }

    int nOpt();
    SOpt* opt(int i);
    int nGroup();
    SGroup* group(int i);
    SGroup* findGroup(int id);
    SOpt* findOpt(int labelId);
    SOpt* findOptByName(const char* name);

    int read(const char* path);
    int read(CXmlIn& in);
    bool write(const char* path);
    bool write(CXmlOut& out);
    void clear();
    bool isEmpty();

protected:
    virtual void addOptions() {}

    // Declaring: each makes the record for the variable's kind, appends it and puts it
    // into group `group` (0: none) when the set has that group.
    const SOpt* addOptBool(bool& v, const char* name, SStrId label, bool readOnly = false, int group = 0);
    const SOpt* addOpt(bool& v, const char* name, SStrId label, bool readOnly = false, int group = 0);
    const SOpt* addOpt(int& v, const char* name, SStrId label, const int* table, int count,
                       bool readOnly = false, int group = 0);
    const SOpt* addOpt(int& v, const char* name, SStrId label, bool readOnly = false, int group = 0,
                       const T2<int>& range = T2<int>{INT_MIN, INT_MAX});
    SOptEnum* addOptEnum(int& v, const char* name, SStrId label, const char* const* labels, int nLabels,
                         bool readOnly = false, int group = 0, const int* table = nullptr, int mask = 0);
    const SOpt* addOpt(float& v, const char* name, SStrId label, SOpt::EUnitType unit = SOpt::eNone,
                       bool readOnly = false, int group = 0);
    const SOpt* addOpt(double& v, const char* name, SStrId label, SOpt::EUnitType unit = SOpt::eNone,
                       bool readOnly = false, int group = 0,
                       const T2<double>& range = T2<double>{-1e308, 1e308});
    const SOpt* addOpt(T2<int>& v, const char* name, SStrId label, bool readOnly = false, int group = 0);
    const SOpt* addOpt(T2<double>& v, const char* name, SStrId label, SOpt::EUnitType unit = SOpt::eNone,
                       bool readOnly = false, int group = 0);
    const SOpt* addOpt(T3<int>& v, const char* name, SStrId label, bool readOnly = false, int group = 0);
    const SOpt* addOpt(T3<double>& v, const char* name, SStrId label, SOpt::EUnitType unit = SOpt::eNone,
                       bool readOnly = false, int group = 0);
    const SOpt* addOpt(CColor& v, const char* name, SStrId label, bool readOnly = false, int group = 0);
    const SOpt* addOpt(CFont& v, const char* name, SStrId label, bool readOnly = false, int group = 0);
    SOptString* addOpt(CStringSt& v, const char* name, SStrId label, bool readOnly = false, int group = 0);
    const SOpt* addOpt(TVector<int>& v, const char* name, SStrId label, bool readOnly = false, int group = 0);
    const SOpt* addOpt(TVector<T2<int>>& v, const char* name, SStrId label, bool readOnly = false, int group = 0);
    const SOpt* addOpt(TVector<double>& v, const char* name, SStrId label, bool readOnly = false, int group = 0);
    const SOpt* addOpt(TVector<T2<double>>& v, const char* name, SStrId label, bool readOnly = false,
                       int group = 0);
    const SOpt* addOpt(TVector<T3<double>>& v, const char* name, SStrId label, bool readOnly = false,
                       int group = 0);
    const SOpt* addOpt(TVector<bool>& v, const char* name, SStrId label, bool readOnly = false, int group = 0);
    const SOpt* addOpt(TVector<T2<bool>>& v, const char* name, SStrId label, bool readOnly = false,
                       int group = 0);
    const SOpt* addOpt(TVectorC<CTStr<char>>& v, const char* name, SStrId label, bool readOnly = false,
                       int group = 0);
    // Adds a record made elsewhere; the set owns it from now on.
    const SOpt* addOptEx(SOpt* rec, bool readOnly = false, int group = 0);
    SGroup* addGroup(int id, bool topLevel = true);

private:
    void ensureOptions();
    template <class R> R* add(R* rec, int group);

    bool m_writeAll = true;
    CTStr<char> m_name;
    TVector<SOpt*> m_opts;
    TVector<SGroup*> m_groups;
};

} // namespace vq
