// SPDX-License-Identifier: MIT
#pragma once

#include "Tool/Checks/ObjectClasses.h"

// How the objects of each class are had from their export. Each gives an empty specimen when the export refuses.
namespace tvx::check
{

// The export itself.
Specimen GiveExport(const Ref<IObjectBase>& exported);

Specimen NewString(const Ref<IObjectBase>& exported);
Specimen NewBoolVariant(const Ref<IObjectBase>& exported);
Specimen NewIntVariant(const Ref<IObjectBase>& exported);
Specimen NewFloatVariant(const Ref<IObjectBase>& exported);
Specimen NewDoubleVariant(const Ref<IObjectBase>& exported);
Specimen NewStringVariant(const Ref<IObjectBase>& exported);
Specimen NewObjectVariant(const Ref<IObjectBase>& exported);
Specimen NewMap(const Ref<IObjectBase>& exported);
Specimen NewSimpleMap(const Ref<IObjectBase>& exported);
Specimen NewIterator(const Ref<IObjectBase>& exported);
Specimen NewNoSubMapsIterator(const Ref<IObjectBase>& exported);
Specimen NewUserDataIterator(const Ref<IObjectBase>& exported);
Specimen NewCollection(const Ref<IObjectBase>& exported);
Specimen NewVariantArray(const Ref<IObjectBase>& exported);
Specimen NewImage(const Ref<IObjectBase>& exported);
Specimen NewConstImage(const Ref<IObjectBase>& exported);

// Kept from a "MessageLogged" event. The logger is for one thread at a time.
Specimen NewLogRecord(const Ref<IObjectBase>& exported);

}  // namespace tvx::check
