// SPDX-License-Identifier: MIT
#pragma once

#include "Tool/Checks/Trial.h"

#include <string>
#include <vector>

namespace tvx::check
{

// What an object answers to a query for an identifier.
struct Answer
{
    Result result = TVX_OK;
    Ref<IObjectBase> face;      // holds what came with a success; every interface begins with the slots of IObjectBase
    bool isOutTouched = false;  // whether anything was written to the out
};

// Asks by the public query, with an out that holds something else before.
Answer Ask(IObjectBase& object, const char* id);

// A face that an object gave, and one of the identifiers that it gave it for.
struct KnownFace
{
    const char* id;
    Ref<IObjectBase> face;
};

// Every known identifier that the object answers, with what it gave.
std::vector<KnownFace> GetFaces(IObjectBase& object);

// Fails the check unless the object gives -3 for the identifier and leaves the out and its count as they were.
//   what  the object, as a noun phrase
void ExpectRefusal(Trial& trial, IObjectBase& object, const std::string& id, const std::string& what);

// Whether a text is one of the framework's identifiers.
bool IsKnownId(std::string_view text);

// The identifiers of what the module's document lists. Skips the check when it lists nothing.
std::vector<std::string> GetExportIds(Trial& trial);

// An export of the module.
struct ExportedObject
{
    std::string id;
    Ref<IObjectBase> object;
};

// All of them.
std::vector<ExportedObject> GetExports(Trial& trial);

}  // namespace tvx::check
