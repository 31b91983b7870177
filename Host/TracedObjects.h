// SPDX-License-Identifier: MIT
#pragma once

#include "Host/HandlerGuard.h"
#include "Host/TraceLog.h"
#include "Host/TracedFace.h"
#include "Host/TracedObject.h"
#include "Host/TracedView.h"

#include <deque>
#include <functional>
#include <set>
#include <unordered_map>
#include <unordered_set>

namespace tvx::host
{

// Where an object came from.
struct TracedSource
{
    std::string_view exportId;
    OperationNamer operation;
    TracedObject* object;  // the one that the interface belongs to; null where that has to be found out
};

// The books of a life tracer: which object of a module stands behind which face. Any thread; the lock is never held
// while code of modules or of the host program runs.
class TracedObjects
{
public:
    explicit TracedObjects(TraceLog& log);
    ~TracedObjects();
    TracedObjects(const TracedObjects&) = delete;
    TracedObjects& operator=(const TracedObjects&) = delete;

    TracedModules& GetModules() { return modules_; }
    TraceLog& GetLog() { return log_; }

    // The face for an interface that a module gives the host program, with the reference that comes with it. What
    // belongs to no module stays itself.
    IObjectBase* Give(IObjectBase* real, const TracedInterface& as, const TracedSource& source) noexcept;

    // The module's own interface for a face; anything else stays itself.
    IObjectBase* GetReal(IObjectBase* given) const;

    // What to give the module for a handler: the guard of one of the host program's.
    IEventHandler* GetGuard(IEventHandler* handler, bool subscribes) noexcept;

    // For what an event carries: the address of the face that the host program has for an interface at this address;
    // any other number stays itself.
    std::uint64_t FindFace(std::uint64_t address) const;

    // The counting of the host program's references. TakeHeld gives false when there is none; NoteZero hears that the
    // object has none of anybody any more.
    void AddHeld(TracedObject& object);
    bool TakeHeld(TracedObject& object);
    void NoteZero(TracedObject& object);

    // For an object that was told to forget who hears of its end: the tracer goes on hearing of it.
    void ListenAgain(const TracedObject& object) const;

    // What the object did is what makeWhat gives. Nothing that goes wrong here changes the call that is found fault
    // with.
    template <class MakeWhat>
    void AddFinding(const TracedObject& object, MakeWhat&& makeWhat) noexcept
    {
        log_.AddFindingOf([&] { return GetName(object) + " " + makeWhat(); });
    }

    // Objects whose module is not mapped any more are out of reach from now on.
    void NoteUnloaded() noexcept;

    // Calls visit, under the lock, for every object on which the host program holds references.
    void VisitHeld(const std::function<void(const TracedObject&)>& visit) const;

private:
    TracedFace* TakeKnown(IObjectBase& real, const TracedInterface& as, const TracedSource& source);
    static std::string GetName(const TracedObject& object);
    void Listen(TracedObject& object) const;
    TracedFace& Take(IObjectBase& real, const TracedModule& module, const TracedView& view, const TracedSource& source);

    // These need the lock.
    TracedFace* FindKnown(const void* real) const;
    TracedObject& FindOrAddObject(IObjectBase& real, const TracedModule& module, const TracedView& view,
                                  const TracedSource& source);
    TracedFace& AddFace(IObjectBase& real, const TracedInterface& as, TracedObject& object);
    void NoteGivenAgain(TracedObject& object, const TracedSource& source) noexcept;
    const std::string* Keep(std::string text) { return &*texts_.insert(std::move(text)).first; }

    void NoteEnd(TracedObject& object);
    bool IsMapped(const TracedObject& object) const noexcept;
    TracedObject* FindObject(std::size_t index) noexcept;

    TraceLog& log_;
    TracedModules modules_;
    const Ref<EndListener> listener_;
    HandlerGuards guards_;

    mutable std::mutex lock_;
    std::deque<TracedObject> objects_;
    std::deque<TracedFace> faces_;
    std::unordered_set<const void*> faceAddresses_;
    std::unordered_map<const void*, TracedFace*> byReal_;        // the latest at each address
    std::unordered_map<const void*, TracedObject*> byIdentity_;  // the latest at each address
    std::set<std::string> texts_;
};

}  // namespace tvx::host
