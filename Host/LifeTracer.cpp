// SPDX-License-Identifier: MIT
#include "Host/LifeTracer.h"

#include "Host/TracedObjects.h"
#include "Host/VariableExpansion.h"

#include <algorithm>
#include <iostream>
#include <tuple>

namespace tvx::host
{

namespace
{

constexpr const char Variable[] = "TVX_TRACE_LIVES";

// One line at a time.
LifeTracer::WriteLine MakeWriter(std::ostream& stream)
{
    return [&stream, lock = std::make_shared<std::mutex>()](std::string_view line)
    {
        const std::lock_guard<std::mutex> guard(*lock);
        stream << line << '\n' << std::flush;
    };
}

std::string NameManager()
{
    return "the library manager";
}

HeldObject Describe(const TracedObject& object)
{
    return {*object.className, object.module->name, *object.exportId, *object.givenBy, object.held};
}

auto GetClass(const HeldObject& object)
{
    return std::tie(object.className, object.module);
}

bool IsBefore(const HeldObject& left, const HeldObject& right)
{
    return GetClass(left) < GetClass(right);
}

std::string Count(std::size_t number, const char* one, const char* many)
{
    return std::to_string(number) + (number == 1 ? one : many);
}

}  // namespace

LifeTracer::LifeTracer() : LifeTracer(std::cerr) {}

LifeTracer::LifeTracer(std::ostream& stream) : LifeTracer(MakeWriter(stream)) {}

LifeTracer::LifeTracer(WriteLine write)
    : log_(std::make_unique<TraceLog>(std::move(write))),
      objects_(std::make_unique<TracedObjects>(*log_))
{
}

LifeTracer::~LifeTracer() = default;

// It stays for references that are released while the process ends.
LifeTracer* LifeTracer::FindOfProcess()
{
    const auto value = ReadEnvironmentVariable(Variable).value_or("");
    if (value.empty() || value == "0")
        return nullptr;
    static auto* const tracer = std::make_unique<LifeTracer>().release();
    return tracer;
}

std::vector<HeldObject> LifeTracer::GetHeld() const
{
    return GetHeld([](const TracedObject&) { return true; });
}

std::vector<std::string> LifeTracer::GetFindings() const
{
    return log_->GetFindings();
}

void LifeTracer::Report() const
{
    Report(GetHeld());
}

void LifeTracer::Report(const std::vector<std::filesystem::path>& modules) const
{
    std::vector<std::filesystem::path> files;
    std::transform(modules.begin(), modules.end(), std::back_inserter(files), MakeCanonical);
    const auto isMeant = [&](const TracedObject& object)
    { return std::find(files.begin(), files.end(), object.module->file) != files.end(); };
    Report(GetHeld(isMeant));
}

void LifeTracer::AddModule(const std::filesystem::path& file)
{
    objects_->GetModules().Add(file);
}

Ref<IObjectBase> LifeTracer::Trace(Ref<IObjectBase> object, std::string_view exportId)
{
    const auto& as = *FindTracedInterface(IObjectBase::Id);
    return Ref<IObjectBase>::Adopt(objects_->Give(object.Detach(), as, {exportId, &NameManager, nullptr}));
}

Ref<IObjectBase> LifeTracer::GetOwn(const Ref<IObjectBase>& object) const
{
    return Ref<IObjectBase>(objects_->GetReal(object.Get()));
}

void LifeTracer::NoteUnloaded() noexcept
{
    objects_->NoteUnloaded();
}

std::vector<HeldObject> LifeTracer::GetHeld(const IsMeant& isMeant) const
{
    std::vector<HeldObject> held;
    const auto add = [&](const TracedObject& object)
    {
        if (isMeant(object))
            held.push_back(Describe(object));
    };
    objects_->VisitHeld(add);
    return held;
}

void LifeTracer::Report(std::vector<HeldObject> held) const
{
    if (held.empty())
        log_->Write("nothing is still held");
    std::stable_sort(held.begin(), held.end(), IsBefore);
    for (auto first = held.begin(); first != held.end();)
    {
        const auto last = std::upper_bound(first, held.end(), *first, IsBefore);
        log_->Write(Count(static_cast<std::size_t>(last - first), " object", " objects") + " of " + first->className +
                    " (" + first->module + ") still held");
        for (; first != last; ++first)
            log_->Write("  " + Count(first->references, " reference", " references") + ", given by " + first->givenBy +
                        ", export " + first->exportId);
    }
}

}  // namespace tvx::host
