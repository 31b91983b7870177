// SPDX-License-Identifier: MIT
#include "Interfaces/IConfigurable.h"
#include "Interfaces/IImportsContainer.h"
#include "Interfaces/ITVXPlugin.h"
#include "Tool/Checks/SlotsOfObjects.h"

#include <type_traits>

namespace tvx::check
{

namespace
{

// The face Face of an export, where it answers that and its table begins as that of Interface.
template <class Interface, class Face>
void AddFace(const std::string& exportId, const Ref<IObjectBase>& object, std::vector<NamedObject<Interface>>& faces)
{
    if constexpr (std::is_base_of_v<Interface, Face>)
    {
        if (auto face = Query<Face>(object))
            faces.push_back({"the export " + exportId + ", asked for " + Face::Id, std::move(face)});
    }
}

template <class Interface, class... Faces>
void AddFaces(const std::string& exportId, const Ref<IObjectBase>& object, std::vector<NamedObject<Interface>>& faces)
{
    (AddFace<Interface, Faces>(exportId, object, faces), ...);
}

// The faces of the exports: an object has a table for each interface that it does not derive in one line. An export that the
// module does not give is left to the checks of exports.
template <class Interface>
std::vector<NamedObject<Interface>> GetExports(Trial& trial)
{
    std::vector<NamedObject<Interface>> faces;
    for (const auto& declared : trial.GetDocument().exports)
    {
        const auto object = trial.Load().GetExport(declared.id);
        if (object)
            AddFaces<Interface, IObjectBase, IObject, IDeserializable, IConfigurable, IImportsContainer, ITVXPlugin>(
                declared.id, *object, faces);
    }
    if (faces.empty())
        trial.Skip(std::string("no export of the module answers ") + Interface::Id);
    return faces;
}

template <class Interface, void (*Judge)(Trial&, Interface&, const std::string&)>
void OnExports(Trial& trial)
{
    for (const auto& offered : GetExports<Interface>(trial))
        Judge(trial, *offered.object, offered.name);
}

// Exports live until their module is unloaded. What the module writes then is not of interest here.
template <void (*Judge)(Trial&, ObjectsToTheEnd, const std::function<void()>&)>
void OnExportsToTheEnd(Trial& trial)
{
    Judge(trial, GetExports<IObject>(trial), [&] { static_cast<void>(trial.TakeOutput([&] { trial.Unload(); })); });
}

constexpr Check Checks[] = {
    {"slot-object-base-1-add-ref", "AddRef of every export is called by its number.", AddRefRule,
     OnExports<IObjectBase, JudgeAddRef>},
    {"slot-object-base-2-release", "Release of every export is called by its number.", ReleaseRule,
     OnExports<IObjectBase, JudgeRelease>},
    {"slot-object-base-3-query-interface", "QueryInterface of every export is called by its number.",
     QueryInterfaceRule, OnExports<IObjectBase, JudgeQueryInterface>},
    {"slot-object-base-4-do-query-interface", "DoQueryInterface of every export is called by its number.",
     DoQueryInterfaceRule, OnExports<IObjectBase, JudgeDoQueryInterface>},
    {"slot-object-base-5-is-unique", "IsUnique of every export, which is held twice, is called by its number.",
     IsUniqueRule, OnExports<IObjectBase, JudgeIsUnique>},
    {"slot-object-base-6-get-ref-count", "GetRefCount of every export is called by its number.", GetRefCountRule,
     OnExports<IObjectBase, JudgeGetRefCount>},
    {"slot-object-7-subscribe-destroyed",
     "SubscribeDestroyed of every export that answers IObject is called by its number, and the module is unloaded.",
     SubscribeDestroyedRule, OnExportsToTheEnd<JudgeSubscribeDestroyed>},
    {"slot-object-8-unsubscribe-destroyed",
     "UnsubscribeDestroyed of every export that answers IObject is called by its number, and the module is unloaded.",
     UnsubscribeDestroyedRule, OnExportsToTheEnd<JudgeUnsubscribeDestroyed>},
    {"slot-object-9-get-owner-thread-id",
     "GetOwnerThreadId of every export that answers IObject is called by its number, on the thread that loaded the "
     "module.",
     GetOwnerThreadIdRule, OnExports<IObject, JudgeGetOwnerThreadId>},
    {"slot-object-10-set-owner-thread-id",
     "SetOwnerThreadId of every export that answers IObject is called by its number.", SetOwnerThreadIdRule,
     OnExports<IObject, JudgeSetOwnerThreadId>},
};

}  // namespace

extern const Family SlotsOfAnyFamily = {"slots", nullptr, Needs::Module, Checks};

}  // namespace tvx::check
