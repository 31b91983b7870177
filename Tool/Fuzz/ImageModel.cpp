// SPDX-License-Identifier: MIT
#include "Tool/Checks/Objects.h"
#include "Tool/Fuzz/TableWalker.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

namespace tvx::fuzz
{

namespace
{

constexpr std::int32_t Channels[] = {1, 3, 4, 3};
constexpr std::int32_t ElementSizes[] = {1, 2, 4, 4, 8};
constexpr std::int32_t EightByteElements = 4;

enum class Lock
{
    None,
    Read,
    Write,
};

// An image beside its bytes, its description and this thread's lock.
class ImageModel final : public TableWalker<ImageModel>
{
public:
    explicit ImageModel(check::Trial& trial) : trial_(trial) { Create({0, 0, 0}); }

    void Create(const Step& step)
    {
        width_ = static_cast<std::int32_t>(step.first % 40);
        height_ = static_cast<std::int32_t>(step.first / 40 % 6);
        format_ = static_cast<std::int32_t>(step.second % 4);
        type_ = static_cast<std::int32_t>(step.second / 4 % 5);
        order_ = static_cast<std::int32_t>(step.second / 20 % 2);
        lock_ = Lock::None;
        image_ = check::MakeImage(trial_, width_, height_, format_, type_, order_);
        pixels_.assign(static_cast<std::size_t>(GetStride() * height_), 0);
    }

    void LockRead(const Step&)
    {
        image_->LockRead();
        lock_ = Lock::Read;
    }

    void LockWrite(const Step&)
    {
        image_->LockWrite();
        lock_ = Lock::Write;
    }

    void Unlock(const Step&)
    {
        image_->Unlock();
        lock_ = Lock::None;
    }

    void Paint(const Step& step)
    {
        auto* const data = static_cast<unsigned char*>(image_->GetWritableData());
        trial_.Equal("whether GetWritableData gives null", data == nullptr, lock_ != Lock::Write || pixels_.empty());
        if (data == nullptr)
            return;
        for (std::size_t place = 0; place < pixels_.size(); ++place)
            pixels_[place] = static_cast<unsigned char>(step.first + place * (step.second % 251 + 1));
        std::memcpy(data, pixels_.data(), pixels_.size());
    }

    void SetColorFormat(const Step& step)
    {
        const auto format = static_cast<std::int32_t>(step.first % 4);
        const auto due = GetDueOfColorFormat(format);
        const auto call = [&] { return image_->SetColorFormat(format); };
        if (due == TVX_OK || due == TVX_E_UNSUPPORTED_FORMAT)
            trial_.Gives("SetColorFormat", call(), due);
        else
            trial_.Reports("SetColorFormat", due == TVX_E_FAIL ? "TVX_RETURN_FAIL_IF" : "TVX_CHECK_PRECOND", due, call);
        if (due == TVX_OK && format != format_)
            ReverseChannels(format);
    }

    void SetRowOrder(const Step& step)
    {
        const auto order = static_cast<std::int32_t>(step.first % 2);
        const auto call = [&] { return image_->SetRowOrder(order); };
        if (lock_ != Lock::Write)
            return trial_.Reports("SetRowOrder without the write lock", "TVX_CHECK_PRECOND", TVX_E_PRECONDITION, call);
        if (order != order_ && (height_ < 2 || GetStride() <= 0))
            return trial_.Reports("SetRowOrder of less than two rows", "TVX_RETURN_FAIL_IF", TVX_E_FAIL, call);
        trial_.Gives("SetRowOrder", call(), TVX_OK);
        if (order != order_)
            ReverseRows(order);
    }

    // The copy has the pixels, and whoever held a lock holds none afterwards.
    void Copy(const Step&)
    {
        const auto factory = trial_.Get<IImageFactory>(check::ImageExport);
        image_ = check::Make<IImage>(trial_, "CreateCopy",
                                     [&](IImage** out) { return factory->CreateCopy(image_.Get(), out); });
        lock_ = Lock::None;
    }

    // To a view and back: the pixels move, and the image that had them has none any more.
    void MakeConstAndBack(const Step&)
    {
        Unlock({0, 0, 0});
        const auto factory = trial_.Get<IImageFactory>(check::ImageExport);
        const auto view = check::Make<IConstImage>(
            trial_, "MakeConst", [&](IConstImage** out) { return factory->MakeConst(image_.Get(), out); });
        trial_.Equal("the width of an image that gave its pixels away", image_->GetWidth(), -1);
        CompareDescription(*view);
        image_ = check::Make<IImage>(trial_, "MakeMutable",
                                     [&](IImage** out) { return factory->MakeMutable(view.Get(), out); });
    }

    void Compare() override
    {
        CompareDescription(*image_);
        trial_.Equal("IsLocked", image_->IsLocked(), lock_ != Lock::None);
        trial_.Equal("IsWriteLocked", image_->IsWriteLocked(), lock_ == Lock::Write);
        const void* const data = image_->GetData();
        trial_.Equal("whether GetData gives null", data == nullptr, lock_ == Lock::None || pixels_.empty());
        trial_.Expect(data == nullptr || std::memcmp(data, pixels_.data(), pixels_.size()) == 0,
                      "the pixels to be what was painted", "other bytes");
    }

    static constexpr Operation<ImageModel> Operations[] = {
        {"create", &ImageModel::Create},
        {"lock-read", &ImageModel::LockRead},
        {"lock-write", &ImageModel::LockWrite},
        {"unlock", &ImageModel::Unlock},
        {"paint", &ImageModel::Paint},
        {"set-color-format", &ImageModel::SetColorFormat},
        {"set-row-order", &ImageModel::SetRowOrder},
        {"copy", &ImageModel::Copy},
        {"make-const-and-back", &ImageModel::MakeConstAndBack},
    };

private:
    std::int32_t GetElementSize() const { return ElementSizes[type_]; }
    std::int32_t GetPixelSize() const { return Channels[format_] * GetElementSize(); }
    std::int32_t GetStride() const { return GetPixelSize() * width_; }

    static bool IsOfThreeChannels(std::int32_t format) { return format == 1 || format == 3; }

    // In the order in which it is looked at.
    Result GetDueOfColorFormat(std::int32_t format) const
    {
        if (lock_ != Lock::Write)
            return TVX_E_PRECONDITION;
        if (format == format_)
            return TVX_OK;
        if (!IsOfThreeChannels(format) || !IsOfThreeChannels(format_))
            return TVX_E_PRECONDITION;
        if (height_ < 1)
            return TVX_OK;
        if (width_ < 1)
            return TVX_E_FAIL;
        return type_ == EightByteElements ? TVX_E_UNSUPPORTED_FORMAT : TVX_OK;
    }

    void ReverseChannels(std::int32_t format)
    {
        const auto size = static_cast<std::ptrdiff_t>(GetElementSize());
        for (auto pixel = pixels_.begin(); pixel != pixels_.end(); pixel += 3 * size)
            std::swap_ranges(pixel, pixel + size, pixel + 2 * size);
        format_ = format;
    }

    void ReverseRows(std::int32_t order)
    {
        const auto stride = static_cast<std::ptrdiff_t>(GetStride());
        for (std::ptrdiff_t row = 0; row < height_ / 2; ++row)
        {
            const auto first = pixels_.begin() + row * stride;
            std::swap_ranges(first, first + stride, pixels_.end() - (row + 1) * stride);
        }
        order_ = order;
    }

    void CompareDescription(IImageBase& image)
    {
        const auto describe = [](std::int32_t width, std::int32_t height, std::int32_t format, std::int32_t type,
                                 std::int32_t order, std::int32_t pixelSize, std::int32_t stride)
        { return std::vector<std::int32_t>{width, height, format, type, order, pixelSize, stride}; };
        trial_.Equal("the description",
                     describe(image.GetWidth(), image.GetHeight(), image.GetColorFormat(), image.GetDataType(),
                              image.GetRowOrder(), image.GetPixelSize(), image.GetStride()),
                     describe(width_, height_, format_, type_, order_, GetPixelSize(), GetStride()));
    }

    check::Trial& trial_;
    Ref<IImage> image_;
    std::vector<unsigned char> pixels_;
    std::int32_t width_ = 0;
    std::int32_t height_ = 0;
    std::int32_t format_ = 0;
    std::int32_t type_ = 0;
    std::int32_t order_ = 0;
    Lock lock_ = Lock::None;
};

constexpr auto Names = GetNames(ImageModel::Operations);

}  // namespace

const Walk ImageWalk = {"image", check::ImageExport, Names, &ImageModel::Start};

}  // namespace tvx::fuzz
