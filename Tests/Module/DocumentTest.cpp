// SPDX-License-Identifier: MIT
#include "Tests/Module/LoadedModule.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <ostream>
#include <vector>

namespace tvx::test
{

namespace
{

using Texts = std::vector<std::string>;

// What the document says of one export.
struct DeclaredExport
{
    std::string id = {};
    Texts contracts = {};
    std::string name = {};
    Texts subname = {};
    Texts copyright = {};
    Texts serid = {};
    Texts imports = {};  // property, contract and the optional mark of each, in a row

    bool operator==(const DeclaredExport&) const = default;
};

void PrintTo(const DeclaredExport& declared, std::ostream* stream)
{
    *stream << declared.id << testing::PrintToString(declared.contracts) << declared.name
            << testing::PrintToString(declared.subname) << testing::PrintToString(declared.copyright)
            << testing::PrintToString(declared.serid) << testing::PrintToString(declared.imports);
}

std::string ReadDocument()
{
    std::ifstream stream(TVX_DOCUMENT_FILE, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

// The contents of all elements of a name, which do not nest, in their order.
Texts GetContents(const std::string& text, const std::string& element)
{
    const auto open = "<" + element + ">";
    const auto close = "</" + element + ">";
    Texts contents;
    for (auto from = text.find(open); from != std::string::npos; from = text.find(open, from))
    {
        from += open.size();
        contents.push_back(text.substr(from, text.find(close, from) - from));
    }
    return contents;
}

// Takes the imports out of an export's text and gives what they say.
Texts TakeImports(std::string& text)
{
    Texts said;
    for (const auto& import : GetContents(text, "import"))
    {
        for (const char* const element : {"property", "contract", "optional"})
        {
            for (const auto& content : GetContents(import, element))
                said.push_back(content);
        }
        text.erase(text.find(import), import.size());
    }
    return said;
}

DeclaredExport Parse(std::string text)
{
    DeclaredExport declared;
    declared.imports = TakeImports(text);
    const auto ids = GetContents(text, "id");
    const auto names = GetContents(text, "name");
    declared.id = ids.size() == 1 ? ids.front() : "not one id";
    declared.name = names.size() == 1 ? names.front() : "not one name";
    declared.contracts = GetContents(text, "contract");
    declared.subname = GetContents(text, "subname");
    declared.copyright = GetContents(text, "copyright");
    declared.serid = GetContents(text, "serid");
    return declared;
}

std::vector<DeclaredExport> ReadExports()
{
    std::vector<DeclaredExport> declared;
    for (auto& text : GetContents(ReadDocument(), "export"))
        declared.push_back(Parse(text));
    return declared;
}

// In the document's order, which is not the order of registration.
std::vector<DeclaredExport> GetPublishedExports()
{
    const std::string prefix = "com.talvere.general.tvx.";
    const auto deserializable = prefix + "DeserializableContract/1.0";
    return {
        {.id = prefix + "GenericStringImplementation/1.0",
         .contracts = {prefix + "StringContract/1.0"},
         .name = "TVX Generic String Implementation"},
        {.id = prefix + "GenericMapImplementation/1.1",
         .contracts = {prefix + "MapContract/1.0", deserializable},
         .name = "TVX Generic Map Implementation",
         .serid = {prefix + "GenericMapImplementationFormat/1.1"}},
        {.id = prefix + "GenericSimpleMapImplementation/1.1",
         .contracts = {prefix + "SimpleMapContract/1.0", prefix + "SimpleMapContract/1.1",
                       prefix + "SimpleMapContract/1.2", deserializable},
         .name = "TVX Generic Simple Map Implementation",
         .serid = {prefix + "GenericSimpleMapImplementationFormat/1.1"},
         .imports = {"Serializer", "com.talvere.serializers.JSONSerializerContract/1.0"}},
        {.id = prefix + "GenericCollectionImplementation/1.1",
         .contracts = {prefix + "CollectionContract/1.1", deserializable},
         .name = "TVX Generic Collection Implementation",
         .serid = {prefix + "GenericCollectionImplementationFormat/1.0"}},
        {.id = prefix + "GenericImageImplementation/1.0",
         .contracts = {prefix + "ImageContract/1.0"},
         .name = "TVX Generic Image Implementation"},
        {.id = prefix + "GenericVariantImplementation/1.1",
         .contracts = {prefix + "VariantContract/1.0", deserializable},
         .name = "TVX Generic Variant Implementation",
         .serid = {prefix + "GenericVariantImplementationFormat/1.1"}},
        {.id = prefix + "GenericVariantArrayImplementation/1.0",
         .contracts = {deserializable, prefix + "VariantArray/1.0"},
         .name = "Variant array",
         .serid = {prefix + "GenericVariantArrayImplementationFormat/1.0"}},
        {.id = prefix + "BasicLogger/1.0",
         .contracts = {prefix + "singletonlogger/1.0"},
         .name = "Basic Logger",
         .subname = {"Basic Console and File Logger"},
         .copyright = {"Copyright (C) 2026 Talvere"},
         .imports = {"LibManager", prefix + "LibManagerContract/1.0", "true", "CrashDumpServer",
                     prefix + "contract.CrashDumpServer/1.0", "true"}},
    };
}

bool IsIn(const Texts& texts, const std::string& text)
{
    return std::find(texts.begin(), texts.end(), text) != texts.end();
}

}  // namespace

TEST(ModuleDocument, DeclaresThePublishedExportsInOrder)
{
    const auto declared = ReadExports();
    const auto published = GetPublishedExports();
    ASSERT_EQ(declared.size(), published.size());
    for (std::size_t i = 0; i < published.size(); ++i)
        EXPECT_EQ(declared[i], published[i]);
}

TEST(ModuleDocument, PutsTheIdentifierFirstInTheVariantExports)
{
    for (const auto& text : GetContents(ReadDocument(), "export"))
    {
        const bool idFirst = text.find("<id>") < text.find("<contract>");
        const auto id = GetContents(text, "id").front();
        EXPECT_EQ(idFirst, id.find("Variant") != std::string::npos) << id;
    }
}

TEST(ModuleDocument, IsADocumentOfVersionOneWithoutDeclaration)
{
    const auto text = ReadDocument();
    EXPECT_TRUE(text.starts_with("<plugcfg version=\"1\">\r\n"));
    EXPECT_NE(text.find("</plugcfg>"), std::string::npos);
}

TEST(ModuleDocument, EndsEveryLineWithCarriageReturnAndLineFeed)
{
    const auto text = ReadDocument();
    EXPECT_FALSE(text.starts_with("\n"));
    for (std::size_t at = 1; at < text.size(); ++at)
        ASSERT_EQ(text[at] == '\n', text[at - 1] == '\r') << at;
}

TEST(ModuleDocument, HasItsTwoComments)
{
    const auto text = ReadDocument();
    const auto logger = text.find("<!-- Export ILogger, Console Logger Implementation -->");
    const auto server = text.find("<!-- crash server -->");
    EXPECT_LT(text.find("VariantArray/1.0"), logger);
    EXPECT_LT(logger, text.find("BasicLogger/1.0"));
    EXPECT_LT(text.find("<property>LibManager"), server);
    EXPECT_LT(server, text.find("<property>CrashDumpServer"));
}

TEST(ModuleDocument, DeclaresWhatIsServedAndNothingElse)
{
    Texts expected(std::begin(ServedExports), std::end(ServedExports));
    Texts declared;
    for (const auto& entry : ReadExports())
        declared.push_back(entry.id);
    EXPECT_THAT(declared, testing::UnorderedElementsAreArray(expected));
}

TEST(ModuleDocument, AgreesWithTheRegistry)
{
    const LoadedModule module;
    const Texts served(std::begin(ServedExports), std::end(ServedExports));
    for (const auto& entry : ReadExports())
    {
        Ref<IObjectBase> object;
        const auto result = module.GetExport(entry.id.c_str(), object.Receive());
        EXPECT_EQ(result, IsIn(served, entry.id) ? TVX_OK : TVX_E_FAIL) << entry.id;
        EXPECT_EQ(static_cast<bool>(object), IsIn(served, entry.id)) << entry.id;
    }
}

}  // namespace tvx::test
