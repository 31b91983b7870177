// SPDX-License-Identifier: MIT
#include "Greeter.h"

#include "Helpers/HandOut.h"

#include <string>

namespace greeting
{

tvx::Result Greeter::Greet(const char* name, tvx::IString** out)
try
{
    TVX_RETURN_EPOINTER_IF_NULL(name);
    const auto strings = GreeterFactory::GetImport<tvx::IStringFactory>("Strings");
    TVX_RETURN_FAIL_IF_NULL(strings.Get());
    const auto text = "Hello, " + std::string(name) + "!";
    return strings->CreateString(text.c_str(), out);
}
catch (...)  // want of memory; nothing is thrown out of a module
{
    return tvx::TVX_E_POINTER;
}

tvx::Result GreeterFactory::Create(tvx::IObjectBase** out)
{
    return tvx::HandOutNew<Greeter>(out);
}

}  // namespace greeting
