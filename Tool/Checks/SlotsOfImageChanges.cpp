// SPDX-License-Identifier: MIT
#include "Tool/Checks/ImageSlots.h"

namespace tvx::check
{

namespace
{

std::string NameState(bool locked, bool writing)
{
    if (locked)
        return writing ? "locked for writing" : "locked for reading";
    return writing ? "locked in no known way" : "unlocked";
}

// The two ways in which the state shows.
using TellState = std::string (*)(IImage& image);

std::string TellByPixels(IImage& image)
{
    const bool locked = IsAddress(image.GetData());
    return NameState(locked, IsAddress(image.GetWritableData()));
}

std::string TellByTruths(IImage& image)
{
    const bool locked = GetByte(image.IsLocked()) == 1;
    return NameState(locked, GetByte(image.IsWriteLocked()) == 1);
}

struct LockSlot
{
    std::string name;
    void (*call)(void* object);
    LockOperation operation;
    std::string state;  // in which it leaves the image
};

const std::vector<LockSlot>& GetLockSlots()
{
    static const std::vector<LockSlot> slots = {
        {"20 (LockRead)", CallIImageLockRead, &IImage::LockRead, "locked for reading"},
        {"21 (LockWrite)", CallIImageLockWrite, &IImage::LockWrite, "locked for writing"},
        {"22 (Unlock)", CallIImageUnlock, &IImage::Unlock, "unlocked"},
    };
    return slots;
}

// Whether a way tells the states that the other two operations lead to, so that it can be trusted with the one of the judged.
bool TellsOthers(Trial& trial, TellState tell, const LockSlot& judged)
{
    const auto image = MakeNumberedImage(trial);
    bool tells = true;
    for (const auto& other : GetLockSlots())
    {
        if (&other == &judged)
            continue;
        (image.Get()->*other.operation)();
        tells = tells && tell(*image) == other.state;
    }
    image->Unlock();
    return tells;
}

std::string TellAfter(Trial& trial, TellState tell, const LockSlot& judged)
{
    const auto image = MakeNumberedImage(trial);
    if (judged.operation == &IImage::Unlock)
        image->LockWrite();
    judged.call(ToC<IImage>(image));
    auto state = tell(*image);
    image->Unlock();
    return state;
}

// One way that can be trusted is enough: a wrong slot of the other way has a check of its own.
template <std::size_t Judged>
void Locks(Trial& trial)
{
    const auto& judged = GetLockSlots()[Judged];
    std::string state;
    for (const auto tell : {TellByPixels, TellByTruths})
    {
        if (state != judged.state && TellsOthers(trial, tell, judged))
            state = TellAfter(trial, tell, judged);
    }
    if (state.empty())
        state = TellAfter(trial, TellByTruths, judged);
    trial.Equal("the state in which slot " + judged.name + " leaves an image", state, judged.state);
}

// A change of an image whose pixels show it.
struct Change
{
    std::string slot;
    std::int32_t (*call)(void* object, std::int32_t value);
    std::int32_t value;
    std::int32_t (IImageBase::*told)();  // the number that has become the value
    std::vector<std::uint8_t> before;
    std::vector<std::uint8_t> after;
};

// Only the writer may change: the call is tried in the three states of the lock until it succeeds.
Result CallAsWriter(IImage& image, const Change& change)
{
    Result result = TVX_E_FAIL;
    for (const auto lock : LockOperations)
    {
        (image.*lock)();
        result = change.call(&image, change.value);
        if (!TVX_FAILED(result))
            break;
    }
    image.Unlock();
    return result;
}

void ExpectChange(Trial& trial, const Ref<IImage>& image, const Change& change)
{
    WritePixels(*image, change.before);
    const auto result = CallAsWriter(*image, change);
    static_cast<void>(trial.TakeOutput());  // the reports of the states in which it was refused
    trial.Gives("slot " + change.slot + " under the write lock", result, TVX_OK);
    if ((image.Get()->*change.told)() != change.value)
        trial.Equal("the pixels after slot " + change.slot, ReadPixels(*image, change.after.size()), change.after);
}

// The image has one row, so that SetRowOrder would refuse it.
void SetsColorFormat(Trial& trial)
{
    const auto image = MakeImage(trial, 2, 1, ColorFormat::ThreeChannels, DataType::OneByte, 9);
    ExpectChange(trial, image,
                 {"25 (SetColorFormat)",
                  CallIImageSetColorFormat,
                  ColorFormat::ThreeChannelsReversed,
                  &IImageBase::GetColorFormat,
                  {1, 2, 3, 4, 5, 6},
                  {3, 2, 1, 6, 5, 4}});
}

// The value is no format that SetColorFormat would take.
void SetsRowOrder(Trial& trial)
{
    const auto image = MakeImage(trial, 1, 2, ColorFormat::ThreeChannels, DataType::OneByte, 9);
    ExpectChange(trial, image,
                 {"26 (SetRowOrder)",
                  CallIImageSetRowOrder,
                  6,
                  &IImageBase::GetRowOrder,
                  {1, 2, 3, 4, 5, 6},
                  {4, 5, 6, 1, 2, 3}});
}

constexpr Check Checks[] = {
    {"slot-image-20-lock-read", "LockRead of an image is called by its number.",
     "Slot 20 of IImage is LockRead: the thread becomes a reader.", Locks<0>},
    {"slot-image-21-lock-write", "LockWrite of an image is called by its number.",
     "Slot 21 of IImage is LockWrite: the thread becomes the writer.", Locks<1>},
    {"slot-image-22-unlock", "Unlock of a locked image is called by its number.",
     "Slot 22 of IImage is Unlock: the hold of the thread ends.", Locks<2>},
    {"slot-image-25-set-color-format", "SetColorFormat of a locked image is called by its number.",
     "Slot 25 of IImage is SetColorFormat: it changes one order of three channels into the other.", SetsColorFormat},
    {"slot-image-26-set-row-order", "SetRowOrder of a locked image is called by its number.",
     "Slot 26 of IImage is SetRowOrder: it changes the order of the rows.", SetsRowOrder},
};

}  // namespace

extern const Family SlotsOfImageChangeFamily = {"slots", ImageExport, Needs::Module, Checks};

}  // namespace tvx::check
