// SPDX-License-Identifier: MIT
#include "Tests/BadModules/Variants.h"

namespace
{

using namespace tvx;

// An int that is given as a double, too.
class ConvertingVariant final : public Variant
{
public:
    explicit ConvertingVariant(std::int32_t value) : value_(value) {}

    std::int32_t GetType() override { return TypeInt; }
    Result GetInt(std::int32_t* out) override
    {
        TVX_RETURN_EPOINTER_IF_NULL(out);
        *out = value_;
        return TVX_OK;
    }
    Result GetDouble(double* out) override
    {
        if (out == nullptr)
            return TVX_E_FAIL;
        *out = value_;
        return TVX_OK;
    }

private:
    void WriteValue(ISerializer& writer) override { writer.WriteNamedInt("value", value_); }

    std::int32_t value_;
};

class Wrong final : public bad::ForwardingVariants<Wrong>
{
public:
    Result CreateInt(std::int32_t value, IVariant** out) override { return HandOutNew<ConvertingVariant>(out, value); }
};

constexpr Export Exports[] = {{bad::VariantId, &Wrong::GetExportInstance}};

const ExportsAtLoad AtLoad(Exports);

}  // namespace

TVX_EXPORT tvx::Result GetExport(const char* id, tvx::IObjectBase** out)
{
    return tvx::GiveExport(Exports, id, out);
}
