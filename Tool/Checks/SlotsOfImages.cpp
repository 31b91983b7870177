// SPDX-License-Identifier: MIT
#include "Tool/Checks/ImageSlots.h"

namespace tvx::check
{

namespace
{

using Numbers = ImageNumbers;

Ref<IObject> MakeImageObject(Trial& trial)
{
    return MakeNumberedImage(trial);
}

// One number of the description, of an image that can change and of one that cannot.
template <FixedText Slot, std::int32_t (*Call)(void* object), std::int32_t (IImageBase::*Operation)(),
          std::int32_t Expected>
void TellsNumber(Trial& trial)
{
    const NamedObject<IImageBase> images[] = {{"an image", MakeNumberedImage(trial)},
                                              {"an image that never changes", MakeNumberedConstImage(trial)}};
    for (const auto& image : images)
    {
        const std::string what = std::string("slot ") + Slot.characters + " of " + image.name;
        const auto came = Call(ToC<IImageBase>(image.object));
        trial.Equal(what, came, Expected);
        trial.Equal(what + ", called by name,", (image.object.Get()->*Operation)(), came);
    }
}

void ConstImageGivesData(Trial& trial)
{
    const auto image = MakeNumberedConstImage(trial);
    const void* const came = CallIConstImageGetData(ToC<IConstImage>(image));
    trial.Expect(IsAddress(came), "slot 18 (GetData) of an image that never changes to give the pixels", "nothing");
    const auto* const bytes = static_cast<const std::uint8_t*>(came);
    const std::vector<std::uint8_t> pixels(bytes, bytes + std::size_t{Numbers::Stride} * Numbers::Height);
    trial.Equal("the pixels that slot 18 (GetData) gives", pixels, std::vector<std::uint8_t>(pixels.size(), 0));
    trial.Same("the pixels that GetData gives by name", image->GetData(), came);
}

// What a slot tells in the three states of the lock, as the number of states in which the answer is a yes. It is asked twice:
// an operation that changes the state hardly answers the same again.
template <class IsYes>
int CountStates(const Ref<IImage>& image, IsYes&& isYes)
{
    int count = 0;
    for (const auto lock : LockOperations)
    {
        (image.Get()->*lock)();
        const bool yes = isYes(ToC<IImage>(image));
        count += yes && isYes(ToC<IImage>(image)) ? 1 : 0;
    }
    image->Unlock();
    return count;
}

template <class Pointer>
void ExpectPixels(Trial& trial, const std::string& what, Pointer (*call)(void* object), int states)
{
    const std::vector<std::uint8_t> bytes(std::size_t{Numbers::Stride} * Numbers::Height, 0);
    const auto givesPixels = [&](void* face)
    {
        const void* const came = call(face);
        return IsAddress(came) && std::memcmp(came, bytes.data(), bytes.size()) == 0;
    };
    trial.Equal("the number of the three states of the lock in which " + what + " gives the pixels",
                CountStates(MakeNumberedImage(trial), givesPixels), states);
}

void GivesData(Trial& trial)
{
    ExpectPixels(trial, "slot 18 (GetData)", CallIConstImageGetData, 2);
}

void GivesWritableData(Trial& trial)
{
    ExpectPixels(trial, "slot 19 (GetWritableData)", CallIImageGetWritableData, 1);
}

void ExpectTruths(Trial& trial, const std::string& what, bool (*call)(void* object), int states)
{
    const auto isTrue = [&](void* face) { return GetByte(call(face)) == 1; };
    const auto untouched = MakeNumberedImage(trial);
    for (int i = 0; i < 2; ++i)
        trial.Expect(!isTrue(ToC<IImage>(untouched)), what + " of a new image to tell false", "true");
    trial.Equal("the number of the three states of the lock in which " + what + " tells true",
                CountStates(MakeNumberedImage(trial), isTrue), states);
}

void TellsWhetherLocked(Trial& trial)
{
    ExpectTruths(trial, "slot 23 (IsLocked)", CallIImageIsLocked, 2);
}

void TellsWhetherWriteLocked(Trial& trial)
{
    ExpectTruths(trial, "slot 24 (IsWriteLocked)", CallIImageIsWriteLocked, 1);
}

constexpr Check Checks[] = {
    {"slot-image-base-11-get-width", "GetWidth of both kinds of images is called by its number.",
     "Slot 11 of IImageBase is GetWidth: it gives the pixels of a row.",
     TellsNumber<"11 (GetWidth)", CallIImageBaseGetWidth, &IImageBase::GetWidth, Numbers::Width>},
    {"slot-image-base-12-get-height", "GetHeight of both kinds of images is called by its number.",
     "Slot 12 of IImageBase is GetHeight: it gives the number of rows.",
     TellsNumber<"12 (GetHeight)", CallIImageBaseGetHeight, &IImageBase::GetHeight, Numbers::Height>},
    {"slot-image-base-13-get-color-format", "GetColorFormat of both kinds of images is called by its number.",
     "Slot 13 of IImageBase is GetColorFormat: it gives the layout of the channels.",
     TellsNumber<"13 (GetColorFormat)", CallIImageBaseGetColorFormat, &IImageBase::GetColorFormat, Numbers::Format>},
    {"slot-image-base-14-get-data-type", "GetDataType of both kinds of images is called by its number.",
     "Slot 14 of IImageBase is GetDataType: it gives the type of a channel's element.",
     TellsNumber<"14 (GetDataType)", CallIImageBaseGetDataType, &IImageBase::GetDataType, Numbers::Type>},
    {"slot-image-base-15-get-row-order", "GetRowOrder of both kinds of images is called by its number.",
     "Slot 15 of IImageBase is GetRowOrder: it gives the order of the rows.",
     TellsNumber<"15 (GetRowOrder)", CallIImageBaseGetRowOrder, &IImageBase::GetRowOrder, Numbers::Order>},
    {"slot-image-base-16-get-pixel-size", "GetPixelSize of both kinds of images is called by its number.",
     "Slot 16 of IImageBase is GetPixelSize: it gives the bytes of a pixel.",
     TellsNumber<"16 (GetPixelSize)", CallIImageBaseGetPixelSize, &IImageBase::GetPixelSize, Numbers::PixelSize>},
    {"slot-image-base-17-get-stride", "GetStride of both kinds of images is called by its number.",
     "Slot 17 of IImageBase is GetStride: it gives the bytes of a row.",
     TellsNumber<"17 (GetStride)", CallIImageBaseGetStride, &IImageBase::GetStride, Numbers::Stride>},
    {"slot-const-image-18-get-data", "GetData of an image that never changes is called by its number.",
     "Slot 18 of IConstImage is GetData: it gives the pixels.", ConstImageGivesData},
    {"slot-image-18-get-data", "GetData of an image is called by its number in each state of the lock.",
     "Slot 18 of IImage is GetData: it gives the pixels to a reader and to the writer, and null without a lock.",
     GivesData},
    {"slot-image-19-get-writable-data",
     "GetWritableData of an image is called by its number in each state of the lock.",
     "Slot 19 of IImage is GetWritableData: it gives the pixels to the writer only.", GivesWritableData},
    {"slot-image-23-is-locked", "IsLocked of an image is called by its number in each state of the lock.",
     "Slot 23 of IImage is IsLocked: it tells true to a reader and to the writer.", TellsWhetherLocked},
    {"slot-image-24-is-write-locked", "IsWriteLocked of an image is called by its number in each state of the lock.",
     "Slot 24 of IImage is IsWriteLocked: it tells true to the writer only.", TellsWhetherWriteLocked},
};

}  // namespace

extern const Family SlotsOfImageFamily = {"slots", ImageExport, Needs::Module, Checks};
extern const Family SlotsOfImageObjectFamily = {"slots", ImageExport, Needs::Module,
                                                ObjectSlots<"image", MakeImageObject>};

}  // namespace tvx::check
