// SPDX-License-Identifier: MIT
#include "Counter.h"

#include "CounterFactory.h"
#include "Helpers/Reading.h"
#include "Helpers/Results.h"

#include <string>
#include <utility>

namespace counting
{

namespace
{

constexpr const char Counted[] = "Counted";

}  // namespace

Counter::Counter(tvx::Ref<tvx::ISimpleMap> tallies, tvx::Ref<tvx::ILogger> logger)
    : tallies_(std::move(tallies)),
      logger_(std::move(logger))
{
}

tvx::Result Counter::Count(const char* word)
try
{
    TVX_RETURN_EPOINTER_IF_NULL(word);
    const auto tally = tvx::Read<std::int32_t>(*tallies_, word).ValueOr(0) + 1;
    TVX_FORWARD_FAILURE(tallies_->SetInt(word, tally));
    const auto message = std::string(word) + " makes " + std::to_string(tally);
    logger_->Log("Counting", tvx::LogLevel::Debug, "Counter", "Count", __FILE__, __LINE__, message.c_str());
    Fire(ICounter::Id, Counted, this, 0);
    return tvx::TVX_OK;
}
catch (...)  // want of memory; nothing is thrown out of a module
{
    return tvx::TVX_E_POINTER;
}

// A copy: nobody else writes to the tallies.
tvx::Result Counter::GetTallies(tvx::ISimpleMap** out)
{
    return tallies_->Clone(out);
}

void Counter::SubscribeCounted(tvx::IEventHandler* handler, std::uint64_t cookie, bool connect)
{
    Connect(ICounter::Id, Counted, handler, cookie, connect);
}

tvx::Result Counter::GetFormatId(tvx::IString** out)
{
    return CounterFactory::MakeFormatId(out);
}

tvx::Result Counter::Serialize(tvx::ISerializer* writer)
{
    TVX_RETURN_EPOINTER_IF_NULL(writer);
    return writer->WriteNamedObject(TalliesName, tallies_.Get());
}

}  // namespace counting
