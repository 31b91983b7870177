// SPDX-License-Identifier: MIT
#include "Benchmarks/Comparison.h"
#include "Benchmarks/LoadedModule.h"
#include "Helpers/ClassImpl.h"
#include "Helpers/Ref.h"
#include "Host/TracedSlots.h"
#include "Interfaces/IFactory.h"

#include <boost/signals2.hpp>

#include <vector>

// Firing alone: the settings map has an operation that does nothing else.
namespace
{

using namespace tvx;
using namespace tvx::bench;

// Counts what it hears.
class Counter final : public ClassImpl<Counter, IEventHandler>
{
public:
    using Interfaces = InterfaceList<IEventHandler, IObject, IObjectBase>;

    Result OnEvent(IObject*, const char*, const char*, std::uint64_t, std::uint64_t) override
    {
        ++heard_;
        return TVX_OK;
    }

    std::int64_t GetHeard() const { return heard_; }

private:
    std::int64_t heard_ = 0;
};

std::vector<Ref<Counter>> MakeCounters(std::int64_t count)
{
    std::vector<Ref<Counter>> counters;
    for (std::int64_t number = 0; number < count; ++number)
        counters.push_back(MakeRef<Counter>());
    return counters;
}

void Check(benchmark::State& state, const std::vector<Ref<Counter>>& counters)
{
    for (const auto& counter : counters)
    {
        if (counter->GetHeard() != state.iterations())
            state.SkipWithError("a handler did not hear of every firing");
    }
}

void Fire(benchmark::State& state, std::int64_t count)
{
    const auto counters = MakeCounters(count);
    Ref<IObjectBase> object;
    GetExport<IFactory>("com.talvere.general.tvx.GenericSimpleMapImplementation/1.1")->Create(object.Receive());
    const auto map = Query<ISimpleMap5>(object);
    for (const auto& counter : counters)
        map->SubscribeChanged(counter.Get(), 0, true);
    auto& events = static_cast<host::ISimpleMapEvents&>(*map);
    for (auto _ : state)
    {
        events.FireChanged(nullptr);
        benchmark::ClobberMemory();
    }
    Check(state, counters);
}

void FireSignal(benchmark::State& state, std::int64_t count)
{
    const auto counters = MakeCounters(count);
    boost::signals2::signal<void(IObject*, const char*, const char*, std::uint64_t)> signal;
    for (const auto& counter : counters)
        signal.connect([handler = counter.Get()](IObject* sender, const char* id, const char* name, std::uint64_t param)
                       { handler->OnEvent(sender, id, name, param, 0); });
    for (auto _ : state)
    {
        signal(nullptr, ISimpleMap5::Id, "Changed", 0);
        benchmark::ClobberMemory();
    }
    Check(state, counters);
}

Comparison FireTo(std::int64_t count, double goal, double limit = 0)
{
    return {.name = "Events/Fire",
            .size = count,
            .ours = Fire,
            .peer = "Boost.Signals2",
            .theirs = FireSignal,
            .goal = goal,
            .limit = limit};
}

Comparison FireToNobody()
{
    auto row = FireTo(0, 0.05);
    row.name += "/0";
    return row;
}

// For one handler half of the time is one locked operation, which waits until all that was stored before is written.
const Comparisons Rows = {FireToNobody(), FireTo(1, 0.15, 0.17), FireTo(10, 0.1), FireTo(100, 0.1)};

}  // namespace
