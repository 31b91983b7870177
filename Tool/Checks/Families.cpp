// SPDX-License-Identifier: MIT
#include "Tool/Checks/Families.h"

#include <array>

namespace tvx::check
{

extern const Family DocumentFamily;
extern const Family DocumentContentFamily;
extern const Family DocumentElementFamily;
extern const Family DocumentTextFamily;
extern const Family PublishedDocumentFamily;

extern const Family LoadFileFamily;
extern const Family LoadFamily;
extern const Family LoadOutputFamily;
extern const Family LoadPlaceFamily;
extern const Family LoadSurroundingsFamily;
extern const Family LoadThreadFamily;

extern const Family ExportFamily;
extern const Family ExportRefusalFamily;

extern const Family IdentityFamily;
extern const Family IdentityCountFamily;
extern const Family IdentityRefusalFamily;
extern const Family IdentityOfStringFamily;
extern const Family IdentityOfVariantFamily;
extern const Family IdentityOfMapFamily;
extern const Family IdentityOfSimpleMapFamily;
extern const Family IdentityOfCollectionFamily;
extern const Family IdentityOfVariantArrayFamily;
extern const Family IdentityOfImageFamily;
extern const Family IdentityOfLoggerFamily;

extern const Family SlotsOfAnyFamily;
extern const Family SlotsOfStringFamily;
extern const Family SlotsOfStringObjectFamily;
extern const Family SlotsOfVariantFactoryFamily;
extern const Family SlotsOfVariantStorageFamily;
extern const Family SlotsOfVariantFamily;
extern const Family SlotsOfVariantObjectFamily;
extern const Family SlotsOfMapAsObjectFamily;
extern const Family SlotsOfMapFamily;
extern const Family SlotsOfSettingsMapAsObjectFamily;
extern const Family SlotsOfUserDataAsObjectFamily;
extern const Family SlotsOfIteratorFamily;
extern const Family SlotsOfSettingsMapEventFamily;
extern const Family SlotsOfSettingsMapImportFamily;
extern const Family SlotsOfSettingsMapObjectFamily;
extern const Family SlotsOfSettingsMapFamily;
extern const Family SlotsOfUserDataFamily;
extern const Family SlotsOfUserDataIteratorFamily;
extern const Family SlotsOfCollectionEventFamily;
extern const Family SlotsOfCollectionFactoryFamily;
extern const Family SlotsOfCollectionFamily;
extern const Family SlotsOfCollectionAsObjectFamily;
extern const Family SlotsOfPluginFamily;
extern const Family SlotsOfVariantArrayAsObjectFamily;
extern const Family SlotsOfVariantArrayFactoryFamily;
extern const Family SlotsOfVariantArrayFamily;
extern const Family SlotsOfImageChangeFamily;
extern const Family SlotsOfImageFactoryFamily;
extern const Family SlotsOfImageFamily;
extern const Family SlotsOfImageObjectFamily;
extern const Family SlotsOfLogDataFamily;
extern const Family SlotsOfLogDataObjectFamily;
extern const Family SlotsOfLoggerFamily;
extern const Family SlotsOfLoggerSetUpFamily;

extern const Family ReportsOfVariantFamily;
extern const Family ReportsOfMapFamily;
extern const Family ReportsOfImportsFamily;
extern const Family ReportsOfSettingsMapFamily;
extern const Family ReportsOfUserDataFamily;
extern const Family ReportsOfWholeSettingsMapFamily;
extern const Family ReportsOfIteratorFamily;
extern const Family ForwardedByCollectionFamily;
extern const Family ReportsOfCollectionFamily;
extern const Family ReportsOfPluginFamily;
extern const Family ReportsOfVariantArrayFamily;
extern const Family ReportsOfLoggerImportsFamily;

extern const Family ValuesOfStringFamily;
extern const Family StringWalkFamily;
extern const Family SharedByVariantFamily;
extern const Family TypesOfVariantFamily;
extern const Family ValuesOfVariantFamily;
extern const Family VariantWalkFamily;
extern const Family KeysOfMapFamily;
extern const Family ValuesOfMapFamily;
extern const Family MapWalkFamily;
extern const Family ClonesOfSettingsMapFamily;
extern const Family ImportsOfSettingsMapFamily;
extern const Family IteratorsOfUserDataFamily;
extern const Family KeysOfSettingsMapFamily;
extern const Family NumbersOfSettingsMapFamily;
extern const Family ReadNumbersOfSettingsMapFamily;
extern const Family RemovalOfUserDataFamily;
extern const Family SubMapFamily;
extern const Family TypesOfSettingsMapFamily;
extern const Family ValuesOfIteratorFamily;
extern const Family ValuesOfSettingsMapFamily;
extern const Family ValuesOfUserDataFamily;
extern const Family SettingsMapWalkFamily;
extern const Family WalksOfIteratorFamily;
extern const Family WrittenSubMapFamily;
extern const Family ChangesOfCollectionFamily;
extern const Family MovesOfCollectionFamily;
extern const Family SearchesOfCollectionFamily;
extern const Family ValuesOfCollectionFamily;
extern const Family ValuesOfPluginFamily;
extern const Family CollectionWalkFamily;
extern const Family AppendsToVariantArrayFamily;
extern const Family ValuesOfVariantArrayFamily;
extern const Family VariantArrayWalkFamily;

extern const Family ChangesWhileStringDiesFamily;
extern const Family DestroyedStringFamily;
extern const Family DestructionOfVariantFamily;
extern const Family DestroyedVariantFamily;
extern const Family DestructionOfMapFamily;
extern const Family DestroyedMapFamily;
extern const Family ChangesWhileSettingsMapFiresFamily;
extern const Family DeliveryOfSettingsMapFamily;
extern const Family EventsFiringAgainFamily;
extern const Family DestructionOfSettingsMapFamily;
extern const Family DestroyedSettingsMapFamily;
extern const Family EventsOfSettingsMapCopyFamily;
extern const Family EventsOfSettingsMapStateFamily;
extern const Family EventsOfSettingsMapFamily;
extern const Family EventsWhileFiringFamily;
extern const Family SubscriptionOfSettingsMapFamily;
extern const Family ChangesWhileCollectionFiresFamily;
extern const Family DeliveryOfCollectionFamily;
extern const Family EventsOfCollectionFamily;
extern const Family DestructionOfCollectionFamily;
extern const Family DestroyedCollectionFamily;
extern const Family SilenceOfCollectionFamily;
extern const Family DestructionOfVariantArrayFamily;
extern const Family DestroyedVariantArrayFamily;
extern const Family DestroyedImageFamily;

extern const Family DamagedVariantFamily;
extern const Family ReadingVariantFamily;
extern const Family SerialisingVariantFamily;
extern const Family ReadingMapFamily;
extern const Family SerialisingMapFamily;
extern const Family ImportsOfObjectEntryFamily;
extern const Family ReadingObjectEntryFamily;
extern const Family ReadingSettingsMapFamily;
extern const Family SerialisingObjectEntryFamily;
extern const Family SerialisingSettingsMapFamily;
extern const Family SerialisingCollectionFamily;
extern const Family ReadingVariantArrayFamily;
extern const Family SerialisingVariantArrayFamily;

extern const Family ThreadFamily;
extern const Family ThreadsOfStringFamily;
extern const Family ThreadsOfVariantFamily;
extern const Family ThreadsOfMapFamily;
extern const Family ThreadsOfSimpleMapFamily;
extern const Family ThreadsOfCollectionFamily;
extern const Family ThreadsOfVariantArrayFamily;
extern const Family ImageThreadLivesFamily;
extern const Family ImageThreadFamily;
extern const Family ThreadsOfImageFamily;
extern const Family ThreadsOfLoggerFamily;

extern const Family ImageCopyFamily;
extern const Family ImageDescriptionFamily;
extern const Family ImageFormatFamily;
extern const Family ImageLockFamily;
extern const Family ImageMoveFamily;
extern const Family ImageRowsFamily;
extern const Family ImageWalkFamily;

extern const Family LoggerConfigurationFamily;
extern const Family LoggerEventsFamily;
extern const Family LoggerFileFamily;
extern const Family LoggerFileNamesFamily;
extern const Family LoggerFlushFamily;
extern const Family LoggerImportFamily;
extern const Family LoggerLevelsFamily;
extern const Family LoggerLinesFamily;
extern const Family LoggerRecordsFamily;
extern const Family LoggerStartUpFamily;
extern const Family LoggerTraceLinesFamily;
extern const Family LoggerWalkFamily;

namespace
{

constexpr std::array Families = {
    &DocumentFamily,
    &DocumentContentFamily,
    &DocumentElementFamily,
    &DocumentTextFamily,
    &PublishedDocumentFamily,
    &LoadFileFamily,
    &LoadFamily,
    &LoadOutputFamily,
    &LoadPlaceFamily,
    &LoadSurroundingsFamily,
    &LoadThreadFamily,
    &ExportFamily,
    &ExportRefusalFamily,
    &IdentityFamily,
    &IdentityCountFamily,
    &IdentityRefusalFamily,
    &IdentityOfStringFamily,
    &IdentityOfVariantFamily,
    &IdentityOfMapFamily,
    &IdentityOfSimpleMapFamily,
    &IdentityOfCollectionFamily,
    &IdentityOfVariantArrayFamily,
    &IdentityOfImageFamily,
    &IdentityOfLoggerFamily,
    &SlotsOfAnyFamily,
    &SlotsOfStringFamily,
    &SlotsOfStringObjectFamily,
    &SlotsOfVariantFactoryFamily,
    &SlotsOfVariantStorageFamily,
    &SlotsOfVariantFamily,
    &SlotsOfVariantObjectFamily,
    &SlotsOfMapAsObjectFamily,
    &SlotsOfMapFamily,
    &SlotsOfSettingsMapAsObjectFamily,
    &SlotsOfUserDataAsObjectFamily,
    &SlotsOfIteratorFamily,
    &SlotsOfSettingsMapEventFamily,
    &SlotsOfSettingsMapImportFamily,
    &SlotsOfSettingsMapObjectFamily,
    &SlotsOfSettingsMapFamily,
    &SlotsOfUserDataFamily,
    &SlotsOfUserDataIteratorFamily,
    &SlotsOfCollectionEventFamily,
    &SlotsOfCollectionFactoryFamily,
    &SlotsOfCollectionFamily,
    &SlotsOfCollectionAsObjectFamily,
    &SlotsOfPluginFamily,
    &SlotsOfVariantArrayAsObjectFamily,
    &SlotsOfVariantArrayFactoryFamily,
    &SlotsOfVariantArrayFamily,
    &SlotsOfImageChangeFamily,
    &SlotsOfImageFactoryFamily,
    &SlotsOfImageFamily,
    &SlotsOfImageObjectFamily,
    &SlotsOfLogDataFamily,
    &SlotsOfLogDataObjectFamily,
    &SlotsOfLoggerFamily,
    &SlotsOfLoggerSetUpFamily,
    &ReportsOfVariantFamily,
    &ReportsOfMapFamily,
    &ReportsOfImportsFamily,
    &ReportsOfSettingsMapFamily,
    &ReportsOfUserDataFamily,
    &ReportsOfWholeSettingsMapFamily,
    &ReportsOfIteratorFamily,
    &ForwardedByCollectionFamily,
    &ReportsOfCollectionFamily,
    &ReportsOfPluginFamily,
    &ReportsOfVariantArrayFamily,
    &ReportsOfLoggerImportsFamily,
    &ValuesOfStringFamily,
    &StringWalkFamily,
    &SharedByVariantFamily,
    &TypesOfVariantFamily,
    &ValuesOfVariantFamily,
    &VariantWalkFamily,
    &KeysOfMapFamily,
    &ValuesOfMapFamily,
    &MapWalkFamily,
    &ClonesOfSettingsMapFamily,
    &ImportsOfSettingsMapFamily,
    &IteratorsOfUserDataFamily,
    &KeysOfSettingsMapFamily,
    &NumbersOfSettingsMapFamily,
    &ReadNumbersOfSettingsMapFamily,
    &RemovalOfUserDataFamily,
    &SubMapFamily,
    &TypesOfSettingsMapFamily,
    &ValuesOfIteratorFamily,
    &ValuesOfSettingsMapFamily,
    &ValuesOfUserDataFamily,
    &SettingsMapWalkFamily,
    &WalksOfIteratorFamily,
    &WrittenSubMapFamily,
    &ChangesOfCollectionFamily,
    &MovesOfCollectionFamily,
    &SearchesOfCollectionFamily,
    &ValuesOfCollectionFamily,
    &ValuesOfPluginFamily,
    &CollectionWalkFamily,
    &AppendsToVariantArrayFamily,
    &ValuesOfVariantArrayFamily,
    &VariantArrayWalkFamily,
    &ChangesWhileStringDiesFamily,
    &DestroyedStringFamily,
    &DestructionOfVariantFamily,
    &DestroyedVariantFamily,
    &DestructionOfMapFamily,
    &DestroyedMapFamily,
    &ChangesWhileSettingsMapFiresFamily,
    &DeliveryOfSettingsMapFamily,
    &EventsFiringAgainFamily,
    &DestructionOfSettingsMapFamily,
    &DestroyedSettingsMapFamily,
    &EventsOfSettingsMapCopyFamily,
    &EventsOfSettingsMapStateFamily,
    &EventsOfSettingsMapFamily,
    &EventsWhileFiringFamily,
    &SubscriptionOfSettingsMapFamily,
    &ChangesWhileCollectionFiresFamily,
    &DeliveryOfCollectionFamily,
    &EventsOfCollectionFamily,
    &DestructionOfCollectionFamily,
    &DestroyedCollectionFamily,
    &SilenceOfCollectionFamily,
    &DestructionOfVariantArrayFamily,
    &DestroyedVariantArrayFamily,
    &DestroyedImageFamily,
    &DamagedVariantFamily,
    &ReadingVariantFamily,
    &SerialisingVariantFamily,
    &ReadingMapFamily,
    &SerialisingMapFamily,
    &ImportsOfObjectEntryFamily,
    &ReadingObjectEntryFamily,
    &ReadingSettingsMapFamily,
    &SerialisingObjectEntryFamily,
    &SerialisingSettingsMapFamily,
    &SerialisingCollectionFamily,
    &ReadingVariantArrayFamily,
    &SerialisingVariantArrayFamily,
    &ThreadFamily,
    &ThreadsOfStringFamily,
    &ThreadsOfVariantFamily,
    &ThreadsOfMapFamily,
    &ThreadsOfSimpleMapFamily,
    &ThreadsOfCollectionFamily,
    &ThreadsOfVariantArrayFamily,
    &ImageThreadLivesFamily,
    &ImageThreadFamily,
    &ThreadsOfImageFamily,
    &ThreadsOfLoggerFamily,
    &ImageCopyFamily,
    &ImageDescriptionFamily,
    &ImageFormatFamily,
    &ImageLockFamily,
    &ImageMoveFamily,
    &ImageRowsFamily,
    &ImageWalkFamily,
    &LoggerConfigurationFamily,
    &LoggerEventsFamily,
    &LoggerFileFamily,
    &LoggerFileNamesFamily,
    &LoggerFlushFamily,
    &LoggerImportFamily,
    &LoggerLevelsFamily,
    &LoggerLinesFamily,
    &LoggerRecordsFamily,
    &LoggerStartUpFamily,
    &LoggerTraceLinesFamily,
    &LoggerWalkFamily,
};

}  // namespace

std::span<const Family* const> GetFamilies()
{
    return Families;
}

}  // namespace tvx::check
