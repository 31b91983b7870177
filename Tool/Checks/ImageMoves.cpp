// SPDX-License-Identifier: MIT
#include "Tool/Checks/ImageBench.h"
#include "Tool/Checks/ImageDoubles.h"

namespace tvx::check
{

namespace
{

constexpr ImageShape Colored = {13, 5, 1, 1, 8};

Ref<IImage> MoveBack(Trial& trial, const Ref<IConstImage>& view)
{
    const auto factory = GetImageFactory(trial);
    return Make<IImage>(trial, "MakeMutable", [&](IImage** out) { return factory->MakeMutable(view.Get(), out); });
}

const void* FindPixels(const Ref<IImage>& image)
{
    const host::ReadLock lock(*image);
    return image->GetData();
}

void MovesIntoOneThatNeverChanges(Trial& trial)
{
    const auto image = MakeCountingImage(trial, Colored);
    const void* const pixels = FindPixels(image);
    const auto view = MoveAway(trial, image);
    trial.Equal("the description of the new image", Describe(*view), Describe(Colored));
    ExpectPixels(trial, "its pixels", ReadPixels(trial, view, Colored), CountBytes(Colored));
    trial.Expect(view->GetData() == pixels, "the pixels to stay where they are", "another address");
    trial.Equal("the references on the new image", view->GetRefCount(), 1u);
    trial.Equal("the references on the source", image->GetRefCount(), 1u);
}

void MovesIntoOneThatCanChange(Trial& trial)
{
    const auto view = MakeConstImage(trial, Colored);
    const void* const pixels = view->GetData();
    const auto image = MoveBack(trial, view);
    ExpectUnlocked(trial, "the new image", *image);
    ExpectUnchanged(trial, image, Colored);
    trial.Expect(FindPixels(image) == pixels, "the pixels to stay where they are", "another address");
    trial.Equal("the references on the new image", image->GetRefCount(), 1u);
    trial.Equal("the references on the source", view->GetRefCount(), 1u);
}

void LeavesAnImageWithoutAnything(Trial& trial)
{
    const auto image = MakeCountingImage(trial, Colored);
    const auto view = MoveAway(trial, image);
    trial.Equal("the description of the source of MakeConst", Describe(*image), DescribeMovedAway());
    ExpectUnlocked(trial, "the source of MakeConst", *image);
    const auto again = MoveBack(trial, view);
    trial.Equal("the description of the source of MakeMutable", Describe(*view), DescribeMovedAway());
    trial.Same("GetData of the source of MakeMutable", view->GetData(), nullptr);
}

void GoesThereAndBack(Trial& trial)
{
    const auto image = MakeCountingImage(trial, Colored);
    const auto again = MoveBack(trial, MoveAway(trial, image));
    ExpectUnchanged(trial, again, Colored);
    const host::WriteLock lock(*again);
    trial.Gives("SetRowOrder of the image that came back", again->SetRowOrder(1), TVX_OK);
    trial.Gives("SetColorFormat of the image that came back", again->SetColorFormat(3), TVX_OK);
}

void OutlivesItsSource(Trial& trial)
{
    auto image = MakeCountingImage(trial, Colored);
    auto view = MoveAway(trial, image);
    image = nullptr;
    ExpectPixels(trial, "the pixels when the source is gone", ReadPixels(trial, view, Colored), CountBytes(Colored));
    const auto again = MoveBack(trial, view);
    view = nullptr;
    ExpectUnchanged(trial, again, Colored);
}

// Refusals come in pairs: MakeConst and MakeMutable follow the same steps. Nothing comes out.
template <class Source, class Wanted>
void ExpectRefusal(Trial& trial, const std::string& what, const char* macro, Result expected,
                   Result (IImageFactory::*move)(Source*, Wanted**), Source* source)
{
    const auto factory = GetImageFactory(trial);
    Ref<Wanted> out;
    trial.Reports(what, macro, expected, [&] { return (factory.Get()->*move)(source, out.Receive()); });
    trial.Same("what " + what + " gave", out.Get(), nullptr);
}

void RefusesNull(Trial& trial)
{
    ExpectRefusal<IImage>(trial, "MakeConst of null", "TVX_CHECK_PRECOND", TVX_E_PRECONDITION,
                          &IImageFactory::MakeConst, nullptr);
    ExpectRefusal<IConstImage>(trial, "MakeMutable of null", "TVX_CHECK_PRECOND", TVX_E_PRECONDITION,
                               &IImageFactory::MakeMutable, nullptr);
}

void RefusesANullOut(Trial& trial)
{
    const auto factory = GetImageFactory(trial);
    const auto image = MakeCountingImage(trial, Colored);
    trial.Reports("MakeConst with a null out", "TVX_CHECK_PRECOND", TVX_E_PRECONDITION,
                  [&] { return factory->MakeConst(image.Get(), nullptr); });
    ExpectUnchanged(trial, image, Colored);
    const auto view = MakeConstImage(trial, Colored);
    trial.Reports("MakeMutable with a null out", "TVX_CHECK_PRECOND", TVX_E_PRECONDITION,
                  [&] { return factory->MakeMutable(view.Get(), nullptr); });
    ExpectPixels(trial, "the pixels afterwards", ReadPixels(trial, view, Colored), CountBytes(Colored));
}

void RefusesAnImageThatOthersHold(Trial& trial)
{
    const auto image = MakeCountingImage(trial, Colored);
    const auto other = image;
    ExpectRefusal(trial, "MakeConst of an image that others hold", "TVX_CHECK_PRECOND", TVX_E_PRECONDITION,
                  &IImageFactory::MakeConst, image.Get());
    ExpectUnchanged(trial, image, Colored);
    const auto view = MakeConstImage(trial, Colored);
    const auto otherView = view;
    ExpectRefusal(trial, "MakeMutable of an image that others hold", "TVX_CHECK_PRECOND", TVX_E_PRECONDITION,
                  &IImageFactory::MakeMutable, view.Get());
    ExpectPixels(trial, "the pixels afterwards", ReadPixels(trial, view, Colored), CountBytes(Colored));
}

// After images of both kinds have been there, which a module might know its own by.
void RefusesImagesOfAnotherMake(Trial& trial)
{
    const auto own = MakeConstImage(trial, {});
    const auto foreign = MakeRef<ForeignImage>();
    ExpectRefusal<IImage>(trial, "MakeConst of an image of another make", "TVX_RETURN_FAIL_IF_NULL", TVX_E_FAIL,
                          &IImageFactory::MakeConst, foreign.Get());
    const auto foreignView = MakeRef<ForeignConstImage>();
    ExpectRefusal<IConstImage>(trial, "MakeMutable of an image of another make", "TVX_RETURN_FAIL_IF_NULL", TVX_E_FAIL,
                               &IImageFactory::MakeMutable, foreignView.Get());
}

// In C++ an IImage is an IConstImage, and nothing keeps a caller from passing one.
void RefusesOneThatCanChangeAlready(Trial& trial)
{
    const auto own = MakeConstImage(trial, {});
    const auto image = MakeCountingImage(trial, Colored);
    ExpectRefusal<IConstImage>(trial, "MakeMutable of an image that can change", "TVX_RETURN_FAIL_IF_NULL", TVX_E_FAIL,
                               &IImageFactory::MakeMutable, image.Get());
    ExpectUnchanged(trial, image, Colored);
}

constexpr Check Checks[] = {
    {"image-make-const-moves-the-pixels", "MakeConst of an image with pixels.",
     "The new image takes over description and pixels, without copying them.", MovesIntoOneThatNeverChanges},
    {"image-make-mutable-moves-the-pixels", "MakeMutable of an image with pixels.",
     "The new image takes over description and pixels, without copying them, and is not locked.",
     MovesIntoOneThatCanChange},
    {"image-without-its-pixels-tells-so", "The sources of MakeConst and MakeMutable are looked at.",
     "An image whose pixels were moved away tells -1 everywhere and gives no pixels.", LeavesAnImageWithoutAnything},
    {"image-goes-there-and-back", "An image goes through MakeConst and MakeMutable.",
     "What comes back is an image like the first one, which can change again.", GoesThereAndBack},
    {"image-outlives-its-source", "The sources of MakeConst and MakeMutable are released.",
     "The pixels belong to the new image alone.", OutlivesItsSource},
    {"image-move-refuses-null", "MakeConst and MakeMutable of null.", "A null image gives -7 and one report line.",
     RefusesNull},
    {"image-move-refuses-null-out", "MakeConst and MakeMutable with a null out.",
     "A null out gives -7 and one report line, and the image keeps its pixels.", RefusesANullOut},
    {"image-move-refuses-what-others-hold", "MakeConst and MakeMutable of images with two references.",
     "Nobody else is to see an image lose its pixels: one with several references gives -7, and keeps them.",
     RefusesAnImageThatOthersHold},
    {"image-move-refuses-another-make", "MakeConst and MakeMutable of images that the check made.",
     "Only the module's own images have pixels to take over: others give -1 and one report line.",
     RefusesImagesOfAnotherMake},
    {"image-make-mutable-refuses-what-can-change", "MakeMutable of an image that can change already.",
     "Only an image that never changes is taken: another one gives -1 and one report line, and keeps its pixels.",
     RefusesOneThatCanChangeAlready},
};

}  // namespace

extern const Family ImageMoveFamily = {"images", ImageExport, Needs::Module, Checks};

}  // namespace tvx::check
