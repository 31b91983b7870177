// SPDX-License-Identifier: MIT
#include "Host/TracedView.h"

#include "Helpers/Ref.h"

namespace tvx::host
{

namespace
{

// Empty when the object refuses.
Ref<IObjectBase> Ask(IObjectBase& object, const char* id)
{
    void* answer = nullptr;
    if (TVX_FAILED(object.DoQueryInterface(id, &answer)))
        return nullptr;
    return Ref<IObjectBase>::Adopt(static_cast<IObjectBase*>(answer));
}

void Examine(IObjectBase& real, const TracedInterface& asked, TracedView& view)
{
    const auto answer = Ask(real, asked.id);
    if (!answer)
        return;
    if (answer.Get() == &real && asked.IsA(*view.longest))
        view.longest = &asked;
    if (*asked.type == typeid(IObjectBase))
        view.identity = answer.Get();
    if (*asked.type == typeid(IObject))
        view.listenedAt = static_cast<IObject*>(answer.Get());
}

}  // namespace

TracedView ExamineObject(IObjectBase& real, const TracedInterface& as)
{
    TracedView view = {&as, &real, nullptr};
    for (const auto* const known : GetTracedInterfaces())
    {
        if (known->id != nullptr)
            Examine(real, *known, view);
    }
    // Some objects are IObject without answering to it.
    const auto* const object = FindTracedInterface(IObject::Id);
    if (view.longest->IsA(*object))
        view.listenedAt = static_cast<IObject*>(&real);
    return view;
}

}  // namespace tvx::host
