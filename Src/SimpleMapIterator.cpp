// SPDX-License-Identifier: MIT
#include "Src/SimpleMapIterator.h"

#include "Helpers/Results.h"

namespace tvx
{

Result CSimpleMapIterator::Next()
{
    if (!IsAtEnd())
        place_.MoveOn();
    return IsAtEnd() ? TVX_E_FAIL : TVX_OK;
}

Result CSimpleMapIterator::IsEnd(bool* out)
{
    TVX_RETURN_EPOINTER_IF_NULL(out);
    *out = IsAtEnd();
    return TVX_OK;
}

}  // namespace tvx
