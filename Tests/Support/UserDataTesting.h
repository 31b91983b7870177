// SPDX-License-Identifier: MIT
#pragma once

#include "InterfacesHelpers/UserDataContainer.h"
#include "Tests/Support/Doubles.h"

namespace tvx::test
{

// A container of user data that can be told to refuse its iterators, which it then delivers all the same.
class RefusingContainer final : public ClassImpl<RefusingContainer, UserDataContainerImpl>
{
public:
    using Interfaces = InterfaceList<IUserDataContainer, IObject, IObjectBase>;

    Result CreateUserDataIterator(IUserDataIterator** out) override
    {
        const auto made = UserDataContainerImpl::CreateUserDataIterator(out);
        return TVX_FAILED(refusal) ? refusal : made;
    }

    Result refusal = TVX_OK;
};

}  // namespace tvx::test
