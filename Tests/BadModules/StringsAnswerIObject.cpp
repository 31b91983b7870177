// SPDX-License-Identifier: MIT
#include "Tests/BadModules/OneExport.h"
#include "Tests/BadModules/Strings.h"

#include <string>

namespace tvx::bad
{

namespace
{

// A string that answers IObject, as almost everything does.
class AnsweringString final : public ClassImpl<AnsweringString, IString>
{
public:
    using Interfaces = InterfaceList<IString, IObject, IObjectBase>;

    explicit AnsweringString(std::string_view text) : text_(text) {}

    const char* GetText() override { return text_.c_str(); }
    std::uint32_t GetLength() override { return static_cast<std::uint32_t>(text_.size()); }

private:
    std::string text_;
};

class Wrong final : public Strings<Wrong>
{
public:
    Result CreateString(const char* text, IString** out) override
    {
        return HandOutNew<AnsweringString>(out, ToText(text));
    }
};

}  // namespace

constexpr Export Exports[] = {{StringId, &Wrong::GetExportInstance}};

}  // namespace tvx::bad
