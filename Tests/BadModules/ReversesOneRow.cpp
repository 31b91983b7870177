// SPDX-License-Identifier: MIT
#include "Tests/BadModules/Images.h"

namespace
{

using namespace tvx;

// Changes the order of one row, where there is nothing to change.
class Wrong final : public bad::ForwardingImage
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

constexpr Export Exports[] = {{bad::ImageId, &bad::ImagesOf<Wrong>::GetExportInstance}};

const ExportsAtLoad AtLoad(Exports);

}  // namespace

TVX_EXPORT tvx::Result GetExport(const char* id, tvx::IObjectBase** out)
{
    return tvx::GiveExport(Exports, id, out);
}
