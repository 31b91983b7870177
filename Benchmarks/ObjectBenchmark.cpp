// SPDX-License-Identifier: MIT
#include "Benchmarks/Comparison.h"
#include "Benchmarks/LoadedModule.h"
#include "Helpers/CountedImpl.h"
#include "Helpers/Ref.h"
#include "Interfaces/IFactory.h"
#include "Interfaces/ISerializable.h"
#include "Interfaces/ISimpleMap.h"
#include "Interfaces/IUserDataContainer.h"

#include <array>
#include <atomic>
#include <cstring>
#include <memory>

// What a class like the settings map is made of where objects are shared by std::shared_ptr. It stands in a named namespace
// as interfaces that modules share have to: their type names are compared by text where the addresses differ.
namespace tvx::bench::shared
{

struct Base
{
    virtual ~Base() = default;
};
struct Object : Base
{
};
struct Map0 : Object
{
};
struct Map1 : Map0
{
};
struct Map2 : Map1
{
};
struct Map3 : Map2
{
};
struct Map4 : Map3
{
};
struct Map5 : Map4
{
};
struct Serializable
{
    virtual ~Serializable() = default;
};
struct UserData
{
    virtual ~UserData() = default;
};
struct Stranger
{
    virtual ~Stranger() = default;
};
struct Map : Map5, Serializable, UserData
{
};

}  // namespace tvx::bench::shared

namespace
{

using namespace tvx;
using namespace tvx::bench;

// What a settings map answers to, in the order of its list.
constexpr std::array<const char*, 10> Ids = {ISimpleMap5::Id,   ISimpleMap4::Id,       ISimpleMap3::Id, ISimpleMap2::Id,
                                             ISimpleMap1::Id,   ISimpleMap::Id,        IObject::Id,     IObjectBase::Id,
                                             ISerializable::Id, IUserDataContainer::Id};

constexpr const char Missing[] = "com.talvere.general.tvx.IVariantArray/1.0";

Ref<IObjectBase> MakeMap()
{
    Ref<IObjectBase> object;
    GetExport<IFactory>("com.talvere.general.tvx.GenericSimpleMapImplementation/1.1")->Create(object.Receive());
    return object;
}

std::shared_ptr<shared::Base> MakeSharedMap()
{
    return std::make_shared<shared::Map>();
}

void CopyReference(benchmark::State& state, std::int64_t)
{
    const auto map = MakeMap();
    for (auto _ : state)
        benchmark::DoNotOptimize(Ref<IObjectBase>(map));
    if (!map->IsUnique())
        state.SkipWithError("a reference was left behind");
}

// The two operations alone: the holder stays in a register.
void AddRefAndRelease(benchmark::State& state, std::int64_t)
{
    const auto map = MakeMap();
    for (auto _ : state)
        const Ref<IObjectBase> copy(map);
    if (!map->IsUnique())
        state.SkipWithError("a reference was left behind");
}

void CopySharedPointer(benchmark::State& state, std::int64_t)
{
    const auto shared = MakeSharedMap();
    for (auto _ : state)
        benchmark::DoNotOptimize(std::shared_ptr<shared::Base>(shared));
    if (shared.use_count() != 1)
        state.SkipWithError("a reference was left behind");
}

void AddLockedTwice(benchmark::State& state, std::int64_t)
{
    const auto count = std::make_unique<std::atomic<std::uint32_t>>(1);
    for (auto _ : state)
    {
        benchmark::DoNotOptimize(count->fetch_add(1, std::memory_order_relaxed));
        benchmark::DoNotOptimize(count->fetch_sub(1, std::memory_order_acq_rel));
    }
}

// What is measured is checked before: the answer, and that the face carries one reference.
void CheckQuery(benchmark::State& state, IObjectBase& object, const char* id, Result expected)
{
    void* face = nullptr;
    if (object.QueryInterface(id, &face) != expected)
        state.SkipWithError("the query was answered otherwise");
    const auto held = Ref<IObjectBase>::Adopt(static_cast<IObjectBase*>(face));
    if (object.GetRefCount() != (held ? 2U : 1U))
        state.SkipWithError("the query counted wrongly");
}

// The place in the list counts from 1.
void QueryAndRelease(benchmark::State& state, std::int64_t place)
{
    const auto map = MakeMap();
    const auto* const id = Ids[static_cast<std::size_t>(place - 1)];
    CheckQuery(state, *map, id, TVX_OK);
    for (auto _ : state)
    {
        void* face = nullptr;
        map->QueryInterface(id, &face);
        benchmark::DoNotOptimize(Ref<IObjectBase>::Adopt(static_cast<IObjectBase*>(face)));
    }
    if (!map->IsUnique())
        state.SkipWithError("a reference was left behind");
}

// The references that the queries gave are released when the time is taken.
void QueryOnly(benchmark::State& state, IObjectBase& object, const char* id, Result expected)
{
    CheckQuery(state, object, id, expected);
    for (auto _ : state)
    {
        void* face = nullptr;
        benchmark::DoNotOptimize(object.QueryInterface(id, &face));
        benchmark::DoNotOptimize(face);
    }
    while (!object.IsUnique())
        Ref<IObjectBase>::Adopt(&object);
}

void QueryLast(benchmark::State& state, std::int64_t)
{
    QueryOnly(state, *MakeMap(), Ids.back(), TVX_OK);
}

void QueryMissing(benchmark::State& state, std::int64_t)
{
    QueryOnly(state, *MakeMap(), Missing, TVX_E_NOINTERFACE);
}

template <class Wanted>
void CastTo(benchmark::State& state)
{
    const auto map = MakeSharedMap();
    if (!std::dynamic_pointer_cast<Wanted>(map))
        return state.SkipWithError("the cast failed");
    for (auto _ : state)
        benchmark::DoNotOptimize(std::dynamic_pointer_cast<Wanted>(map));
}

// To the base itself, the eighth, nothing is cast: the one above it stands there.
void CastToListed(benchmark::State& state, std::int64_t place)
{
    static constexpr std::array<void (*)(benchmark::State&), 10> casts = {
        CastTo<shared::Map5>,         CastTo<shared::Map4>,    CastTo<shared::Map3>,   CastTo<shared::Map2>,
        CastTo<shared::Map1>,         CastTo<shared::Map0>,    CastTo<shared::Object>, CastTo<shared::Object>,
        CastTo<shared::Serializable>, CastTo<shared::UserData>};
    casts[static_cast<std::size_t>(place - 1)](state);
}

// The comparisons that one writes by hand, in the place of an interface list.
struct Chain
{
    template <class Class>
    static void* FindFace(Class& object, const char* id)
    {
        for (const auto* const known : Ids)
        {
            if (std::strcmp(id, known) == 0)
                return &object;
        }
        return nullptr;
    }
};

class HandWritten final : public CountedImpl<HandWritten, IObjectBase>
{
public:
    using Interfaces = Chain;
};

void CompareLast(benchmark::State& state, std::int64_t)
{
    QueryOnly(state, *MakeRef<HandWritten>(), Ids.back(), TVX_OK);
}

void CompareMissing(benchmark::State& state, std::int64_t)
{
    QueryOnly(state, *MakeRef<HandWritten>(), Missing, TVX_E_NOINTERFACE);
}

Comparison QueryAt(std::int64_t place)
{
    return {.name = "Object/QueryAndRelease",
            .size = place,
            .ours = QueryAndRelease,
            .peer = "std::dynamic_pointer_cast",
            .theirs = CastToListed,
            .goal = 0.55};
}

const Comparisons Rows = {
    {.name = "Object/AddRefAndRelease",
     .ours = CopyReference,
     .peer = "copy of a std::shared_ptr",
     .theirs = CopySharedPointer,
     .goal = 0.95},
    // Two virtual calls with nothing but these operations in them come to 1.39: a call stores its return address, which has
    // to be written before a locked operation begins.
    {.name = "Object/AddRefAndRelease/Bare",
     .ours = AddRefAndRelease,
     .peer = "a pair of locked adds",
     .theirs = AddLockedTwice,
     .goal = 1.15,
     .limit = 1.5},
    QueryAt(1),
    QueryAt(6),
    QueryAt(8),
    QueryAt(9),
    QueryAt(10),
    {.name = "Object/QueryLast",
     .ours = QueryLast,
     .peer = "a chain of ten strcmp",
     .theirs = CompareLast,
     .goal = 0.45},
    {.name = "Object/QueryMiss",
     .ours = QueryMissing,
     .peer = "a chain of ten strcmp",
     .theirs = CompareMissing,
     .goal = 0.45},
};

}  // namespace
