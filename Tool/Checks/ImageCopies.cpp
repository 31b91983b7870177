// SPDX-License-Identifier: MIT
#include "Tool/Checks/ImageBench.h"
#include "Tool/Checks/ImageDoubles.h"
#include "Tool/Checks/MacroLines.h"

#include <algorithm>
#include <cstdint>

namespace tvx::check
{

namespace
{

constexpr ImageShape Colored = {13, 5, 1, 1, 8};

Ref<IImage> Copy(Trial& trial, IConstImage* source)
{
    const auto factory = GetImageFactory(trial);
    return Make<IImage>(trial, "CreateCopy", [&](IImage** out) { return factory->CreateCopy(source, out); });
}

Ref<IConstImage> CopyConst(Trial& trial, IConstImage* source)
{
    const auto factory = GetImageFactory(trial);
    return Make<IConstImage>(trial, "CreateConstCopy",
                             [&](IConstImage** out) { return factory->CreateConstCopy(source, out); });
}

template <class Face>
void ExpectCopy(Trial& trial, const Ref<Face>& copy)
{
    trial.Equal("the description of the copy", Describe(*copy), Describe(Colored));
    ExpectPixels(trial, "the pixels of the copy", ReadPixels(trial, copy, Colored), CountBytes(Colored));
    trial.Equal("the references on the copy", copy->GetRefCount(), 1u);
}

void CopiesAnImage(Trial& trial)
{
    const auto image = MakeCountingImage(trial, Colored);
    const auto copy = Copy(trial, image.Get());
    ExpectUnlocked(trial, "the copy", *copy);
    ExpectCopy(trial, copy);
    ExpectUnlocked(trial, "the source afterwards", *image);
    ExpectUnchanged(trial, image, Colored);
    trial.Equal("the references on the source", image->GetRefCount(), 1u);
}

void CopiesAnImageThatNeverChanges(Trial& trial)
{
    const auto view = MakeConstImage(trial, Colored);
    ExpectCopy(trial, Copy(trial, view.Get()));
    ExpectPixels(trial, "the pixels of the source", ReadPixels(trial, view, Colored), CountBytes(Colored));
    trial.Equal("the references on the source", view->GetRefCount(), 1u);
}

void CopiesIntoPixelsOfItsOwn(Trial& trial)
{
    const ImageShape shape = {2, 2, 0, 0, 0};
    const auto image = MakeCountingImage(trial, shape);
    const auto copy = Copy(trial, image.Get());
    const auto write = [&](const Ref<IImage>& written, std::uint8_t value)
    {
        const host::WriteLock lock(*written);
        auto* const pixels = static_cast<std::uint8_t*>(written->GetWritableData());
        trial.Expect(pixels != nullptr, "GetWritableData to give the pixels", "null");
        pixels[0] = value;
    };
    write(copy, 99);
    write(image, 77);
    ExpectPixels(trial, "the pixels of the copy", ReadPixels(trial, copy, shape), ImageBytes{99, 2, 3, 4});
    ExpectPixels(trial, "the pixels of the source", ReadPixels(trial, image, shape), ImageBytes{77, 2, 3, 4});
}

void UnlocksASourceThatWasLocked(Trial& trial)
{
    const auto image = MakeCountingImage(trial, Colored);
    image->LockRead();
    const auto first = Copy(trial, image.Get());
    ExpectUnlocked(trial, "the source, read by the caller before,", *image);
    image->LockWrite();
    const auto second = Copy(trial, image.Get());
    ExpectUnlocked(trial, "the source, written by the caller before,", *image);
    ExpectCopy(trial, first);
    ExpectCopy(trial, second);
}

void CopiesImagesWithoutPixels(Trial& trial)
{
    constexpr ImageShape shapes[] = {
        {0, 2, 0, 0, 3}, {2, 0, 0, 0, 3}, {-2, 2, 1, 0, 3}, {2, 2, 7, 0, 3}, {2, 2, 0, 9, 3}};
    for (const auto& shape : shapes)
    {
        const auto image = MakeImage(trial, shape);
        trial.Equal("the description of the copy", Describe(*Copy(trial, image.Get())), Describe(*image));
    }
}

void LocksASourceOfAnotherMake(Trial& trial)
{
    const auto foreign = MakeRef<ForeignImage>();
    const auto copy = Copy(trial, foreign.Get());
    auto calls = foreign->calls;
    calls.erase(std::unique(calls.begin(), calls.end()), calls.end());  // it may be asked for its pixels more than once
    trial.Equal("what is done with the source", calls, std::vector<std::string>{"LockRead", "GetData", "Unlock"});
    ExpectPixels(trial, "the pixels of the copy", ReadPixels(trial, copy, ImageShape()), ImageBytes{1, 2, 3, 4});
    trial.Equal("the references on the source", foreign->GetRefCount(), 1u);
}

void CopiesASourceOfAnotherMakeThatNeverChanges(Trial& trial)
{
    const auto foreign = MakeRef<ForeignConstImage>();
    const auto copy = Copy(trial, foreign.Get());
    trial.Equal("the description of the copy", Describe(*copy), Describe(*foreign));
    ExpectPixels(trial, "the pixels of the copy", ReadPixels(trial, copy, ImageShape()), ImageBytes{1, 2, 3, 4});
}

void RefusesANullSource(Trial& trial)
{
    const auto factory = GetImageFactory(trial);
    Ref<IImage> copy;
    trial.Reports("CreateCopy of null", "TVX_CHECK_PRECOND", TVX_E_PRECONDITION,
                  [&] { return factory->CreateCopy(nullptr, copy.Receive()); });
    trial.Same("what it gave", copy.Get(), nullptr);
}

void RefusesASourceWithoutItsPixels(Trial& trial)
{
    const auto factory = GetImageFactory(trial);
    const auto image = MakeCountingImage(trial, Colored);
    const auto view = MoveAway(trial, image);
    const auto again =
        Make<IImage>(trial, "MakeMutable", [&](IImage** out) { return factory->MakeMutable(view.Get(), out); });
    for (IConstImage* const source : {static_cast<IConstImage*>(image.Get()), view.Get()})
    {
        Ref<IImage> copy;
        trial.Reports("CreateCopy of an image whose pixels were moved away", "TVX_CHECK_PRECOND", TVX_E_PRECONDITION,
                      [&] { return factory->CreateCopy(source, copy.Receive()); });
        trial.Same("what it gave", copy.Get(), nullptr);
    }
}

void ForwardsWhatCreateRefuses(Trial& trial)
{
    const auto factory = GetImageFactory(trial);
    const auto image = MakeImage(trial, {});
    ReportsInOrder(trial, "CreateCopy with a null out", {"TVX_CHECK_PRECOND", "TVX_FORWARD_FAILURE"},
                   TVX_E_PRECONDITION, [&] { return factory->CreateCopy(image.Get(), nullptr); });
    const auto large = MakeRef<ForeignConstImage>();
    large->width = INT32_MAX;
    large->height = INT32_MAX;
    Ref<IImage> copy;
    trial.Reports("CreateCopy of an image that is too large", "TVX_FORWARD_FAILURE", TVX_E_EXCEPTION,
                  [&] { return factory->CreateCopy(large.Get(), copy.Receive()); });
}

void MakesCopiesThatNeverChange(Trial& trial)
{
    const auto image = MakeCountingImage(trial, Colored);
    const auto copy = CopyConst(trial, image.Get());
    ExpectCopy(trial, copy);
    ExpectUnchanged(trial, image, Colored);
    const auto second = CopyConst(trial, copy.Get());
    ExpectCopy(trial, second);
    trial.Expect(second->GetData() != copy->GetData(), "each copy to have pixels of its own", "the same pixels");
    trial.Equal("the references on the source", image->GetRefCount(), 1u);
}

void ForwardsWhatItsStepsRefuse(Trial& trial)
{
    const auto factory = GetImageFactory(trial);
    const auto image = MakeImage(trial, {});
    Ref<IConstImage> copy;
    ReportsInOrder(trial, "CreateConstCopy of null", {"TVX_CHECK_PRECOND", "TVX_FORWARD_FAILURE"}, TVX_E_PRECONDITION,
                   [&] { return factory->CreateConstCopy(nullptr, copy.Receive()); });
    ReportsInOrder(trial, "CreateConstCopy with a null out", {"TVX_CHECK_PRECOND", "TVX_FORWARD_FAILURE"},
                   TVX_E_PRECONDITION, [&] { return factory->CreateConstCopy(image.Get(), nullptr); });
}

constexpr Check Checks[] = {
    {"image-copy-has-description-and-pixels", "CreateCopy of an image that can change.",
     "A copy tells and holds the same as its source, and is unlocked, as the source is afterwards.", CopiesAnImage},
    {"image-copy-of-one-that-never-changes", "CreateCopy of an image that never changes.",
     "Either kind of image can be copied.", CopiesAnImageThatNeverChanges},
    {"image-copy-has-pixels-of-its-own", "Source and copy are written to.",
     "What is written to one of them does not show in the other.", CopiesIntoPixelsOfItsOwn},
    {"image-copy-unlocks-its-source", "CreateCopy of an image that the caller has locked, for reading and for writing.",
     "The source is locked for reading while it is copied. Locks are not counted, so the caller's hold ends with it.",
     UnlocksASourceThatWasLocked},
    {"image-copy-of-one-without-pixels", "CreateCopy of images with empty, negative or unknown sizes.",
     "An image without pixels is copied like any other.", CopiesImagesWithoutPixels},
    {"image-copy-locks-a-source-of-another-make", "CreateCopy of an image that the check made.",
     "Whatever answers IImage is locked for reading before its pixels are read, and unlocked afterwards.",
     LocksASourceOfAnotherMake},
    {"image-copy-of-another-make-that-never-changes", "CreateCopy of an image that the check made, without a lock.",
     "A source is only used by its interface, so that one of any make can be copied.",
     CopiesASourceOfAnotherMakeThatNeverChanges},
    {"image-copy-refuses-null", "CreateCopy of null.", "A null source gives -7 and one report line.",
     RefusesANullSource},
    {"image-copy-refuses-one-without-its-pixels", "CreateCopy of images of both kinds whose pixels were moved away.",
     "An image without its pixels gives -7 and one report line; nothing is read.", RefusesASourceWithoutItsPixels},
    {"image-copy-forwards-failures", "CreateCopy with a null out, and of an image that is too large.",
     "A failure to make the image comes back unchanged, with a report line of TVX_FORWARD_FAILURE.",
     ForwardsWhatCreateRefuses},
    {"image-const-copy-has-description-and-pixels", "CreateConstCopy of images of both kinds.",
     "The copy holds the same as its source, in pixels of its own, and never changes.", MakesCopiesThatNeverChange},
    {"image-const-copy-forwards-failures", "CreateConstCopy of null and with a null out.",
     "A failure of a step comes back unchanged, with a report line of TVX_FORWARD_FAILURE.",
     ForwardsWhatItsStepsRefuse},
};

}  // namespace

extern const Family ImageCopyFamily = {"images", ImageExport, Needs::Module, Checks};

}  // namespace tvx::check
