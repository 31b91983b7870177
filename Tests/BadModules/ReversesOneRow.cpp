// SPDX-License-Identifier: MIT
#include "Tests/BadModules/Images.h"
#include "Tests/BadModules/OneExport.h"

namespace tvx::bad
{

namespace
{

// Changes the order of one row, where there is nothing to change.
class Wrong final : public ForwardingImage
{
public:
    using ForwardingImage::ForwardingImage;

    std::int32_t GetRowOrder() override { return isChanged_ ? order_ : ForwardingImage::GetRowOrder(); }
    Result SetRowOrder(std::int32_t order) override
    {
        if (GetHeight() != 1)
            return ForwardingImage::SetRowOrder(order);
        isChanged_ = true;
        order_ = order;
        return TVX_OK;
    }

private:
    bool isChanged_ = false;
    std::int32_t order_ = 0;
};

}  // namespace

constexpr Export Exports[] = {{ImageId, &ImagesOf<Wrong>::GetExportInstance}};

}  // namespace tvx::bad
