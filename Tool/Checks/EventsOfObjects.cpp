// SPDX-License-Identifier: MIT
#include "Tool/Checks/Check.h"
#include "Tool/Checks/Doubles.h"
#include "Tool/Checks/Objects.h"

namespace tvx::check
{

// "Destroyed", which every object tells of, on every class that a module makes.
namespace
{

using Objects = std::vector<Ref<IObject>>;

Objects MakeStrings(Trial& trial)
{
    return {MakeString(trial, "text")};
}

Objects MakeVariants(Trial& trial)
{
    return {MakeBool(trial, true),   MakeInt(trial, 1),       MakeFloat(trial, 0.5f),
            MakeDouble(trial, 0.25), MakeText(trial, "text"), MakeObject(trial, nullptr)};
}

Objects MakeMaps(Trial& trial)
{
    return {MakeMap(trial)};
}

Objects MakeSimpleMaps(Trial& trial)
{
    return {MakeSimpleMap(trial)};
}

Objects MakeCollections(Trial& trial)
{
    return {MakeCollection(trial)};
}

Objects MakeVariantArrays(Trial& trial)
{
    return {MakeVariantArray(trial)};
}

// An image, and a read-only one, which is of another class.
Objects MakeImages(Trial& trial)
{
    const auto factory = trial.Get<IImageFactory>(ImageExport);
    const auto image = MakeImage(trial, 2, 2, ColorFormat::OneChannel, DataType::OneByte, 0);
    const auto view = Make<IConstImage>(trial, "CreateConstCopy",
                                        [&](IConstImage** out) { return factory->CreateConstCopy(image.Get(), out); });
    return {image, view};
}

// Takes the last reference of one of the objects away, which nobody but the caller may hold.
void Destroy(Trial& trial, Ref<IObject>& object)
{
    trial.Equal("the reference count of a subscribed object", object->GetRefCount(), 1u);
    object = nullptr;
}

void ExpectDestroyed(Trial& trial, const SeenEvent& event, std::uint64_t userData)
{
    trial.Equal("the interface id of the event", event.interfaceId, IObject::Id);
    trial.Equal("the name of the event", event.eventName, "Destroyed");
    trial.Equal("the parameter of \"Destroyed\"", event.param, 0u);
    trial.Equal("the user value of the call", event.userData, userData);
}

template <Objects (*MakeObjects)(Trial&)>
void CallsEachSubscription(Trial& trial)
{
    for (auto& object : MakeObjects(trial))
    {
        const auto handler = MakeRef<RecordingHandler>();
        object->SubscribeDestroyed(handler.Get(), 1);
        object->SubscribeDestroyed(handler.Get(), 0xFEDCBA9876543210u);
        Destroy(trial, object);
        trial.Equal("the number of calls of \"Destroyed\"", handler->events.size(), std::size_t{2});
        ExpectDestroyed(trial, handler->events[0], 1);
        ExpectDestroyed(trial, handler->events[1], 0xFEDCBA9876543210u);
    }
}

template <Objects (*MakeObjects)(Trial&)>
void ForgetsOneSubscription(Trial& trial)
{
    for (auto& object : MakeObjects(trial))
    {
        const auto handler = MakeRef<RecordingHandler>();
        object->SubscribeDestroyed(handler.Get(), 1);
        object->SubscribeDestroyed(handler.Get(), 2);
        object->UnsubscribeDestroyed(handler.Get());
        Destroy(trial, object);
        trial.Equal("the number of calls of \"Destroyed\"", handler->events.size(), std::size_t{1});
        ExpectDestroyed(trial, handler->events[0], 2);
    }
}

template <Objects (*MakeObjects)(Trial&)>
void ForgetsAllSubscriptions(Trial& trial)
{
    for (auto& object : MakeObjects(trial))
    {
        const auto first = MakeRef<RecordingHandler>();
        const auto second = MakeRef<RecordingHandler>();
        for (const auto& handler : {first, second, first})
            object->SubscribeDestroyed(handler.Get(), 0);
        object->UnsubscribeDestroyed(nullptr);
        Destroy(trial, object);
        trial.Equal("the calls of all handlers together", first->events.size() + second->events.size(), std::size_t{0});
    }
}

// The same promises for every class; only the names of the checks tell the classes apart.
template <Objects (*MakeObjects)(Trial&)>
constexpr std::array<Check, 3> MakeChecks(const char* calls, const char* forgetsOne, const char* forgetsAll)
{
    return {{
        {calls, "A handler subscribes to \"Destroyed\" twice, and the last reference of the object is released.",
         "Each subscription is one call, in the order of subscribing, with its own 64-bit user value, the event "
         "\"Destroyed\" of com.talvere.general.tvx.IObject/1.0 and the parameter 0. Subscriptions do not keep the "
         "object alive.",
         CallsEachSubscription<MakeObjects>},
        {forgetsOne, "A handler that is subscribed to \"Destroyed\" twice is unsubscribed once.",
         "One unsubscribing removes one subscription of the handler, the oldest; the other one stays.",
         ForgetsOneSubscription<MakeObjects>},
        {forgetsAll, "A null handler is unsubscribed from \"Destroyed\".",
         "Unsubscribing a null handler removes the subscriptions of all handlers to \"Destroyed\".",
         ForgetsAllSubscriptions<MakeObjects>},
    }};
}

constexpr auto StringRows =
    MakeChecks<MakeStrings>("event-string-destroyed-calls-each-subscription", "event-string-destroyed-unsubscribes-one",
                            "event-string-destroyed-null-unsubscribes-all");
constexpr auto VariantRows = MakeChecks<MakeVariants>("event-variant-destroyed-calls-each-subscription",
                                                      "event-variant-destroyed-unsubscribes-one",
                                                      "event-variant-destroyed-null-unsubscribes-all");
constexpr auto MapRows =
    MakeChecks<MakeMaps>("event-map-destroyed-calls-each-subscription", "event-map-destroyed-unsubscribes-one",
                         "event-map-destroyed-null-unsubscribes-all");
constexpr auto SettingsMapRows = MakeChecks<MakeSimpleMaps>("event-settings-map-destroyed-calls-each-subscription",
                                                            "event-settings-map-destroyed-unsubscribes-one",
                                                            "event-settings-map-destroyed-null-unsubscribes-all");
constexpr auto CollectionRows = MakeChecks<MakeCollections>("event-collection-destroyed-calls-each-subscription",
                                                            "event-collection-destroyed-unsubscribes-one",
                                                            "event-collection-destroyed-null-unsubscribes-all");
constexpr auto VariantArrayRows = MakeChecks<MakeVariantArrays>("event-variant-array-destroyed-calls-each-subscription",
                                                                "event-variant-array-destroyed-unsubscribes-one",
                                                                "event-variant-array-destroyed-null-unsubscribes-all");
constexpr auto ImageRows =
    MakeChecks<MakeImages>("event-image-destroyed-calls-each-subscription", "event-image-destroyed-unsubscribes-one",
                           "event-image-destroyed-null-unsubscribes-all");

}  // namespace

extern const Family DestroyedStringFamily = {"events", StringExport, Needs::Module, StringRows};
extern const Family DestroyedVariantFamily = {"events", VariantExport, Needs::Module, VariantRows};
extern const Family DestroyedMapFamily = {"events", MapExport, Needs::Module, MapRows};
extern const Family DestroyedSettingsMapFamily = {"events", SimpleMapExport, Needs::Module, SettingsMapRows};
extern const Family DestroyedCollectionFamily = {"events", CollectionExport, Needs::Module, CollectionRows};
extern const Family DestroyedVariantArrayFamily = {"events", VariantArrayExport, Needs::Module, VariantArrayRows};
extern const Family DestroyedImageFamily = {"events", ImageExport, Needs::Module, ImageRows};

}  // namespace tvx::check
