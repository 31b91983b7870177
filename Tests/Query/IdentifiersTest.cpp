// SPDX-License-Identifier: MIT
#include "Interfaces/ICollection.h"
#include "Interfaces/IConfigurable.h"
#include "Interfaces/IFactory.h"
#include "Interfaces/IImage.h"
#include "Interfaces/IImportsContainer.h"
#include "Interfaces/ILibManager.h"
#include "Interfaces/ILogger.h"
#include "Interfaces/IMap.h"
#include "Interfaces/IObject.h"
#include "Interfaces/IObjectBase.h"
#include "Interfaces/ISerializable.h"
#include "Interfaces/ISerializer.h"
#include "Interfaces/ISerializerFactory.h"
#include "Interfaces/ISimpleMap.h"
#include "Interfaces/IString.h"
#include "Interfaces/ITVXPlugin.h"
#include "Interfaces/IUserDataContainer.h"
#include "Interfaces/IVariant.h"
#include "Interfaces/IVariantArray.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

// The identifiers are part of the binary contract: here each stands a second time, as text.
namespace tvx::test
{

namespace
{

struct Identifier
{
    const char* ofInterface;
    const char* text;
};

constexpr Identifier Identifiers[] = {
    {ICollection::Id, "com.talvere.general.tvx.ICollection/1.1"},
    {ICollection2::Id, "com.talvere.general.tvx.ICollection/2.0"},
    {ICollectionFactory::Id, "com.talvere.general.tvx.ICollectionFactory/1.0"},
    {IConfiguration::Id, "com.talvere.general.tvx.IConfiguration/1.0"},
    {IConfigurable::Id, "com.talvere.general.tvx.IConfigurable/1.0"},
    {IFactory::Id, "com.talvere.general.tvx.IFactory/1.0"},
    {IImageBase::Id, "com.talvere.general.tvx.IImageBase/1.0"},
    {IConstImage::Id, "com.talvere.general.tvx.IConstImage/1.0"},
    {IImage::Id, "com.talvere.general.tvx.IImage/1.0"},
    {IImageFactory::Id, "com.talvere.general.tvx.IImageFactory/1.0"},
    {IImportsContainer::Id, "com.talvere.general.tvx.IImportsContainer/1.0"},
    {IExportProxy::Id, "com.talvere.general.tvx.IExportProxy/1.0"},
    {ILibManager::Id, "com.talvere.general.tvx.ILibManager/1.0"},
    {ICrashDumpServer::Id, "com.talvere.general.tvx.ICrashDumpServer/1.0"},
    {ILogData::Id, "com.talvere.general.tvx.ILogData/1.0"},
    {ILogger::Id, "com.talvere.general.tvx.ILogger/1.0"},
    {IMap::Id, "com.talvere.general.tvx.IMap/1.0"},
    {IMapFactory::Id, "com.talvere.general.tvx.IMapFactory/1.0"},
    {IObject::Id, "com.talvere.general.tvx.IObject/1.0"},
    {IEventHandler::Id, "com.talvere.general.tvx.IEventHandler/1.0"},
    {IObjectBase::Id, "com.talvere.general.tvx.IObjectBase/1.0"},
    {ISerializable::Id, "com.talvere.general.tvx.ISerializable/1.0"},
    {IDeserializable::Id, "com.talvere.general.tvx.IDeserializable/1.0"},
    {ISerializer::Id, "com.talvere.general.tvx.ISerializer/1.0"},
    {IDeserializer::Id, "com.talvere.general.tvx.IDeserializer/1.0"},
    {ISerializerFactory::Id, "com.talvere.general.tvx.ISerializerFactory/1.0"},
    {IStringSerializer::Id, "com.talvere.general.tvx.IStringSerializer/1.0"},
    {IStringDeserializer::Id, "com.talvere.general.tvx.IStringDeserializer/1.0"},
    {ISimpleMap::Id, "com.talvere.general.tvx.ISimpleMap/1.0"},
    {ISimpleMap1::Id, "com.talvere.general.tvx.ISimpleMap/1.1"},
    {ISimpleMap2::Id, "com.talvere.general.tvx.ISimpleMap/1.2"},
    {ISimpleMap3::Id, "com.talvere.general.tvx.ISimpleMap/1.3"},
    {ISimpleMap4::Id, "com.talvere.general.tvx.ISimpleMap/1.4"},
    {ISimpleMap5::Id, "com.talvere.general.tvx.ISimpleMap/1.5"},
    {IString::Id, "com.talvere.general.tvx.IString/1.0"},
    {IStringFactory::Id, "com.talvere.general.tvx.IStringFactory/1.0"},
    {IConstTVXPlugin::Id, "com.talvere.general.tvx.IConstTVXPlugin/1.0"},
    {ITVXPlugin::Id, "com.talvere.general.tvx.ITVXPlugin/1.0"},
    {IUserDataContainer::Id, "com.talvere.general.tvx.IUserDataContainer/1.0"},
    {IVariant::Id, "com.talvere.general.tvx.IVariant/1.0"},
    {IVariantFactory::Id, "com.talvere.general.tvx.IVariantFactory/1.0"},
    {IVariantArray::Id, "com.talvere.general.tvx.IVariantArray/1.0"},
};

std::string ReadFile(const std::filesystem::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

bool IsListed(std::string_view text)
{
    return std::any_of(std::begin(Identifiers), std::end(Identifiers),
                       [text](const Identifier& identifier) { return identifier.text == text; });
}

// How many identifiers a header declares; each must be in the table.
std::size_t CheckHeader(const std::filesystem::path& header)
{
    constexpr std::string_view mark = " Id[] = \"";
    const auto text = ReadFile(header);
    std::size_t count = 0;
    for (auto at = text.find(mark); at != std::string::npos; at = text.find(mark, at))
    {
        at += mark.size();
        const auto identifier = text.substr(at, text.find('"', at) - at);
        EXPECT_TRUE(IsListed(identifier)) << identifier << " of " << header;
        ++count;
    }
    return count;
}

}  // namespace

TEST(Identifiers, AreThePublishedTexts)
{
    for (const auto& identifier : Identifiers)
        EXPECT_STREQ(identifier.ofInterface, identifier.text);
}

TEST(Identifiers, AreAllHere)
{
    std::size_t declared = 0;
    for (const auto& entry : std::filesystem::directory_iterator(TVX_INTERFACES_FOLDER))
        declared += CheckHeader(entry.path());
    EXPECT_EQ(declared, std::size(Identifiers));
}

}  // namespace tvx::test
