// SPDX-License-Identifier: MIT
#include "Src/SimpleMapIteratorNoSubMaps.h"

#include "Helpers/Results.h"

namespace tvx
{

Result CSimpleMapIteratorNoSubMaps::Next()
{
    if (IsAtEnd())
        return TVX_E_FAIL;
    const std::string& visited = GetCurrentKey();  // stays where it is: entries never move
    do
        MoveOn();
    while (!IsAtEnd() && GetCurrentKey().starts_with(visited));
    return IsAtEnd() ? TVX_E_FAIL : TVX_OK;
}

Result CSimpleMapIteratorNoSubMaps::IsEnd(bool* out)
{
    TVX_RETURN_EPOINTER_IF_NULL(out);
    *out = IsAtEnd();
    return TVX_OK;
}

}  // namespace tvx
