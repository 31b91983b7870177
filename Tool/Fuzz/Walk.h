// SPDX-License-Identifier: MIT
#pragma once

#include "Tool/Checks/Trial.h"

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace tvx::fuzz
{

// One step of a random walk: an operation, by its place in the list of the walk, and the numbers from which its arguments
// are made. Every number means something.
struct Step
{
    std::uint32_t operation;
    std::uint32_t first;
    std::uint32_t second;

    bool operator==(const Step&) const = default;
};

// Instead of an operation: the walk ends here, and the next one of its sort begins, with the same module.
constexpr Step NextWalk = {0xFFFFFFFF, 0, 0};

// Objects of the module beside a model of them. Each step is done to both; where they come to differ, the trial fails.
class Walker
{
public:
    virtual ~Walker() = default;

    virtual void Do(const Step& step) = 0;

    // Everything that can be seen of the objects against everything that the model knows.
    virtual void Compare() = 0;
};

// A sort of walks over what one export makes.
struct Walk
{
    const char* name;                         // words in small letters with dashes between them
    const char* exportId;                     // what has to be offered
    std::span<const char* const> operations;  // their names, as in replay files
    std::unique_ptr<Walker> (*start)(check::Trial& trial);
};

// All that there are.
std::span<const Walk* const> GetWalks();

// Null when there is none of the name.
const Walk* FindWalk(std::string_view name);

// Random steps of a walk.
std::vector<Step> MakeSteps(const Walk& walk, check::Random& random, std::size_t count);

// Does the steps in their order, and compares at the end of each walk and now and then before it.
void Follow(const Walk& walk, std::span<const Step> steps, check::Trial& trial);

extern const Walk SettingsMapWalk;
extern const Walk UserDataWalk;
extern const Walk MapWalk;
extern const Walk CollectionWalk;
extern const Walk VariantWalk;
extern const Walk VariantArrayWalk;
extern const Walk ImageWalk;
extern const Walk StringWalk;
extern const Walk LoggerWalk;

}  // namespace tvx::fuzz
