// SPDX-License-Identifier: MIT
#include "Tool/Checks/Check.h"
#include "Tool/Checks/ObjectPromises.h"
#include "Tool/Checks/Objects.h"

namespace tvx::check
{

namespace
{

constexpr Check MapChecks[] = {
    AnswersItsList<MapFactoryClass>("identity-map-factory-answers-its-interfaces",
                                    "The map factory answers IMapFactory, IObject and IObjectBase with its primary "
                                    "face and IDeserializable with another one, and refuses all else."),
    AnswersItsList<MapClass>("identity-map-answers-its-interfaces",
                             "A map answers IMap, IObject and IObjectBase with its primary face and ISerializable with "
                             "another one, and refuses all else."),
    RefuseNearMisses<MapOffer>("identity-maps-refuse-near-misses"),
    IsSharedByModuleAndAsker<MapOffer>("identity-map-factory-is-shared-by-module-and-asker"),
    AreMadeWithOneReference<MapOffer>("identity-maps-are-made-with-one-reference"),
    CountTheirReferences<MapOffer>("identity-maps-count-their-references"),
    AreNewEachTime<MapOffer>("identity-maps-are-new-each-time"),
    GiveNewFormatTexts<MapOffer>("identity-maps-give-new-format-texts"),
    BelongToTheirThread<MapOffer>("identity-maps-belong-to-their-thread"),
    TellTheirEnd<MapOffer>("identity-maps-tell-their-end"),
    TellTheirEndToEachSubscription<MapOffer>("identity-maps-tell-their-end-to-each-subscription"),
};

constexpr Check CollectionChecks[] = {
    AnswersItsList<CollectionFactoryClass>(
        "identity-collection-factory-answers-its-interfaces",
        "The collection factory answers ICollectionFactory, IObject and IObjectBase with its primary face, "
        "IDeserializable with a second one, ITVXPlugin and IConstTVXPlugin with a third one, and refuses all else."),
    AnswersItsList<CollectionClass>("identity-collection-answers-its-interfaces",
                                    "A collection answers ICollection/2.0, ICollection/1.1, IObject and IObjectBase "
                                    "with its primary face and ISerializable with another one, and refuses all else."),
    RefuseNearMisses<CollectionOffer>("identity-collections-refuse-near-misses"),
    IsSharedByModuleAndAsker<CollectionOffer>("identity-collection-factory-is-shared-by-module-and-asker"),
    AreMadeWithOneReference<CollectionOffer>("identity-collections-are-made-with-one-reference"),
    CountTheirReferences<CollectionOffer>("identity-collections-count-their-references"),
    AreNewEachTime<CollectionOffer>("identity-collections-are-new-each-time"),
    GiveNewFormatTexts<CollectionOffer>("identity-collections-give-new-format-texts"),
    BelongToTheirThread<CollectionOffer>("identity-collections-belong-to-their-thread"),
    TellTheirEnd<CollectionOffer>("identity-collections-tell-their-end"),
    TellTheirEndToEachSubscription<CollectionOffer>("identity-collections-tell-their-end-to-each-subscription"),
};

constexpr Check VariantArrayChecks[] = {
    AnswersItsList<VariantArrayFactoryClass>(
        "identity-variant-array-factory-answers-its-interfaces",
        "The variant array factory answers IDeserializable and IObjectBase with its primary face, and IFactory and, "
        "unlike all others, IObject with its second one. It refuses all else."),
    AnswersItsList<VariantArrayClass>("identity-variant-array-answers-its-interfaces",
                                      "A variant array answers IVariantArray, IObject and IObjectBase with its primary "
                                      "face and ISerializable with another one, and refuses all else."),
    RefuseNearMisses<VariantArrayOffer>("identity-variant-arrays-refuse-near-misses"),
    IsSharedByModuleAndAsker<VariantArrayOffer>("identity-variant-array-factory-is-shared-by-module-and-asker"),
    AreMadeWithOneReference<VariantArrayOffer>("identity-variant-arrays-are-made-with-one-reference"),
    CountTheirReferences<VariantArrayOffer>("identity-variant-arrays-count-their-references"),
    AreNewEachTime<VariantArrayOffer>("identity-variant-arrays-are-new-each-time"),
    GiveNewFormatTexts<VariantArrayOffer>("identity-variant-arrays-give-new-format-texts"),
    BelongToTheirThread<VariantArrayOffer>("identity-variant-arrays-belong-to-their-thread"),
    TellTheirEnd<VariantArrayOffer>("identity-variant-arrays-tell-their-end"),
    TellTheirEndToEachSubscription<VariantArrayOffer>("identity-variant-arrays-tell-their-end-to-each-subscription"),
};

}  // namespace

extern const Family IdentityOfMapFamily = {"identity", MapExport, Needs::Module, MapChecks};
extern const Family IdentityOfCollectionFamily = {"identity", CollectionExport, Needs::Module, CollectionChecks};
extern const Family IdentityOfVariantArrayFamily = {"identity", VariantArrayExport, Needs::Module, VariantArrayChecks};

}  // namespace tvx::check
