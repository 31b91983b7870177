// SPDX-License-Identifier: MIT
#include "Tests/BadModules/OneExport.h"
#include "Tests/BadModules/Strings.h"

#include <string>

namespace tvx::bad
{

namespace
{

// IString with its two operations in the wrong order.
class IExchanged : public IObject
{
public:
    static constexpr const char Id[] = "com.talvere.general.tvx.IString/1.0";

    virtual std::uint32_t GetLength() = 0;
    virtual const char* GetText() = 0;

protected:
    ~IExchanged() = default;
};

class ExchangedString final : public ClassImpl<ExchangedString, IExchanged>
{
public:
    using Interfaces = InterfaceList<IExchanged, IObjectBase>;

    explicit ExchangedString(std::string_view text) : text_(text) {}

    std::uint32_t GetLength() override { return static_cast<std::uint32_t>(text_.size()); }
    const char* GetText() override { return text_.c_str(); }

private:
    std::string text_;
};

class Wrong final : public Strings<Wrong>
{
public:
    Result CreateString(const char* text, IString** out) override
    {
        return HandOutNew<ExchangedString>(reinterpret_cast<IExchanged**>(out), ToText(text));
    }
};

}  // namespace

constexpr Export Exports[] = {{StringId, &Wrong::GetExportInstance}};

}  // namespace tvx::bad
