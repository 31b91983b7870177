// SPDX-License-Identifier: MIT
#include "Tool/Checks/ImageChanges.h"

namespace tvx::check
{

namespace
{

void ExpectRefused(Trial& trial, const ImageChange& change, const std::string& when, IImage& image, std::int32_t wanted)
{
    trial.Reports(change.name + when, "TVX_CHECK_PRECOND", TVX_E_PRECONDITION,
                  [&] { return (image.*change.set)(wanted); });
}

}  // namespace

void ExpectNeedsWriteLock(Trial& trial, const ImageChange& change)
{
    const ImageShape shape = {3, 2, 1, 0, 0};
    const auto image = MakeCountingImage(trial, shape);
    ExpectRefused(trial, change, " of an unlocked image", *image, 3);
    ExpectRefused(trial, change, " to what is there, of an unlocked image", *image, change.same);
    image->LockRead();
    ExpectRefused(trial, change, " under a read lock", *image, 3);
    image->Unlock();
    ExpectUnchanged(trial, image, shape);
}

void ExpectNeedsPixels(Trial& trial, const ImageChange& change)
{
    const auto image = MakeImage(trial, {.format = 1});
    const auto moved = MoveAway(trial, image);
    const host::WriteLock lock(*image);
    for (const std::int32_t wanted : {3, -1})
        ExpectRefused(trial, change, " of an image whose pixels were moved away", *image, wanted);
    trial.Equal("the description afterwards", Describe(*image), DescribeMovedAway());
}

}  // namespace tvx::check
