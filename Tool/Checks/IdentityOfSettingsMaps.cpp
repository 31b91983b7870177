// SPDX-License-Identifier: MIT
#include "Tool/Checks/Check.h"
#include "Tool/Checks/ObjectPromises.h"
#include "Tool/Checks/Objects.h"

namespace tvx::check
{

namespace
{

constexpr const char IteratorRule[] = "An iterator is used through the pointer that made it: it answers IObjectBase, "
                                      "by that very pointer, and refuses all else.";

void GiveNewTexts(Trial& trial)
{
    const auto map = MakeSimpleMap(trial);
    trial.Gives("SetString", map->SetString("key", "value"), TVX_OK);
    Ref<IString> texts[2];
    for (auto& text : texts)
    {
        trial.Gives("GetString", map->GetString("key", text.Receive()), TVX_S_VALUE);
        trial.Expect(static_cast<bool>(text), "GetString to give a string", "null");
        trial.Equal("the count of the string that GetString gives", text->GetRefCount(), 1u);
        trial.Equal("the text of it", text->GetText(), "value");
    }
    trial.Expect(texts[0].Get() != texts[1].Get(), "GetString to give a new string each time", "the same one twice");
}

// The versions are one table, so all are the same face, of a sub-map and a clone as well.
void AnswerAlikeHoweverTheyAreMade(Trial& trial)
{
    const auto map = MakeSimpleMap(trial);
    trial.Gives("SetString", map->SetString("path\\key", "value"), TVX_OK);
    Ref<ISimpleMap> below;
    trial.Gives("GetSubMap", map->GetSubMap("path", below.Receive()), TVX_S_VALUE);
    const auto copy = Make<ISimpleMap>(trial, "Clone", [&](ISimpleMap** out) { return map->Clone(out); });
    for (const auto& made : {below, copy})
    {
        for (const auto& id : SimpleMapClass.faces[0].ids)
        {
            if (id == nullptr)
                continue;
            void* face = nullptr;
            trial.Gives(std::string("the query of a sub-map or clone for ") + id, made->QueryInterface(id, &face),
                        TVX_OK);
            trial.Same(std::string("what a sub-map or clone gives for ") + id, face, made.Get());
            Ref<IObjectBase>::Adopt(static_cast<IObjectBase*>(face));
        }
    }
}

constexpr Check Checks[] = {
    AnswersItsList<SimpleMapFactoryClass>(
        "identity-settings-map-factory-answers-its-interfaces",
        "The settings map factory answers IFactory, IObject and IObjectBase with its primary face, IDeserializable "
        "with a second one, IImportsContainer, and nothing else, with a third one, and refuses all else."),
    AnswersItsList<SimpleMapClass>(
        "identity-settings-map-answers-its-interfaces",
        "A settings map answers ISimpleMap/1.0 to 1.5, IObject and IObjectBase with its primary face, as all versions "
        "are one table, ISerializable and IUserDataContainer with one more each, and refuses all else."),
    AnswersItsList<IteratorClass>("identity-iterator-answers-iobjectbase-only", IteratorRule),
    AnswersItsList<NoSubMapsIteratorClass>("identity-no-sub-maps-iterator-answers-iobjectbase-only", IteratorRule),
    AnswersItsList<UserDataIteratorClass>("identity-user-data-iterator-answers-iobjectbase-only", IteratorRule),
    RefuseNearMisses<SimpleMapOffer>("identity-settings-maps-refuse-near-misses"),
    IsSharedByModuleAndAsker<SimpleMapOffer>("identity-settings-map-factory-is-shared-by-module-and-asker"),
    AreMadeWithOneReference<SimpleMapOffer>("identity-settings-maps-are-made-with-one-reference"),
    CountTheirReferences<SimpleMapOffer>("identity-settings-maps-count-their-references"),
    AreNewEachTime<SimpleMapOffer>("identity-settings-maps-are-new-each-time"),
    GiveNewFormatTexts<SimpleMapOffer>("identity-settings-maps-give-new-format-texts"),
    BelongToTheirThread<SimpleMapOffer>("identity-settings-maps-belong-to-their-thread"),
    TellTheirEnd<SimpleMapOffer>("identity-settings-maps-tell-their-end"),
    TellTheirEndToEachSubscription<SimpleMapOffer>("identity-settings-maps-tell-their-end-to-each-subscription"),
    {"identity-settings-map-gives-new-texts", "The text of a key is read twice.",
     "Every text that is handed out is a new string with one reference.", GiveNewTexts},
    {"identity-settings-map-copies-answer-alike",
     "A sub-map and a clone are asked for the identifiers of settings maps.",
     "Whichever way a settings map is made, it answers ISimpleMap/1.0 to 1.5, IObject and IObjectBase with one face.",
     AnswerAlikeHoweverTheyAreMade},
};

}  // namespace

extern const Family IdentityOfSimpleMapFamily = {"identity", SimpleMapExport, Needs::Module, Checks};

}  // namespace tvx::check
