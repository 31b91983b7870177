// SPDX-License-Identifier: MIT
#include "Tests/BadModules/Strings.h"

#include <string>

namespace
{

using namespace tvx;

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

class Wrong final : public bad::Strings<Wrong>
{
public:
    Result CreateString(const char* text, IString** out) override
    {
        return HandOutNew<AnsweringString>(out, ToText(text));
    }
};

constexpr Export Exports[] = {{bad::StringId, &Wrong::GetExportInstance}};

const ExportsAtLoad AtLoad(Exports);

}  // namespace

TVX_EXPORT tvx::Result GetExport(const char* id, tvx::IObjectBase** out)
{
    return tvx::GiveExport(Exports, id, out);
}
