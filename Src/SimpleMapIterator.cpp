// SPDX-License-Identifier: MIT
#include "Src/SimpleMapIterator.h"

#include "Helpers/Results.h"

namespace tvx
{

Result CSimpleMapIterator::Next()
{
    if (!IsAtEnd())
        MoveOn();
    return IsAtEnd() ? TVX_E_FAIL : TVX_OK;
}

Result CSimpleMapIterator::IsEnd(bool* out)
{
    TVX_RETURN_EPOINTER_IF_NULL(out);
    *out = IsAtEnd();
    return TVX_OK;
}

void CSimpleMapIterator::Seek(std::string_view key)
{
    if (!IsAtEnd() && GetCurrentKey() < key)
        MoveTo(GetTable().lower_bound(key));
}

}  // namespace tvx
