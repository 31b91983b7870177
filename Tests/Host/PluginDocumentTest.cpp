// SPDX-License-Identifier: MIT
#include "Host/PluginDocument.h"

#include "Host/ModuleFile.h"
#include "Tests/Support/ElfBuilder.h"
#include "Tests/Support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <random>

namespace tvx::host
{
namespace
{

constexpr std::string_view TwoExports = "<plugcfg version=\"1\">\r\n"
                                        "    <!-- the first -->\r\n"
                                        "    <export>\r\n"
                                        "        <contract>com.example.Store/1.0</contract>\r\n"
                                        "        <contract>com.example.Store/1.1</contract>\r\n"
                                        "        <id>com.example.FileStore/1.1</id>\r\n"
                                        "        <metadata>\r\n"
                                        "            <name>File Store</name>\r\n"
                                        "            <subname>Keeps files</subname>\r\n"
                                        "            <copyright>Copyright &lt;Example&gt;</copyright>\r\n"
                                        "            <serid>com.example.FileFormat/1.1</serid>\r\n"
                                        "        </metadata>\r\n"
                                        "        <import>\r\n"
                                        "            <property>Serializer</property>\r\n"
                                        "            <contract>com.example.Serializer/1.0</contract>\r\n"
                                        "        </import>\r\n"
                                        "        <!-- not needed -->\r\n"
                                        "        <import>\r\n"
                                        "            <optional>true</optional>\r\n"
                                        "            <contract>com.example.Log/1.0</contract>\r\n"
                                        "            <property>Log</property>\r\n"
                                        "        </import>\r\n"
                                        "    </export>\r\n"
                                        "    <export>\r\n"
                                        "        <id>com.example.Archive/1.0</id>\r\n"
                                        "        <contract>com.example.Archive/1.0</contract>\r\n"
                                        "        <metadata><name>Archive</name></metadata>\r\n"
                                        "    </export>\r\n"
                                        "</plugcfg>\r\n";

PluginDocument MakeTwoExports()
{
    Export store{"com.example.FileStore/1.1", {"com.example.Store/1.0", "com.example.Store/1.1"}, {}, {}};
    store.metadata = {"File Store", "Keeps files", "Copyright <Example>", "com.example.FileFormat/1.1"};
    store.imports = {{"Serializer", "com.example.Serializer/1.0", false}, {"Log", "com.example.Log/1.0", true}};
    Export archive{"com.example.Archive/1.0", {"com.example.Archive/1.0"}, {"Archive", "", "", ""}, {}};
    return {"1", {std::move(store), std::move(archive)}};
}

// The smallest good export, with room for what a test adds to its parts.
std::string MakeExport(const std::string& id, const std::string& more = "", const std::string& moreMetadata = "")
{
    return "<export>" + id + "<contract>c</contract><metadata><name>n</name>" + moreMetadata + "</metadata>" + more +
           "</export>";
}

std::string MakeDocument(const std::string& content)
{
    return "<plugcfg version=\"1\">\n" + content + "\n</plugcfg>\n";
}

// The one export of a document that has to be good.
Export ReadExport(const std::string& content)
{
    auto document = ParsePluginDocument(MakeDocument(content), "a.tvxlib");
    EXPECT_TRUE(document) << document.GetError().message;
    EXPECT_EQ(document->exports.size(), 1U);
    return document->exports.at(0);
}

void ExpectBad(std::string_view text, const std::string& problem)
{
    const auto document = ParsePluginDocument(text, "a.tvxlib");
    ASSERT_FALSE(document) << text;
    EXPECT_EQ(document.GetError().kind, ErrorKind::BadDocument);
    EXPECT_EQ(document.GetError().message, "a.tvxlib has a bad configuration document: line " + problem);
}

TEST(PluginDocument, KeepsEverythingInDocumentOrder)
{
    const auto document = ParsePluginDocument(TwoExports, "a.tvxlib");
    ASSERT_TRUE(document) << document.GetError().message;
    EXPECT_EQ(*document, MakeTwoExports());
}

TEST(PluginDocument, IsReadFromAModuleFile)
{
    const test::ScratchFolder folder;
    test::ElfBuilder builder(test::ElfClass::Bits64, test::ElfOrder::Little);
    const auto path = folder.Write("a.tvxlib", builder.Add(".plugcfg", TwoExports).Finish().GetImage());
    const auto document = ReadPluginDocument(path);
    ASSERT_TRUE(document) << document.GetError().message;
    EXPECT_EQ(*document, MakeTwoExports());
}

TEST(PluginDocument, NamesTheFileThatCannotBeUsed)
{
    const test::ScratchFolder folder;
    test::ElfBuilder builder(test::ElfClass::Bits64, test::ElfOrder::Little);
    const auto bad = folder.Write("bad.tvxlib", builder.Add(".plugcfg", "\n<other/>").Finish().GetImage());
    EXPECT_EQ(ReadPluginDocument(bad).GetError().message,
              DisplayName(bad) + " has a bad configuration document: line 2: the root element is \"other\", not "
                                 "\"plugcfg\"");
    const auto missing = folder.GetPath() / "missing.tvxlib";
    EXPECT_EQ(ReadPluginDocument(missing).GetError().message, DisplayName(missing) + " does not exist");
}

TEST(PluginDocument, MayBeWithoutExports)
{
    const auto document = ParsePluginDocument("<plugcfg version='1'/>", "a.tvxlib");
    ASSERT_TRUE(document);
    EXPECT_EQ(*document, (PluginDocument{"1", {}}));
}

TEST(PluginDocument, MayStartWithAByteOrderMarkAnXmlDeclarationAndComments)
{
    const auto document = ParsePluginDocument("\xEF\xBB\xBF<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!-- a -->" +
                                                  std::string(TwoExports) + "<!-- b -->",
                                              "a.tvxlib");
    ASSERT_TRUE(document) << document.GetError().message;
    EXPECT_EQ(*document, MakeTwoExports());
}

TEST(PluginDocument, TrimsTextsAndKeepsTheirBytes)
{
    EXPECT_EQ(ReadExport(MakeExport("<id>\r\n\t a  b \r\n</id>")).id, "a  b");
    EXPECT_EQ(ReadExport(MakeExport("<id> a<!-- x -->b<![CDATA[<c> ]]></id>")).id, "ab<c>");
    EXPECT_EQ(ReadExport(MakeExport("<id>&quot;&#65;&#x42;&amp;lt;</id>")).id, "\"AB&lt;");
    EXPECT_EQ(ReadExport(MakeExport("<id>\xE9 \xC3\xA9</id>")).id, "\xE9 \xC3\xA9");
}

TEST(PluginDocument, HasImportsThatAreNeededUnlessTheySayOtherwise)
{
    const std::string import = "<import><property>p</property><contract>c</contract>";
    EXPECT_FALSE(ReadExport(MakeExport("<id>i</id>", import + "</import>")).imports.at(0).optional);
    EXPECT_FALSE(
        ReadExport(MakeExport("<id>i</id>", import + "<optional>false</optional></import>")).imports[0].optional);
    EXPECT_TRUE(
        ReadExport(MakeExport("<id>i</id>", import + "<optional> true </optional></import>")).imports[0].optional);
}

TEST(PluginDocument, MayHaveMoreThanIsKnownToday)
{
    const std::string unknown = "<later a='b'><id>x</id><export/></later>text";
    const std::string import = "<import b='c'><property>p</property>" + unknown + "<contract>c</contract></import>";
    const std::string content = unknown + MakeExport("<id>i</id>" + unknown, import + unknown, unknown);
    const Export expected{"i", {"c"}, {"n", "", "", ""}, {{"p", "c", false}}};
    EXPECT_EQ(ReadExport(content), expected);
    EXPECT_TRUE(ParsePluginDocument("<plugcfg later='2' version='1'/>", "a.tvxlib"));
}

TEST(PluginDocument, HasToBeWellFormed)
{
    ExpectBad("<plugcfg version=\"1\">\n<export>\n</plugcfg>", "3: not well-formed XML (Start-end tags mismatch)");
    ExpectBad("\n<plugcfg version=\"1\">", "2: not well-formed XML (Start-end tags mismatch)");
    ExpectBad("<plugcfg version=\"1\"", "1: not well-formed XML (Error parsing start element tag)");
    ExpectBad("\r\n\r\n<plugcfg version=1/>", "3: not well-formed XML (Error parsing element attribute)");
    ExpectBad("<plugcfg version=\"1\"/><!-- open", "1: not well-formed XML (Error parsing comment)");
    ExpectBad("<plugcfg version=\"1\"/>\n<", "2: not well-formed XML (Could not determine tag type)");
}

TEST(PluginDocument, HasExactlyOneRoot)
{
    ExpectBad("", "1: no root element");
    ExpectBad("\r\n <!-- nothing -->\r\n", "1: no root element");
    ExpectBad("plain text", "1: text outside of the root element");
    ExpectBad("<plugcfg version=\"1\"/>\n\ntext", "3: text outside of the root element");
    ExpectBad("<plugcfg version=\"1\"/>\n<plugcfg version=\"1\"/>", "2: a second root element");
    ExpectBad("\n<module version=\"1\"/>", "2: the root element is \"module\", not \"plugcfg\"");
    ExpectBad("<PLUGCFG version=\"1\"/>", "1: the root element is \"PLUGCFG\", not \"plugcfg\"");
}

TEST(PluginDocument, HasAKnownVersion)
{
    ExpectBad("<!-- -->\n<plugcfg/>", "2: plugcfg has no version");
    ExpectBad("<plugcfg version=\"2\"/>", "1: plugcfg has version \"2\", not \"1\"");
    ExpectBad("<plugcfg version=\"\"/>", "1: plugcfg has version \"\", not \"1\"");
    ExpectBad("<plugcfg version=\"1.0\"/>", "1: plugcfg has version \"1.0\", not \"1\"");
}

TEST(PluginDocument, HasExportsWithOneIdEach)
{
    ExpectBad(MakeDocument(MakeExport("")), "2: export has no id");
    ExpectBad(MakeDocument(MakeExport("<id/>")), "2: id is empty");
    ExpectBad(MakeDocument(MakeExport("<id> \r\n </id>")), "2: id is empty");
    ExpectBad(MakeDocument(MakeExport("<id>a</id>\n<id>b</id>")), "3: export has more than one id");
    ExpectBad(
        MakeDocument(MakeExport("<id>a</id>") + "\n" + MakeExport("<id>b</id>") + "\n" + MakeExport("<id>a</id>")),
        "4: an earlier export has the id \"a\" too");
}

TEST(PluginDocument, HasExportsWithContractsAndAName)
{
    ExpectBad(MakeDocument("<export><id>i</id><metadata><name>n</name></metadata></export>"),
              "2: export has no contract");
    ExpectBad(MakeDocument(MakeExport("<id>i</id>", "\n<contract></contract>")), "3: contract is empty");
    ExpectBad(MakeDocument("<export><id>i</id><contract>c</contract></export>"), "2: export has no metadata");
    ExpectBad(MakeDocument(MakeExport("<id>i</id>", "\n<metadata/>")), "3: export has more than one metadata");
    ExpectBad(MakeDocument("<export><id>i</id><contract>c</contract>\n<metadata/></export>"),
              "3: metadata has no name");
    ExpectBad(MakeDocument("<export><id>i</id><contract>c</contract><metadata>\n<name/></metadata></export>"),
              "3: name is empty");
}

TEST(PluginDocument, HasMetadataThatSaysEachThingOnce)
{
    ExpectBad(MakeDocument(MakeExport("<id>i</id>", "", "\n<name>x</name>")), "3: metadata has more than one name");
    for (const std::string name : {"subname", "copyright", "serid"})
    {
        const std::string element = "\n<" + name + ">x</" + name + ">";
        const std::string problem = "4: metadata has more than one " + name;
        ExpectBad(MakeDocument(MakeExport("<id>i</id>", "", element + element)), problem);
    }
}

TEST(PluginDocument, HasImportsWithPropertyAndContract)
{
    const std::string property = "<property>p</property>";
    const std::string contract = "<contract>c</contract>";
    const std::pair<std::string, std::string> cases[] = {
        {contract, "3: import has no property"},
        {property, "3: import has no contract"},
        {contract + "\n<property/>", "4: property is empty"},
        {property + "\n<contract/>", "4: contract is empty"},
        {property + contract + "\n" + property, "4: import has more than one property"},
        {property + contract + "\n" + contract, "4: import has more than one contract"},
        {property + contract + "<optional/>\n<optional/>", "4: import has more than one optional"},
        {property + contract + "\n<optional/>", "4: optional is \"\", neither \"true\" nor \"false\""},
        {property + contract + "\n<optional>yes</optional>", "4: optional is \"yes\", neither \"true\" nor \"false\""},
    };
    for (const auto& [content, problem] : cases)
    {
        ExpectBad(MakeDocument(MakeExport("<id>i</id>", "\n<import>" + content + "</import>")), problem);
    }
}

TEST(PluginDocument, ReportsTheFirstOfSeveralFaults)
{
    ExpectBad(MakeDocument("<export/>\n<export/>"), "2: export has no id");
}

TEST(PluginDocument, CutsLongTextsInMessages)
{
    const std::string name(100, 'a');
    const std::string start = "1: the root element is \"" + name;
    ExpectBad("<" + name + " />", start + "\", not \"plugcfg\"");
    ExpectBad("<" + name + "a />", start + "...\", not \"plugcfg\"");
}

TEST(PluginDocument, HasNoNulAndNoOtherControlCharacters)
{
    ExpectBad(std::string_view("\n\0", 2), "2: a NUL byte");
    ExpectBad(std::string(TwoExports) + '\0', "30: a NUL byte");
    for (const std::string reference : {"&#0;", "&#x0;", "&#0000;", "&#4294967296;", "&#x100000000;", "&#1114112;"})
    {
        ExpectBad(MakeDocument(MakeExport("<id>a&#65;" + reference + "b</id>")),
                  "2: a reference to a character that does not exist");
    }
    ExpectBad(MakeDocument(MakeExport("<id>a\x1B[2J</id>")), "2: id holds a control character");
    ExpectBad(MakeDocument(MakeExport("<id>a&#27;</id>")), "2: id holds a control character");
}

TEST(PluginDocument, ExpandsNoEntities)
{
    ExpectBad("<!DOCTYPE plugcfg [<!ENTITY a \"b\"><!ENTITY c \"&a;&a;\">]>\n" +
                  MakeDocument(MakeExport("<id>&c;</id>")),
              "1: a document type is not allowed");
    EXPECT_EQ(ReadExport(MakeExport("<id>&c;</id>")).id, "&c;");
}

TEST(PluginDocument, MayBeNestedAHundredThousandLevelsDeep)
{
    constexpr std::size_t depth = 100'000;
    std::string opened;
    std::string closed;
    for (std::size_t i = 0; i < depth; ++i)
    {
        opened += "<a>";
        closed += "</a>";
    }
    EXPECT_EQ(ReadExport(MakeExport("<id>i" + opened + closed + "</id>", opened + closed)).id, "i");
    ExpectBad(MakeDocument(opened), "3: not well-formed XML (Start-end tags mismatch)");
    ExpectBad(opened + closed, "1: the root element is \"a\", not \"plugcfg\"");
}

TEST(PluginDocument, SurvivesRandomChanges)
{
    constexpr std::string_view likely = "<>/\"'&;#!-[]?= x10\n";
    std::mt19937 random(20240229);
    for (int round = 0; round < 20'000; ++round)
    {
        std::string text(TwoExports);
        for (auto changes = random() % 6 + 1; changes > 0; --changes)
        {
            text[random() % text.size()] = likely[random() % likely.size()];
        }
        text.resize(random() % 4 == 0 ? random() % text.size() : text.size());
        const auto document = ParsePluginDocument(text, "a.tvxlib");
        ASSERT_TRUE(document || document.GetError().message.starts_with("a.tvxlib has a bad configuration document"));
    }
}

}  // namespace
}  // namespace tvx::host
