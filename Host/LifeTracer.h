// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/Ref.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <iosfwd>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tvx::host
{

class TraceLog;
class TracedObjects;
struct TracedObject;

// An object of a module on which the host program holds references.
struct HeldObject
{
    std::string className;     // as C++ spells it
    std::string module;        // the name of its file
    std::string exportId;      // the export that it came from, directly or by way of other objects
    std::string givenBy;       // the operation that gave it, such as IFactory::Create
    std::uint32_t references;  // the program's own
};

// Watches what crosses between the host program and the modules: says in the end which objects the program still holds,
// and at once when it releases or uses one that it must not, and when a module calls a handler that is gone.
// Docs/LifeTracer.md tells what it sees and what not.
//
// A library manager is told to use it by LibraryManager::TraceLives, or by the environment variable TVX_TRACE_LIVES.
// What the program gets through that manager are the tracer's own objects, which stand in for the modules' and stay
// until the tracer dies: it has to outlive the manager and every reference. Any thread.
class LifeTracer
{
public:
    // What takes the lines, each without its end.
    using WriteLine = std::function<void(std::string_view line)>;

    // Every finding and every line of a report goes to standard error, to the stream, or to write, which may be called
    // by several threads at once. The stream has to outlive the tracer.
    LifeTracer();
    explicit LifeTracer(std::ostream& stream);
    explicit LifeTracer(WriteLine write);
    ~LifeTracer();
    LifeTracer(const LifeTracer&) = delete;
    LifeTracer& operator=(const LifeTracer&) = delete;

    // The tracer of the process, made when it is first asked for and never destroyed; null unless TVX_TRACE_LIVES is
    // set to something else than 0 or nothing.
    static LifeTracer* FindOfProcess();

    // What is still held, also of modules that have been unmapped.
    std::vector<HeldObject> GetHeld() const;

    // What the program or a module did wrong so far, each as one line.
    std::vector<std::string> GetFindings() const;

    // Writes what is still held, by classes.
    void Report() const;

    // For library managers: the module's objects are to be traced; the traced object of an export; the module's own object
    // behind a traced one, or the object itself; the report on the objects of some modules; and that modules have been
    // unmapped.
    void AddModule(const std::filesystem::path& file);
    Ref<IObjectBase> Trace(Ref<IObjectBase> object, std::string_view exportId);
    Ref<IObjectBase> GetOwn(const Ref<IObjectBase>& object) const;
    void Report(const std::vector<std::filesystem::path>& modules) const;
    void NoteUnloaded() noexcept;

private:
    using IsMeant = std::function<bool(const TracedObject&)>;

    std::vector<HeldObject> GetHeld(const IsMeant& isMeant) const;
    void Report(std::vector<HeldObject> held) const;

    std::unique_ptr<TraceLog> log_;
    std::unique_ptr<TracedObjects> objects_;
};

}  // namespace tvx::host
