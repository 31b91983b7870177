// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/ClassImpl.h"
#include "Helpers/Ref.h"
#include "ICounter.h"
#include "Interfaces/ILogger.h"
#include "Interfaces/ISerializable.h"

namespace counting
{

// Keeps its tallies in a settings map of another module, and tells them the logger. One thread at a time.
class Counter final : public tvx::ClassImpl<Counter, ICounter, tvx::ISerializable>
{
public:
    using Interfaces = tvx::InterfaceList<ICounter, tvx::IObject, tvx::IObjectBase, tvx::ISerializable>;

    static constexpr const char FormatId[] = "com.example.counting.CounterFormat/1.0";

    // The name of the one object in the document of a counter.
    static constexpr const char TalliesName[] = "Tallies";

    // Neither is null.
    Counter(tvx::Ref<tvx::ISimpleMap> tallies, tvx::Ref<tvx::ILogger> logger);

    tvx::Result Count(const char* word) override;
    tvx::Result GetTallies(tvx::ISimpleMap** out) override;
    void SubscribeCounted(tvx::IEventHandler* handler, std::uint64_t cookie, bool connect) override;

    tvx::Result GetFormatId(tvx::IString** out) override;
    tvx::Result Serialize(tvx::ISerializer* writer) override;

private:
    tvx::Ref<tvx::ISimpleMap> tallies_;
    tvx::Ref<tvx::ILogger> logger_;
};

}  // namespace counting
