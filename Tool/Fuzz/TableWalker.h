// SPDX-License-Identifier: MIT
#pragma once

#include "Tool/Fuzz/Walk.h"

#include <array>
#include <cstddef>
#include <memory>

namespace tvx::fuzz
{

// What a step of a walk over a model does.
template <class Model>
struct Operation
{
    const char* name;  // words in small letters with dashes between them; it never changes, replays name it
    void (Model::*run)(const Step& step);
};

// The names alone, in their order.
template <class Model, std::size_t Count>
constexpr std::array<const char*, Count> GetNames(const Operation<Model> (&operations)[Count])
{
    std::array<const char*, Count> names{};
    for (std::size_t place = 0; place < Count; ++place)
        names[place] = operations[place].name;
    return names;
}

// A walker whose steps are the rows of Model::Operations.
template <class Model>
class TableWalker : public Walker
{
public:
    static std::unique_ptr<Walker> Start(check::Trial& trial) { return std::make_unique<Model>(trial); }

    void Do(const Step& step) final { (static_cast<Model*>(this)->*Model::Operations[step.operation].run)(step); }
};

}  // namespace tvx::fuzz
