// SPDX-License-Identifier: MIT
#pragma once

#include "Helpers/ClassImpl.h"
#include "Helpers/Singleton.h"
#include "Interfaces/IImage.h"

namespace tvx
{

// The image export: makes, copies and converts images. Keeps no state; any thread.
class ImageFactory final : public ClassImpl<ImageFactory, IImageFactory>, public Singleton<ImageFactory, IImageFactory>
{
public:
    using Interfaces = InterfaceList<IImageFactory, IObject, IObjectBase>;

    Result Create(std::int32_t width, std::int32_t height, std::int32_t format, std::int32_t type, std::int32_t order,
                  IImage** out) override;
    Result CreateCopy(IConstImage* source, IImage** out) override;
    Result CreateConstCopy(IConstImage* source, IConstImage** out) override;
    Result MakeConst(IImage* image, IConstImage** out) override;
    Result MakeMutable(IConstImage* image, IImage** out) override;
};

}  // namespace tvx
