// SPDX-License-Identifier: MIT
#include "Host/JsonSerializer/JsonInput.h"

#include "Host/JsonSerializer/JsonFailure.h"
#include "Host/JsonSerializer/JsonTree.h"

namespace tvx::host
{

std::string JsonInput::Begin(std::string_view text)
{
    End();
    auto problem = ParseJson(text, tree_);
    if (problem.empty())
        levels_.push_back({.node = &tree_});
    return problem;
}

void JsonInput::End()
{
    levels_.clear();
    tree_ = nullptr;
}

// Names that the serializer keeps for itself are nobody's to read.
JsonInput::Place JsonInput::FindNamed(const char* name) const
{
    if (levels_.empty() || *name == ReservedMark || !levels_.back().node->is_object())
        return {};
    const auto& node = *levels_.back().node;
    const auto found = node.find(name);
    return found == node.end() ? Place() : Place{.value = &*found, .name = found.key()};
}

JsonInput::Place JsonInput::FindNextItem() const
{
    if (levels_.empty() || !levels_.back().node->is_array())
        return {};
    const auto& [node, depth, sequence, next] = levels_.back();
    return next == node->size() ? Place() : Place{.value = &(*node)[next], .name = sequence, .item = next + 1};
}

bool JsonInput::BeginSequence(const Place& place)
{
    if (place.value == nullptr || !place.value->is_array())
        return false;
    levels_.push_back({.node = place.value, .depth = GetDepth(), .sequence = place.name});
    return true;
}

bool JsonInput::EndSequence()
{
    if (levels_.empty() || !levels_.back().node->is_array())
        return false;
    levels_.pop_back();
    return true;
}

OpenObject<JsonInput::Level> JsonInput::EnterObject(const Place& place)
{
    return {levels_, {.node = place.value, .depth = GetDepth() + 1}};
}

std::string JsonInput::Describe(const Place& place)
{
    const auto name = QuoteForProblem(place.name);
    return place.item == 0 ? name : "item " + std::to_string(place.item) + " of " + name;
}

}  // namespace tvx::host
