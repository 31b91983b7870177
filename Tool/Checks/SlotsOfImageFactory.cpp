// SPDX-License-Identifier: MIT
#include "Tool/Checks/ImageSlots.h"

namespace tvx::check
{

namespace
{

// What a creation that takes a source gives, as the interface that only images of its kind answer. It has to have the numbers
// that the source had.
template <class Wanted>
Ref<Wanted> MakeOf(Trial& trial, const std::string& slot, void* source,
                   std::int32_t (*call)(void* object, void* source, void** out))
{
    const std::string what = "slot " + slot + " of IImageFactory";
    const auto factory = trial.Get<IImageFactory>(ImageExport);
    const auto object = TakeFromC<Wanted>(trial, what, TVX_OK,
                                          [&](void** out) { return call(ToC<IImageFactory>(factory), source, out); });
    auto made = trial.QueryAs<Wanted>(object, "what " + what + " gives");
    ExpectNumbers(trial, "the image that " + what + " gives", *made);
    return made;
}

void Creates(Trial& trial)
{
    using Numbers = ImageNumbers;
    const std::string what = "slot 11 (Create) of IImageFactory";
    const auto factory = trial.Get<IImageFactory>(ImageExport);
    const auto create = [&](void** out)
    {
        return CallIImageFactoryCreate(ToC<IImageFactory>(factory), Numbers::Width, Numbers::Height, Numbers::Format,
                                       Numbers::Type, Numbers::Order, out);
    };
    const auto image = trial.QueryAs<IImage>(TakeFromC<IImage>(trial, what, TVX_OK, create), "what " + what + " gives");
    ExpectNumbers(trial, "the image that " + what + " makes", *image);
}

void CreatesCopies(Trial& trial)
{
    const auto source = MakeNumberedImage(trial);
    MakeOf<IImage>(trial, "12 (CreateCopy)", ToC<IConstImage>(source), CallIImageFactoryCreateCopy);
    ExpectNumbers(trial, "the source of slot 12 (CreateCopy)", *source);
}

// The source keeps its pixels, which tells this operation from the one that moves them.
void CreatesConstCopies(Trial& trial)
{
    const auto source = MakeNumberedImage(trial);
    MakeOf<IConstImage>(trial, "13 (CreateConstCopy)", ToC<IConstImage>(source), CallIImageFactoryCreateConstCopy);
    ExpectNumbers(trial, "the source of slot 13 (CreateConstCopy)", *source);
}

void MakesConst(Trial& trial)
{
    const auto source = MakeNumberedImage(trial);
    MakeOf<IConstImage>(trial, "14 (MakeConst)", ToC<IImage>(source), CallIImageFactoryMakeConst);
    ExpectMoved(trial, "the source of slot 14 (MakeConst)", *source);
}

void MakesMutable(Trial& trial)
{
    const auto source = MakeNumberedConstImage(trial);
    MakeOf<IImage>(trial, "15 (MakeMutable)", ToC<IConstImage>(source), CallIImageFactoryMakeMutable);
    ExpectMoved(trial, "the source of slot 15 (MakeMutable)", *source);
}

constexpr Check Checks[] = {
    {"slot-image-factory-11-create", "Create of the image factory is called by its number.",
     "Slot 11 of IImageFactory is Create: it makes an image of five numbers.", Creates},
    {"slot-image-factory-12-create-copy", "CreateCopy of the image factory is called by its number.",
     "Slot 12 of IImageFactory is CreateCopy: it makes an image that can change, and the source stays as it was.",
     CreatesCopies},
    {"slot-image-factory-13-create-const-copy", "CreateConstCopy of the image factory is called by its number.",
     "Slot 13 of IImageFactory is CreateConstCopy: it makes an image that never changes, and the source stays as it "
     "was.",
     CreatesConstCopies},
    {"slot-image-factory-14-make-const", "MakeConst of the image factory is called by its number.",
     "Slot 14 of IImageFactory is MakeConst: it moves the pixels of an image into one that never changes.", MakesConst},
    {"slot-image-factory-15-make-mutable", "MakeMutable of the image factory is called by its number.",
     "Slot 15 of IImageFactory is MakeMutable: it moves the pixels of an image that never changes into one that can.",
     MakesMutable},
};

}  // namespace

extern const Family SlotsOfImageFactoryFamily = {"slots", ImageExport, Needs::Module, Checks};

}  // namespace tvx::check
