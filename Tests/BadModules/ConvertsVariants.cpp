// SPDX-License-Identifier: MIT
#include "Tests/BadModules/OneExport.h"
#include "Tests/BadModules/Variants.h"

namespace tvx::bad
{

namespace
{

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

class Wrong final : public ForwardingVariants<Wrong>
{
public:
    Result CreateInt(std::int32_t value, IVariant** out) override { return HandOutNew<ConvertingVariant>(out, value); }
};

}  // namespace

constexpr Export Exports[] = {{VariantId, &Wrong::GetExportInstance}};

}  // namespace tvx::bad
