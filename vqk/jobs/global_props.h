// vqk/jobs/global_props.h
//
// CGlobalProps lets an application publish properties that any part of a tool may ask
// for (its product name and version, named settings) without the parts knowing the
// application. The application derives from it and creates one instance for the life
// of the process; globalProps() hands that instance out. The library itself never
// calls these operations.
//
//   class CMyProps : public vq::CGlobalProps { ... };
//   static CMyProps props;                      // becomes globalProps()
//   const char* name = vq::globalProps().productName();
//
// Before an application has created its instance (or after it is destroyed)
// globalProps() returns a built-in one with no properties: empty names, every lookup
// false. The latest living instance wins.
#pragma once

#include "vqk/config.h"
#include "vqk/text/str.h"

namespace vq {

class VQK_API CGlobalProps {
public:
    virtual const char* productName() const = 0;
    virtual const char* productVersion() const = 0;
    // Copies the property's text into `value`; false (value untouched) when unknown.
    virtual bool getProp(const char* name, CStr& value) const = 0;
    // False when the application does not accept the property.
    virtual bool setProp(const char* name, const char* value) = 0;

protected:
    // Construction makes the instance the process's; destruction hands back to the one
    // before. The interface is never deleted through this base, hence not virtual.
    CGlobalProps();
    ~CGlobalProps();
    CGlobalProps(const CGlobalProps&) = delete;
    CGlobalProps& operator=(const CGlobalProps&) = delete;
};

VQK_API CGlobalProps& globalProps();

} // namespace vq
