// vqk/jobs/event.h
//
// A single-threaded event with connectable handles. An event keeps the handles
// connected to it; invoke(a, b) calls their handlers with two untyped pointers:
//
//   struct CSaved : vq::event::CHandleBase {
//       bool onEvent(void* doc, void*) override { refresh(doc); return true; }
//   };
//   vq::event::CEventVoid saved(vq::event::eAll, vq::event::eForward);
//   CSaved view;
//   view.connect(saved);
//   saved.invoke(&doc, nullptr);
//
// The type selects who is called: eAll calls every handle; eFirst stops at the first
// handler that returns true (the one that took care of it). The order is connection
// order (eForward) or its reverse (eReverse: the handle connected last, typically the
// most specific, comes first). invoke returns true when a handler returned true.
//
// Either side may go first: a handle destroyed before its event disconnects itself;
// an event destroyed before its handles disconnects them all. A handler may disconnect
// or destroy any handle, itself included, while the event runs: a handle no longer
// connected is skipped, and a handle connected meanwhile is called from the next
// invoke on. A handler must not destroy the event that is calling it.
#pragma once

#include "vqk/config.h"
#include "vqk/text/vector.h"

namespace vq {
namespace event {

enum EType { eAll = 0, eFirst = 1 };
enum EOrder { eForward = 0, eReverse = 1 };

class CHandleBase;

class VQK_API CEventVoid {
public:
    explicit CEventVoid(EType type = eAll, EOrder order = eForward) : m_type(type), m_order(order) {}
    ~CEventVoid() { clear(); }
    CEventVoid(const CEventVoid&) = delete;
    CEventVoid& operator=(const CEventVoid&) = delete;

    bool is() const { return !m_handles.empty(); }
    bool invoke(void* a, void* b);
    // Disconnects every handle.
    void clear();
    // The handle's place in connection order, -1 when not connected here.
    int index(const CHandleBase& handle) const;
    EType type() const { return m_type; }
    EOrder order() const { return m_order; }

private:
    friend class CHandleBase;

    EType m_type;
    EOrder m_order;
    TVector<CHandleBase*> m_handles;
};

class VQK_API CHandleBase {
public:
    CHandleBase() = default;
    virtual ~CHandleBase() { disconnect(); }
    CHandleBase(const CHandleBase&) = delete;
    CHandleBase& operator=(const CHandleBase&) = delete;

    // Returns true when it took care of the event (ends an eFirst event's round).
    virtual bool onEvent(void* a, void* b) = 0;

    void connect(CEventVoid& event);
    void disconnect();
    CEventVoid* event() const { return m_event; }

private:
    friend class CEventVoid;
    CEventVoid* m_event = nullptr;
};

} // namespace event
} // namespace vq
