// SPDX-License-Identifier: MIT
#include "Tool/Checks/Check.h"
#include "Tool/Checks/ObjectPromises.h"
#include "Tool/Checks/Objects.h"

namespace tvx::check
{

namespace
{

constexpr const char VariantRule[] = "A variant answers IVariant, IObject and IObjectBase with its primary face and "
                                     "ISerializable with another one, and refuses all else.";

constexpr Check StringChecks[] = {
    AnswersItsList<StringFactoryClass>("identity-string-factory-answers-its-interfaces",
                                       "The string factory answers IStringFactory and IObjectBase. It refuses IObject, "
                                       "though it has its operations: an intended gap."),
    AnswersItsList<StringClass>(
        "identity-string-answers-its-interfaces",
        "A string answers IString and IObjectBase. It refuses IObject, though it has its operations: an intended gap."),
    RefuseNearMisses<StringOffer>("identity-strings-refuse-near-misses"),
    IsSharedByModuleAndAsker<StringOffer>("identity-string-factory-is-shared-by-module-and-asker"),
    AreMadeWithOneReference<StringOffer>("identity-strings-are-made-with-one-reference"),
    CountTheirReferences<StringOffer>("identity-strings-count-their-references"),
    AreNewEachTime<StringOffer>("identity-strings-are-new-each-time"),
    BelongToTheirThread<StringOffer>("identity-strings-belong-to-their-thread"),
    TellTheirEnd<StringOffer>("identity-strings-tell-their-end"),
    TellTheirEndToEachSubscription<StringOffer>("identity-strings-tell-their-end-to-each-subscription"),
};

constexpr Check VariantChecks[] = {
    AnswersItsList<VariantFactoryClass>("identity-variant-factory-answers-its-interfaces",
                                        "The variant factory answers IVariantFactory, IObject and IObjectBase with its "
                                        "primary face and IDeserializable with another one, and refuses all else."),
    AnswersItsList<BoolVariantClass>("identity-bool-variant-answers-its-interfaces", VariantRule),
    AnswersItsList<IntVariantClass>("identity-int-variant-answers-its-interfaces", VariantRule),
    AnswersItsList<FloatVariantClass>("identity-float-variant-answers-its-interfaces", VariantRule),
    AnswersItsList<DoubleVariantClass>("identity-double-variant-answers-its-interfaces", VariantRule),
    AnswersItsList<StringVariantClass>("identity-string-variant-answers-its-interfaces", VariantRule),
    AnswersItsList<ObjectVariantClass>("identity-object-variant-answers-its-interfaces", VariantRule),
    RefuseNearMisses<VariantOffer>("identity-variants-refuse-near-misses"),
    IsSharedByModuleAndAsker<VariantOffer>("identity-variant-factory-is-shared-by-module-and-asker"),
    AreMadeWithOneReference<VariantOffer>("identity-variants-are-made-with-one-reference"),
    CountTheirReferences<VariantOffer>("identity-variants-count-their-references"),
    AreNewEachTime<VariantOffer>("identity-variants-are-new-each-time"),
    GiveNewFormatTexts<VariantOffer>("identity-variants-give-new-format-texts"),
    BelongToTheirThread<VariantOffer>("identity-variants-belong-to-their-thread"),
    TellTheirEnd<VariantOffer>("identity-variants-tell-their-end"),
    TellTheirEndToEachSubscription<VariantOffer>("identity-variants-tell-their-end-to-each-subscription"),
};

}  // namespace

extern const Family IdentityOfStringFamily = {"identity", StringExport, Needs::Module, StringChecks};
extern const Family IdentityOfVariantFamily = {"identity", VariantExport, Needs::Module, VariantChecks};

}  // namespace tvx::check
