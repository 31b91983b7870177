// SPDX-License-Identifier: MIT
#include "Tests/Host/JsonSerializerFixture.h"

#include "Interfaces/ISimpleMap.h"
#include "Interfaces/IVariant.h"

#include <algorithm>
#include <random>
#include <string_view>
#include <vector>

namespace tvx::test
{
namespace
{

class JsonSerializerHostile : public JsonSerializerFixture
{
protected:
    // What beginning and reading the object "x" write to standard output; the last results are kept.
    std::string Read(const std::string& text)
    {
        return CaptureOutput(
            [&]
            {
                const auto reader = BeginReading(text);
                Ref<IObjectBase> object;
                read_ = reader->ReadNamedObject("x", object.Receive());
                EXPECT_FALSE(TVX_FAILED(read_) && object) << "a failure that delivers";
            });
    }

    // Object variants that lie in one another, the innermost holding null.
    static std::string Nest(int depth)
    {
        const std::string open = std::string(R"({"$format":")") + VariantFormat + R"(","type":6,"value":)";
        std::string text = R"({"x":)";
        for (int level = 0; level < depth; ++level)
            text += open;
        return text + "null" + std::string(static_cast<std::size_t>(depth) + 1, '}');
    }

    Result read_ = TVX_OK;
};

TEST_F(JsonSerializerHostile, RefusesAMillionOpenBracketsAtOnce)
{
    EXPECT_EQ(Read(std::string(1'000'000, '[')),
              "JsonSerializer: the text is nested deeper than 1024 levels: line 1, column 1025.\n");
    EXPECT_EQ(began_, TVX_E_FAIL);
    EXPECT_EQ(read_, TVX_E_FAIL);
}

TEST_F(JsonSerializerHostile, RefusesAMillionObjectsInOneAnother)
{
    std::string text;
    for (int level = 0; level < 1'000'000; ++level)
        text += "{\"\":";
    EXPECT_EQ(Read(text), "JsonSerializer: the text is nested deeper than 1024 levels: line 1, column 4097.\n");
}

TEST_F(JsonSerializerHostile, ReadsATextThatIsNestedAsDeepAsAllowed)
{
    const std::string inner = std::string(1023, '[') + std::string(1023, ']');
    EXPECT_EQ(Read("{\"x\":null,\"deep\":" + inner + "}"), "");
    EXPECT_EQ(read_, TVX_OK);
    EXPECT_EQ(Read("{\"x\":null,\"deep\":[" + inner + "]}"),
              "JsonSerializer: the text is nested deeper than 1024 levels: line 1, column 1041.\n");
}

TEST_F(JsonSerializerHostile, ReadsObjectsNoDeeperThanAllowed)
{
    EXPECT_EQ(Read(Nest(256)), "");
    EXPECT_EQ(read_, TVX_OK);
    EXPECT_EQ(Read(Nest(257)), "JsonSerializer: objects lie in one another more than 256 deep at \"value\".\n");
    EXPECT_EQ(began_, TVX_OK);
    EXPECT_EQ(read_, TVX_E_FAIL);
}

TEST_F(JsonSerializerHostile, RefusesWhatALenientFactoryWouldTakeForNull)
{
    EXPECT_EQ(Read(std::string(R"({"x":{"$format":")") + VariantFormat + R"(","type":6,"value":{"$format":"no"}}})"),
              "JsonSerializer: no installed module reads the format \"no\".\n");
    EXPECT_EQ(read_, TVX_E_FAIL);
}

TEST_F(JsonSerializerHostile, LeavesNoReferenceBehindOnAnyFailure)
{
    const auto variants = VariantFactory::GetOrMake();
    const auto maps = CSimpleMapFactory::GetOrMake();
    const auto before = std::vector{variants->GetRefCount(), maps->GetRefCount(), formats_->GetRefCount()};
    Read(Nest(257));
    Read(std::string(R"({"x":{"$format":")") + MapFormat + R"(","Values":["a","b","c",{"$bytes":"f"}]}})");
    EXPECT_EQ(read_, TVX_E_FAIL);
    Read(std::string(R"({"x":{"$format":")") + MapFormat + R"("}})");
    EXPECT_EQ(read_, TVX_E_FAIL);
    EXPECT_EQ((std::vector{variants->GetRefCount(), maps->GetRefCount(), formats_->GetRefCount()}), before);
}

// Changes valid documents at random and reads everything that is left of them.
class JsonSerializerFuzz : public JsonSerializerHostile
{
protected:
    static constexpr std::mt19937::result_type Seed = 20260101;

    static std::vector<std::string> MakeDocuments()
    {
        const std::string variant = std::string(R"({"$format":")") + VariantFormat + R"(","type":)";
        const std::string map = std::string(R"({"$format":")") + MapFormat + R"(","Values":)";
        return {Nest(3), R"({"x":)" + variant + R"(3,"value":{"$double":"-inf"}}})",
                R"({"x":)" + variant + R"(5,"value":{"$bytes":"ff01"}},"t":"ä\u00e4\ud83d\ude00","d":-1.5e-300})",
                R"({"x":)" + map + R"(["a","b",{"$bytes":"fffe"},"\n"]},"s":["a",null,)" + variant +
                    R"(2,"value":-7}]})",
                R"({"x":)" + variant + R"(6,"value":)" + map + R"(["k","1"]}},"s":[],"i":2147483647,"b":true})"};
    }

    std::size_t Draw(std::size_t below) { return random_() % below; }

    void Mutate(std::string& text)
    {
        static constexpr std::string_view pieces[] = {"{",  "}",    "[",    "]",     "\"", ",",     ":",
                                                      "\\", "null", "\xFF", "1e400", "-",  "\"x\"", "\"$format\":"};
        const auto place = Draw(text.size());
        const auto length = std::min(Draw(12), text.size() - place);
        switch (Draw(5))
        {
        case 0: text[place] = static_cast<char>(random_()); break;
        case 1: text.erase(place, length); break;
        case 2: text.insert(place, text.substr(Draw(text.size()), length)); break;
        case 3: text.insert(place, pieces[Draw(std::size(pieces))]); break;
        default: text.replace(place, length, pieces[Draw(std::size(pieces))]); break;
        }
    }

    void ReadEverything(const std::string& text)
    {
        const auto reader = BeginReading(text);
        Ref<IObjectBase> object;
        const auto result = reader->ReadNamedObject("x", object.Receive());
        EXPECT_FALSE(TVX_FAILED(result) && object) << text;
        Ref<IString> string;
        double real = 0;
        std::int32_t number = 0;
        bool flag = false;
        std::uint32_t count = 0;
        reader->ReadNamedString("t", string.Receive());
        reader->ReadNamedDouble("d", &real);
        reader->ReadNamedInt("i", &number);
        reader->ReadNamedBool("b", &flag);
        if (!TVX_FAILED(reader->BeginArray("s", &count)))
        {
            reader->ReadString(string.Receive());
            reader->ReadObject(object.Receive());
            reader->ReadObject(object.Receive());
        }
        wholeDocuments_ += TVX_FAILED(Query<IStringDeserializer>(reader)->End()) ? 0 : 1;
    }

    std::mt19937 random_{Seed};
    int wholeDocuments_ = 0;
};

TEST_F(JsonSerializerFuzz, SurvivesTwentyThousandDamagedDocuments)
{
    SCOPED_TRACE("seed " + std::to_string(Seed));
    const auto documents = MakeDocuments();
    for (const auto& document : documents)
        EXPECT_EQ(CaptureOutput([&] { ReadEverything(document); }), "") << document;
    EXPECT_EQ(wholeDocuments_, static_cast<int>(documents.size()));
    const auto output = CaptureOutput(
        [&]
        {
            for (int round = 0; round < 20'000; ++round)
            {
                auto text = documents[Draw(documents.size())];
                for (auto changes = 1 + Draw(3); changes > 0 && !text.empty(); --changes)
                    Mutate(text);
                ReadEverything(text);
            }
        });
    // Some of them still are sound documents, and every other one was said to be none.
    EXPECT_GT(wholeDocuments_, 400);
    EXPECT_GT(std::count(output.begin(), output.end(), '\n'), 10'000);
}

}  // namespace
}  // namespace tvx::test
