// SPDX-License-Identifier: MIT
#include "Src/StringFactory.h"

#include "Helpers/HandOut.h"
#include "Src/String.h"

namespace tvx
{

Result StringFactory::CreateString(const char* text, IString** out)
{
    return HandOutNew<String>(out, ToText(text));
}

}  // namespace tvx
