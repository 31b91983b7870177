// SPDX-License-Identifier: MIT
#include "CounterFactory.h"

#include "Counter.h"
#include "Helpers/HandOut.h"
#include "Helpers/Results.h"

namespace counting
{

namespace
{

tvx::Result MakeCounter(tvx::IObjectBase* map, tvx::IObjectBase** out)
{
    const auto tallies = tvx::Query<tvx::ISimpleMap>(map);
    TVX_RETURN_FAIL_IF_NULL(tallies.Get());
    const auto logger = CounterFactory::GetImport<tvx::ILogger>("Logger");
    TVX_RETURN_FAIL_IF_NULL(logger.Get());
    return tvx::HandOutNew<Counter>(out, tallies, logger);
}

}  // namespace

tvx::Result CounterFactory::MakeFormatId(tvx::IString** out)
{
    const auto strings = GetImport<tvx::IStringFactory>("Strings");
    TVX_RETURN_FAIL_IF_NULL(strings.Get());
    return strings->CreateString(Counter::FormatId, out);
}

tvx::Result CounterFactory::Create(tvx::IObjectBase** out)
{
    const auto maps = GetImport<tvx::IFactory>("SettingsMaps");
    TVX_RETURN_FAIL_IF_NULL(maps.Get());
    tvx::Ref<tvx::IObjectBase> map;
    TVX_FORWARD_FAILURE(maps->Create(map.Receive()));
    return MakeCounter(map.Get(), out);
}

tvx::Result CounterFactory::GetFormatId(tvx::IString** out)
{
    return MakeFormatId(out);
}

tvx::Result CounterFactory::Deserialize(tvx::IDeserializer* reader, tvx::IObjectBase** out)
{
    TVX_RETURN_EPOINTER_IF_NULL(reader);
    tvx::Ref<tvx::IObjectBase> map;
    TVX_FORWARD_FAILURE(reader->ReadNamedObject(Counter::TalliesName, map.Receive()));
    return MakeCounter(map.Get(), out);
}

}  // namespace counting
