// SPDX-License-Identifier: MIT
#include "Tool/Checks/ImageBench.h"
#include "Tool/Checks/ImageDoubles.h"
#include "Tool/Fuzz/AnyObject.h"
#include "Tool/Fuzz/ImageRefusals.h"
#include "Tool/Fuzz/Picture.h"
#include "Tool/Fuzz/Refusals.h"
#include "Tool/Fuzz/TableWalker.h"

#include <cstdint>
#include <cstring>
#include <iterator>
#include <string>
#include <utility>

namespace tvx::fuzz
{

namespace
{

enum class Lock
{
    None,
    Read,
    Write,
};

// An image and a view, which never changes, beside what they hold and this thread's lock.
class ImageModel final : public TableWalker<ImageModel>
{
public:
    explicit ImageModel(check::Trial& trial) : trial_(trial), factory_(check::GetImageFactory(trial))
    {
        Create({0, 0, 0});
        CopyConst({0, 0, 0});
    }

    void Create(const Step& step)
    {
        CreateFrom({static_cast<std::int32_t>(step.first % 40),
                    static_cast<std::int32_t>(step.first / 40 % 6),
                    static_cast<std::int32_t>(step.second % 4),
                    static_cast<std::int32_t>(step.second / 4 % 5),
                    static_cast<std::int32_t>(step.second / 20 % 2),
                    {}});
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
        trial_.Equal("whether GetWritableData gives null", data == nullptr,
                     lock_ != Lock::Write || picture_.pixels.empty());
        if (data == nullptr)
            return;
        picture_.Paint(step.first, step.second);
        std::memcpy(data, picture_.pixels.data(), picture_.pixels.size());
    }

    void SetColorFormat(const Step& step) { ChangeFormat(static_cast<std::int32_t>(step.first % 4)); }

    void SetRowOrder(const Step& step) { ChangeOrder(static_cast<std::int32_t>(step.first % 2)); }

    // The copy has the pixels, and whoever held a lock holds none afterwards.
    void Copy(const Step&)
    {
        const auto source = image_;
        TakeCopy(*source, picture_);
        trial_.Equal("IsLocked of what was copied", source->IsLocked(), false);
    }

    // To a view and back: the pixels move, and the image that had them has none any more.
    void MakeConstAndBack(const Step&)
    {
        Unlock({0, 0, 0});
        another_ = nullptr;
        MoveBack(check::MoveAway(trial_, image_), picture_);
    }

    // So that what needs both is not too rare.
    void LockAndPaint(const Step& step)
    {
        LockWrite(step);
        Paint(step);
    }

    // With a negative size, or a format or type that there is not. There are no pixels then.
    void CreateOdd(const Step& step)
    {
        Picture odd{static_cast<std::int32_t>(step.first / 4 % 6) + 1,
                    static_cast<std::int32_t>(step.first / 24 % 4),
                    static_cast<std::int32_t>(step.second % 4),
                    static_cast<std::int32_t>(step.second / 4 % 5),
                    static_cast<std::int32_t>(step.second),
                    {}};
        std::int32_t* const numbers[] = {&odd.width, &odd.height, &odd.format, &odd.type};
        *numbers[step.first % 4] = -1 - static_cast<std::int32_t>(step.second % 7);
        if (step.first % 4 > 1 && step.second % 2 == 0)
            *numbers[step.first % 4] = 5 + static_cast<std::int32_t>(step.second / 2 % 1000);
        CreateFrom(std::move(odd));
    }

    void SetAnyColorFormat(const Step& step)
    {
        constexpr std::int32_t formats[] = {-1, 4, 7, INT32_MIN, INT32_MAX, 0x103, -3};
        ChangeFormat(formats[step.first % std::size(formats)]);
    }

    void SetAnyRowOrder(const Step& step) { ChangeOrder(static_cast<std::int32_t>(step.first)); }

    void TryRefused(const Step& step) { TryImageRefused(trial_, *factory_, *image_, *view_, step.first); }

    void HoldAgain(const Step& step) { another_ = step.first % 2 == 0 ? image_ : nullptr; }

    void CopyConst(const Step&)
    {
        view_ = check::Make<IConstImage>(
            trial_, "CreateConstCopy", [&](IConstImage** out) { return factory_->CreateConstCopy(image_.Get(), out); });
        viewed_ = picture_;
        lock_ = Lock::None;
    }

    // The copy is made before its out is looked at, so whoever held a lock holds none afterwards.
    void CopyConstForNobody(const Step&)
    {
        check::ReportsInOrder(trial_, "CreateConstCopy with a null out", GetLines(PreconditionForwarded),
                              TVX_E_PRECONDITION, [&] { return factory_->CreateConstCopy(image_.Get(), nullptr); });
        lock_ = Lock::None;
    }

    void CopyView(const Step&) { TakeCopy(*view_, viewed_); }

    // Then the view is one of the image again.
    void MakeMutableOfView(const Step&)
    {
        MoveBack(view_, viewed_);
        CopyConst({0, 0, 0});
    }

    // The lock goes with the pixels.
    void MakeConstWhileLocked(const Step&)
    {
        another_ = nullptr;
        view_ = check::MoveAway(trial_, image_);
        viewed_ = picture_;
        image_->LockWrite();
        check::ExpectUnlocked(trial_, "an image without its pixels", *image_);
        trial_.Equal("its description", check::Describe(*image_), check::DescribeMovedAway());
        CopyView({0, 0, 0});
    }

    void CopyForeign(const Step&)
    {
        const auto foreign = MakeRef<check::ForeignImage>();
        TakeCopy(*foreign, {2, 2, ColorFormat::OneChannel, DataType::OneByte, 5, {1, 2, 3, 4}});
        CompareCount(trial_, "an image of another make", *foreign, 1);
    }

    void AskAsObject(const Step& step)
    {
        fuzz::AskAsObject(trial_, "an image", image_, step.second);
        fuzz::AskAsObject(trial_, "a view", view_, step.first);
        trial_.Same("the IConstImage of an image", Query<IConstImage>(image_).Get(), nullptr);
        trial_.Same("the IImage of a view", Query<IImage>(view_).Get(), nullptr);
    }

    // Locked or not.
    void DropBeforeWitnesses(const Step& step)
    {
        another_ = nullptr;
        EndBeforeWitnesses(trial_, "an image", image_);
        Create(step);
    }

    void Compare() override
    {
        trial_.Equal("the description", check::Describe(*image_), picture_.Describe());
        trial_.Equal("IsLocked", image_->IsLocked(), lock_ != Lock::None);
        trial_.Equal("IsWriteLocked", image_->IsWriteLocked(), lock_ == Lock::Write);
        ComparePixels("the image", image_->GetData(), lock_ != Lock::None, picture_);
        trial_.Equal("the description of the view", check::Describe(*view_), viewed_.Describe());
        ComparePixels("the view", view_->GetData(), true, viewed_);
        CompareCount(trial_, "the image", *image_, another_ ? 2 : 1);
        CompareCount(trial_, "the view", *view_, 1);
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
        {"create-odd", &ImageModel::CreateOdd},
        {"set-any-color-format", &ImageModel::SetAnyColorFormat},
        {"set-any-row-order", &ImageModel::SetAnyRowOrder},
        {"try-refused", &ImageModel::TryRefused},
        {"hold-again", &ImageModel::HoldAgain},
        {"copy-const", &ImageModel::CopyConst},
        {"copy-const-for-nobody", &ImageModel::CopyConstForNobody},
        {"copy-view", &ImageModel::CopyView},
        {"make-mutable-of-view", &ImageModel::MakeMutableOfView},
        {"make-const-while-locked", &ImageModel::MakeConstWhileLocked},
        {"copy-foreign", &ImageModel::CopyForeign},
        {"ask-as-object", &ImageModel::AskAsObject},
        {"drop-before-witnesses", &ImageModel::DropBeforeWitnesses},
        {"lock-and-paint", &ImageModel::LockAndPaint},
    };

private:
    // Nobody else holds the new image, and nobody has locked it.
    void Take(Ref<IImage> image, Picture picture)
    {
        another_ = nullptr;
        image_ = std::move(image);
        picture_ = std::move(picture);
        lock_ = Lock::None;
    }

    void CreateFrom(Picture picture)
    {
        picture.Clear();
        auto image =
            check::MakeImage(trial_, picture.width, picture.height, picture.format, picture.type, picture.order);
        Take(std::move(image), std::move(picture));
    }

    void TakeCopy(IConstImage& source, const Picture& picture)
    {
        Take(
            check::Make<IImage>(trial_, "CreateCopy", [&](IImage** out) { return factory_->CreateCopy(&source, out); }),
            picture);
    }

    // What had the pixels has none any more.
    void MoveBack(const Ref<IConstImage>& view, const Picture& picture)
    {
        trial_.Equal("the description of a view", check::Describe(*view), picture.Describe());
        Take(check::Make<IImage>(trial_, "MakeMutable",
                                 [&](IImage** out) { return factory_->MakeMutable(view.Get(), out); }),
             picture);
        trial_.Equal("the description of a view without its pixels", check::Describe(*view),
                     check::DescribeMovedAway());
        trial_.Same("GetData of a view without its pixels", view->GetData(), nullptr);
    }

    // What the change is answered, with a report where one is due; without the write lock it is always refused.
    template <class Call>
    bool Changes(const std::string& what, Result dueOfWriter, Call&& call)
    {
        const auto due = lock_ == Lock::Write ? dueOfWriter : TVX_E_PRECONDITION;
        if (due == TVX_OK || due == TVX_E_UNSUPPORTED_FORMAT)
            trial_.Gives(what, call(), due);
        else
            trial_.Reports(what, due == TVX_E_FAIL ? "TVX_RETURN_FAIL_IF" : "TVX_CHECK_PRECOND", due, call);
        return due == TVX_OK;
    }

    void ChangeFormat(std::int32_t format)
    {
        if (Changes("SetColorFormat", picture_.ForeseeFormat(format), [&] { return image_->SetColorFormat(format); }))
            picture_.SetFormat(format);
    }

    void ChangeOrder(std::int32_t order)
    {
        if (Changes("SetRowOrder", picture_.ForeseeOrder(order), [&] { return image_->SetRowOrder(order); }))
            picture_.SetOrder(order);
    }

    void ComparePixels(const std::string& what, const void* data, bool given, const Picture& due)
    {
        trial_.Equal("whether GetData of " + what + " gives null", data == nullptr, !given || due.pixels.empty());
        trial_.Expect(data == nullptr || std::memcmp(data, due.pixels.data(), due.pixels.size()) == 0,
                      "the pixels of " + what + " to be what was painted", "other bytes");
    }

    check::Trial& trial_;
    Ref<IImageFactory> factory_;
    Ref<IImage> image_;
    Ref<IImage> another_;  // a second reference on the image, or null
    Picture picture_;
    Lock lock_ = Lock::None;
    Ref<IConstImage> view_;
    Picture viewed_;
};

constexpr auto Names = GetNames(ImageModel::Operations);

}  // namespace

const Walk ImageWalk = {"image", check::ImageExport, Names, &ImageModel::Start};

}  // namespace tvx::fuzz
