// SPDX-License-Identifier: MIT
#include "Tool/Checks/Check.h"
#include "Tool/Checks/ThreadEvents.h"
#include "Tool/Checks/ThreadPromises.h"

// Objects of every export on many threads.
namespace tvx::check
{

namespace
{

constexpr Check MapChecks[] = {
    CountExactly<MapOffer>("thread-maps-count-exactly"),
    AreMadeOnManyThreads<MapOffer>("thread-maps-are-made-on-many-threads"),
    MayEndOnAnotherThread<MapOffer>("thread-maps-may-end-on-another-thread"),
    EndOnce<MapOffer>("thread-maps-end-once"),
    LockTheirSubscriptions<MapOffer>("thread-maps-lock-their-subscriptions"),
};

constexpr Check SimpleMapChecks[] = {
    CountExactly<SimpleMapOffer>("thread-settings-maps-count-exactly"),
    AreMadeOnManyThreads<SimpleMapOffer>("thread-settings-maps-are-made-on-many-threads"),
    MayEndOnAnotherThread<SimpleMapOffer>("thread-settings-maps-may-end-on-another-thread"),
    EndOnce<SimpleMapOffer>("thread-settings-maps-end-once"),
    LockTheirSubscriptions<SimpleMapOffer>("thread-settings-maps-lock-their-subscriptions"),
    LocksItsEvents<MakeSettingsMapSource>("thread-settings-map-locks-its-events"),
    FiresOnTheCallersThread<MakeSettingsMapSource>("thread-settings-map-fires-on-the-callers-thread"),
    KeepsUnsubscribersWaiting<MakeSettingsMapSource>("thread-settings-map-keeps-unsubscribers-waiting"),
    LocksItsListsApart<MakeSettingsMapSource>("thread-settings-map-locks-its-lists-apart"),
};

constexpr Check CollectionChecks[] = {
    CountExactly<CollectionOffer>("thread-collections-count-exactly"),
    AreMadeOnManyThreads<CollectionOffer>("thread-collections-are-made-on-many-threads"),
    MayEndOnAnotherThread<CollectionOffer>("thread-collections-may-end-on-another-thread"),
    EndOnce<CollectionOffer>("thread-collections-end-once"),
    LockTheirSubscriptions<CollectionOffer>("thread-collections-lock-their-subscriptions"),
    LocksItsEvents<MakeCollectionSource>("thread-collection-locks-its-events"),
    FiresOnTheCallersThread<MakeCollectionSource>("thread-collection-fires-on-the-callers-thread"),
    KeepsUnsubscribersWaiting<MakeCollectionSource>("thread-collection-keeps-unsubscribers-waiting"),
    LocksItsListsApart<MakeCollectionSource>("thread-collection-locks-its-lists-apart"),
};

constexpr Check VariantArrayChecks[] = {
    CountExactly<VariantArrayOffer>("thread-variant-arrays-count-exactly"),
    AreMadeOnManyThreads<VariantArrayOffer>("thread-variant-arrays-are-made-on-many-threads"),
    MayEndOnAnotherThread<VariantArrayOffer>("thread-variant-arrays-may-end-on-another-thread"),
    EndOnce<VariantArrayOffer>("thread-variant-arrays-end-once"),
    LockTheirSubscriptions<VariantArrayOffer>("thread-variant-arrays-lock-their-subscriptions"),
};

constexpr Check ImageChecks[] = {
    CountExactly<ImageOffer>("thread-images-count-exactly"),
    AreMadeOnManyThreads<ImageOffer>("thread-images-are-made-on-many-threads"),
    MayEndOnAnotherThread<ImageOffer>("thread-images-may-end-on-another-thread"),
    EndOnce<ImageOffer>("thread-images-end-once"),
    LockTheirSubscriptions<ImageOffer>("thread-images-lock-their-subscriptions"),
};

// The logger makes its records for one thread at a time.
constexpr Check LoggerChecks[] = {
    CountExactly<LoggerOffer>("thread-log-records-count-exactly"),
    MayEndOnAnotherThread<LoggerOffer>("thread-log-records-may-end-on-another-thread"),
    EndOnce<LoggerOffer>("thread-log-records-end-once"),
    LockTheirSubscriptions<LoggerOffer>("thread-log-records-lock-their-subscriptions"),
    LocksItsEvents<MakeLoggerSource>("thread-logger-locks-its-events"),
    FiresOnTheCallersThread<MakeLoggerSource>("thread-logger-fires-on-the-callers-thread"),
    KeepsUnsubscribersWaiting<MakeLoggerSource>("thread-logger-keeps-unsubscribers-waiting"),
    LocksItsListsApart<MakeLoggerSource>("thread-logger-locks-its-lists-apart"),
};

}  // namespace

extern const Family ThreadsOfMapFamily = {"threads", MapExport, Needs::Module, MapChecks};
extern const Family ThreadsOfSimpleMapFamily = {"threads", SimpleMapExport, Needs::Module, SimpleMapChecks};
extern const Family ThreadsOfCollectionFamily = {"threads", CollectionExport, Needs::Module, CollectionChecks};
extern const Family ThreadsOfVariantArrayFamily = {"threads", VariantArrayExport, Needs::Module, VariantArrayChecks};
extern const Family ThreadsOfImageFamily = {"threads", ImageExport, Needs::Module, ImageChecks};
extern const Family ThreadsOfLoggerFamily = {"threads", LoggerExport, Needs::Module, LoggerChecks};

}  // namespace tvx::check
