// SPDX-License-Identifier: MIT
#include "Tool/Checks/Check.h"
#include "Tool/Checks/Objects.h"
#include "Tool/Fuzz/Walk.h"

namespace tvx::check
{

namespace
{

constexpr std::size_t WalkCount = 3;
constexpr std::size_t StepCount = 150;

// As the command fuzz does it for longer, in walks that the seed decides.
template <const fuzz::Walk& Walk>
void FollowRandomly(Trial& trial)
{
    for (std::size_t walk = 0; walk < WalkCount; ++walk)
        fuzz::Follow(Walk, fuzz::MakeSteps(Walk, trial.GetRandom(), StepCount), trial);
}

constexpr const char Rule[] =
    "Whatever is done in whatever order, the object stays what a plain model of it is: the same content, result codes, "
    "references, events and report lines.";

constexpr Check StringWalks[] = {
    {"value-string-random-walk", "Strings are made, shared and dropped at random, beside their texts.", Rule,
     FollowRandomly<fuzz::StringWalk>},
};
constexpr Check VariantWalks[] = {
    {"value-variant-random-walk", "Variants of all types are made, asked and dropped at random, beside their values.",
     Rule, FollowRandomly<fuzz::VariantWalk>},
};
constexpr Check SettingsMapWalks[] = {
    {"value-settings-map-random-walk", "A settings map is written, read, copied and switched at random, beside a map.",
     Rule, FollowRandomly<fuzz::SettingsMapWalk>},
    {"value-user-data-random-walk", "User data is set, replaced, removed and listed at random, beside a map.", Rule,
     FollowRandomly<fuzz::UserDataWalk>},
};
constexpr Check MapWalks[] = {
    {"value-map-random-walk", "A dictionary is written, read and serialised at random, beside a map.", Rule,
     FollowRandomly<fuzz::MapWalk>},
};
constexpr Check CollectionWalks[] = {
    {"value-collection-random-walk", "Items are added, moved, removed and asked for at random, beside a vector.", Rule,
     FollowRandomly<fuzz::CollectionWalk>},
};
constexpr Check VariantArrayWalks[] = {
    {"value-variant-array-random-walk", "Elements of all types are appended at random, beside a vector.", Rule,
     FollowRandomly<fuzz::VariantArrayWalk>},
};
constexpr Check ImageWalks[] = {
    {"image-random-walk", "Images are painted, locked, changed, copied and converted at random, beside their bytes.",
     Rule, FollowRandomly<fuzz::ImageWalk>},
};
constexpr Check LoggerWalks[] = {
    {"logger-random-walk", "Levels are set and messages logged at random, beside a table of levels.", Rule,
     FollowRandomly<fuzz::LoggerWalk>},
};

}  // namespace

extern const Family StringWalkFamily = {"values", StringExport, Needs::Module, StringWalks};
extern const Family VariantWalkFamily = {"values", VariantExport, Needs::Module, VariantWalks};
extern const Family SettingsMapWalkFamily = {"values", SimpleMapExport, Needs::Module, SettingsMapWalks};
extern const Family MapWalkFamily = {"values", MapExport, Needs::Module, MapWalks};
extern const Family CollectionWalkFamily = {"values", CollectionExport, Needs::Module, CollectionWalks};
extern const Family VariantArrayWalkFamily = {"values", VariantArrayExport, Needs::Module, VariantArrayWalks};
extern const Family ImageWalkFamily = {"images", ImageExport, Needs::Module, ImageWalks};
extern const Family LoggerWalkFamily = {"logger", LoggerExport, Needs::Module, LoggerWalks};

}  // namespace tvx::check
