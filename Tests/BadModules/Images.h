// SPDX-License-Identifier: MIT
#pragma once

#include "Src/ImageFactory.h"

#include <utility>

namespace tvx::bad
{

constexpr const char ImageId[] = "com.talvere.general.tvx.GenericImageImplementation/1.0";

// An image that does what a real one does, but for what a class derived from it does otherwise.
class ForwardingImage : public ClassImpl<ForwardingImage, IImage>
{
public:
    using Interfaces = InterfaceList<IImage, IImageBase, IObject, IObjectBase>;

    explicit ForwardingImage(Ref<IImage> image) : image_(std::move(image)) {}
    virtual ~ForwardingImage() = default;

    std::int32_t GetWidth() override { return image_->GetWidth(); }
    std::int32_t GetHeight() override { return image_->GetHeight(); }
    std::int32_t GetColorFormat() override { return image_->GetColorFormat(); }
    std::int32_t GetDataType() override { return image_->GetDataType(); }
    std::int32_t GetRowOrder() override { return image_->GetRowOrder(); }
    std::int32_t GetPixelSize() override { return image_->GetPixelSize(); }
    std::int32_t GetStride() override { return image_->GetStride(); }
    const void* GetData() override { return image_->GetData(); }
    void* GetWritableData() override { return image_->GetWritableData(); }
    void LockRead() override { image_->LockRead(); }
    void LockWrite() override { image_->LockWrite(); }
    void Unlock() override { image_->Unlock(); }
    bool IsLocked() override { return image_->IsLocked(); }
    bool IsWriteLocked() override { return image_->IsWriteLocked(); }
    Result SetColorFormat(std::int32_t format) override { return image_->SetColorFormat(format); }
    Result SetRowOrder(std::int32_t order) override { return image_->SetRowOrder(order); }

    IImage* GetReal() const { return image_.Get(); }

private:
    Ref<IImage> image_;
};

// The image export, with images of the class Made. Those that never change are real ones.
template <class Made>
class ImagesOf final : public ClassImpl<ImagesOf<Made>, IImageFactory>, public Singleton<ImagesOf<Made>, IImageFactory>
{
public:
    using Interfaces = InterfaceList<IImageFactory, IObject, IObjectBase>;

    Result Create(std::int32_t width, std::int32_t height, std::int32_t format, std::int32_t type, std::int32_t order,
                  IImage** out) override
    {
        return Wrap(out, [&](IImage** made) { return Real()->Create(width, height, format, type, order, made); });
    }
    Result CreateCopy(IConstImage* source, IImage** out) override
    {
        return Wrap(out, [&](IImage** made) { return Real()->CreateCopy(source, made); });
    }
    Result CreateConstCopy(IConstImage* source, IConstImage** out) override
    {
        return Real()->CreateConstCopy(source, out);
    }
    Result MakeConst(IImage* image, IConstImage** out) override
    {
        auto* const own = dynamic_cast<Made*>(image);
        const bool isMovable = own != nullptr && own->IsUnique();
        return Real()->MakeConst(isMovable ? own->GetReal() : image, out);
    }
    Result MakeMutable(IConstImage* image, IImage** out) override
    {
        return Wrap(out, [&](IImage** made) { return Real()->MakeMutable(image, made); });
    }

private:
    static Ref<ImageFactory> Real() { return ImageFactory::GetOrMake(); }

    // A null out is for the real factory to refuse.
    template <class Make>
    static Result Wrap(IImage** out, Make&& make)
    {
        if (out == nullptr)
            return make(nullptr);
        Ref<IImage> made;
        const Result result = make(made.Receive());
        if (made)
            HandOut(MakeRef<Made>(made).Get(), out);
        return result;
    }
};

}  // namespace tvx::bad
