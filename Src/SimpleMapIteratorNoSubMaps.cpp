// SPDX-License-Identifier: MIT
#include "Src/SimpleMapIteratorNoSubMaps.h"

#include "Helpers/Results.h"

namespace tvx
{

Result CSimpleMapIteratorNoSubMaps::Next()
{
    if (IsAtEnd())
        return TVX_E_FAIL;
    const auto visited = place_.Get()->GetKey();  // stays where it is: entries never move
    do
        place_.MoveOn();
    while (!IsAtEnd() && place_.Get()->GetKey().starts_with(visited));
    return IsAtEnd() ? TVX_E_FAIL : TVX_OK;
}

Result CSimpleMapIteratorNoSubMaps::IsEnd(bool* out)
{
    TVX_RETURN_EPOINTER_IF_NULL(out);
    *out = IsAtEnd();
    return TVX_OK;
}

}  // namespace tvx
