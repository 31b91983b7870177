// SPDX-License-Identifier: MIT
#pragma once

#include "Interfaces/IObject.h"

namespace tvx
{

// The layout of the channels in a pixel. Both orders of three channels are told apart by their number alone; changing one into
// the other reverses the channels. An unknown format counts as -1 channels.
struct ColorFormat
{
    enum : std::int32_t
    {
        OneChannel = 0,
        ThreeChannels = 1,
        FourChannels = 2,
        ThreeChannelsReversed = 3,
    };
};

// The type of a channel's element, by its size in bytes. An unknown type makes the pixel size the negated number of channels.
struct DataType
{
    enum : std::int32_t
    {
        OneByte = 0,
        TwoBytes = 1,
        FourBytes = 2,
        FourBytesFloat = 3,
        EightBytes = 4,
    };
};

// What every image tells of itself. An image whose pixels have been moved to another one tells -1 everywhere.
class IImageBase : public IObject
{
public:
    static constexpr const char Id[] = "com.talvere.general.tvx.IImageBase/1.0";

    // Slot 11. Gives the number of pixels in a row.
    // Threads: any. Fails: never.
    virtual std::int32_t GetWidth() = 0;

    // Slot 12. Gives the number of rows.
    // Threads: any. Fails: never.
    virtual std::int32_t GetHeight() = 0;

    // Slot 13. Gives the layout of the channels, a ColorFormat.
    // Threads: any. Fails: never.
    virtual std::int32_t GetColorFormat() = 0;

    // Slot 14. Gives the type of a channel's element, a DataType.
    // Threads: any. Fails: never.
    virtual std::int32_t GetDataType() = 0;

    // Slot 15. Gives the order of the rows, a number of the user's own: two different ones differ by one reversal.
    // Threads: any. Fails: never.
    virtual std::int32_t GetRowOrder() = 0;

    // Slot 16. Gives the bytes of a pixel.
    // Threads: any. Fails: never.
    virtual std::int32_t GetPixelSize() = 0;

    // Slot 17. Gives the bytes of a row; rows follow each other without padding.
    // Threads: any. Fails: never.
    virtual std::int32_t GetStride() = 0;

protected:
    ~IImageBase() = default;
};

// An image that never changes and needs no lock.
class IConstImage : public IImageBase
{
public:
    static constexpr const char Id[] = "com.talvere.general.tvx.IConstImage/1.0";

    // Slot 18. Gives the pixels, borrowed, of stride times height bytes; null when the image has none, has been moved away, or
    // is one that has to be locked and is not.
    // Threads: any. Fails: never.
    virtual const void* GetData() = 0;

protected:
    ~IConstImage() = default;
};

// An image that can change, under a lock for many readers or one writer. Every thread has its own hold on the lock. Holds are
// not counted: one Unlock ends a thread's hold however often it has locked. An image whose pixels have been moved to another
// one has no lock any more: the three lock operations do nothing, and nobody holds it.
class IImage : public IConstImage
{
public:
    static constexpr const char Id[] = "com.talvere.general.tvx.IImage/1.0";

    // Slot 19. Gives the pixels for writing, borrowed; null unless this thread holds the write lock.
    // Threads: any. Fails: never.
    virtual void* GetWritableData() = 0;

    // Slot 20. Makes this thread a reader, and waits for that as long as it takes. A writer lets go first, so that another
    // thread may write in between; a reader stays one.
    // Threads: any. Fails: never; without memory for the hold of a thread the image stays unlocked.
    virtual void LockRead() = 0;

    // Slot 21. Makes this thread the writer, and waits for that as long as it takes. A reader lets go first, so that another
    // thread may write in between; a writer stays one.
    // Threads: any. Fails: never; without memory for the hold of a thread the image stays unlocked.
    virtual void LockWrite() = 0;

    // Slot 22. Ends the hold of this thread, if it has one.
    // Threads: any. Fails: never.
    virtual void Unlock() = 0;

    // Slot 23. Tells whether this thread is a reader or the writer.
    // Threads: any. Fails: never.
    virtual bool IsLocked() = 0;

    // Slot 24. Tells whether this thread is the writer.
    // Threads: any. Fails: never.
    virtual bool IsWriteLocked() = 0;

    // Slot 25. Changes the layout between the two orders of three channels, reversing the channels of every pixel, and gives
    // 0. The layout that the image has already changes nothing.
    //   format  a ColorFormat
    // Threads: the writer. Fails: -7 with a report when the image has been moved away, this thread is not the writer, or
    // one of the layouts is not of three channels; -1 with a report when a row has no bytes; -11 without one for elements
    // of 8 bytes or of no known size.
    virtual Result SetColorFormat(std::int32_t format) = 0;

    // Slot 26. Changes the order of the rows to any other number, reversing the rows, and gives 0. The order that the image
    // has already changes nothing.
    // Threads: the writer. Fails: -7 with a report when the image has been moved away or this thread is not the writer; -1 with a
    // report when there are fewer than two rows or a row is empty.
    virtual Result SetRowOrder(std::int32_t order) = 0;

protected:
    ~IImage() = default;
};

// Makes images, copies them, and turns the ones that change into the ones that do not, and back, without copying.
class IImageFactory : public IObject
{
public:
    static constexpr const char Id[] = "com.talvere.general.tvx.IImageFactory/1.0";

    // Slot 11. Makes an image of zeros and gives 0. The description is taken as it is; with a negative or unknown number in it
    // the image has no pixels.
    //   width, height  in pixels
    //   format         a ColorFormat
    //   type           a DataType
    //   order          any number
    //   out            receives one reference, owned by the caller
    // Threads: any. Fails: -7 with a report when out is null; -5 without one when memory is exhausted or a row has more than
    // 2^31-1 bytes.
    virtual Result Create(std::int32_t width, std::int32_t height, std::int32_t format, std::int32_t type,
                          std::int32_t order, IImage** out) = 0;

    // Slot 12. Makes an unlocked copy of any image and gives 0. An image that can change is locked for reading meanwhile; a
    // caller that had locked it has not any more.
    //   source  borrowed
    //   out     receives one reference, owned by the caller
    // Threads: any. Fails: -7 with a report when source is null or has been moved away; as Create, with a report of its own.
    virtual Result CreateCopy(IConstImage* source, IImage** out) = 0;

    // Slot 13. Makes a copy of any image that never changes, and gives 0.
    //   source  borrowed
    //   out     receives one reference, owned by the caller
    // Threads: any. Fails: as CreateCopy and MakeConst, with a report of its own.
    virtual Result CreateConstCopy(IConstImage* source, IConstImage** out) = 0;

    // Slot 14. Moves the pixels of an image into one that never changes, and gives 0. The image is left without any.
    //   image  borrowed; an image of this module that nobody but the caller holds
    //   out    receives one reference, owned by the caller
    // Threads: the one that holds image. Fails: -7 with a report when a pointer is null or somebody else holds the image; -1 with
    // a report for an image of another make; -5 without one when memory is exhausted.
    virtual Result MakeConst(IImage* image, IConstImage** out) = 0;

    // Slot 15. Moves the pixels of an image that never changes into one that can, and gives 0. The image is left without any.
    //   image  borrowed; an image of this module that nobody but the caller holds
    //   out    receives one reference, owned by the caller
    // Threads: the one that holds image. Fails: -7 with a report when a pointer is null or somebody else holds the image; -1 with
    // a report for an image of another make; -5 without one when memory is exhausted.
    virtual Result MakeMutable(IConstImage* image, IImage** out) = 0;

protected:
    ~IImageFactory() = default;
};

}  // namespace tvx

#if __cplusplus < 201703L
[[gnu::weak]] constexpr const char tvx::IImageBase::Id[];
[[gnu::weak]] constexpr const char tvx::IConstImage::Id[];
[[gnu::weak]] constexpr const char tvx::IImage::Id[];
[[gnu::weak]] constexpr const char tvx::IImageFactory::Id[];
#endif
