// SPDX-License-Identifier: MIT
#include "Interfaces/IVariant.h"
#include "Tests/Host/LifeTracerFixture.h"
#include "Tests/Support/CaptureOutput.h"
#include "Tests/Support/Doubles.h"

#include <gmock/gmock.h>

#include <cstring>
#include <sstream>

namespace tvx::host
{
namespace
{

using test::CaptureOutput;
using test::Make;
using testing::IsEmpty;

// A story: what calls answer, as one text.
class Story
{
public:
    template <class Answer>
    void Tell(const char* call, const Answer& answer)
    {
        text_ << call << ": " << answer << '\n';
    }

    // The answer of an operation that has a place for an interface, and whether it wrote there.
    template <class Interface, class Call>
    Ref<Interface> TellOut(const char* call, Call&& make)
    {
        Ref<Interface> out;
        const auto result = make(out.Receive());
        text_ << call << ": " << result << (out ? " something\n" : " nothing\n");
        return out;
    }

    std::string GetText() const { return text_.str(); }

private:
    std::ostringstream text_;
};

void TellOfMaps(LibraryManager& manager, Story& story)
{
    const auto map = Make<ISimpleMap>(manager, test::MapExport);
    story.Tell("SetInt", map->SetInt("Screen\\Width", 1920));
    story.Tell("SetDouble", map->SetDouble("Zoom", 1.25));
    story.Tell("SetString null", map->SetString("a", nullptr));
    story.Tell("SetString null key", map->SetString(nullptr, "a"));
    double zoom = 0;
    story.Tell("GetDouble", map->GetDouble("Zoom", &zoom));
    story.Tell("Zoom", zoom);
    story.Tell("GetInt null", map->GetInt("Zoom", nullptr));
    const auto text = story.TellOut<IString>("GetString", [&](auto** out) { return map->GetString("Zoom", out); });
    story.Tell("GetText", text->GetText());
    story.Tell("GetLength", text->GetLength());
    story.TellOut<IString>("GetString absent", [&](auto** out) { return map->GetString("None", out); });
    story.Tell("GetString null", map->GetString("Zoom", nullptr));
    const auto below =
        story.TellOut<ISimpleMap>("GetSubMap", [&](auto** out) { return map->GetSubMap("Screen", out); });
    story.TellOut<ISimpleMap>("GetSubMap empty", [&](auto** out) { return map->GetSubMap("None", out); });
    story.TellOut<ISimpleMap>("GetSubMap null", [&](auto** out) { return map->GetSubMap(nullptr, out); });
    story.Tell("SetSubMap", map->SetSubMap("Copy", below.Get()));
    story.Tell("SetSubMap of itself", map->SetSubMap("Self", map.Get()));
    story.Tell("SetSubMap null", map->SetSubMap("Copy", nullptr));
    const auto iterator =
        story.TellOut<ISimpleMapIterator>("GetIterator", [&](auto** out) { return map->GetIterator(out); });
    for (; iterator->GetKey() != nullptr; iterator->Next())
        story.Tell(iterator->GetKey(), iterator->GetValue());
    story.Tell("Clone null", map->Clone(nullptr));
    story.Tell("SetObject", map->SetObject("Object", below.Get()));
    const auto object = story.TellOut<IObject>("GetObject", [&](auto** out) { return map->GetObject("Object", out); });
    story.Tell("the object is a map", static_cast<bool>(Query<ISimpleMap>(object)));
    story.TellOut<IObject>("GetObject of a number", [&](auto** out) { return map->GetObject("Zoom", out); });
}

void TellOfCollections(LibraryManager& manager, Story& story)
{
    const auto factory = *manager.GetExportAs<ICollectionFactory>(test::CollectionExport);
    const auto list =
        story.TellOut<ICollection>("CreateCollection", [&](auto** out) { return factory->CreateCollection(out); });
    const auto item = Make<ISimpleMap>(manager, test::MapExport);
    const auto own = MakeRef<test::ProbeObject>();
    story.Tell("Add", list->Add(item.Get()));
    story.Tell("Add own", list->Add(own.Get()));
    story.Tell("Add null", list->Add(nullptr));
    std::uint32_t index = 0;
    story.Tell("IndexOf", list->IndexOf(own.Get(), &index));
    story.Tell("index", index);
    story.Tell("IndexOf null", list->IndexOf(nullptr, &index));
    story.Tell("InsertBefore", list->InsertBefore(own.Get(), item.Get()));
    story.Tell("MoveItem", list->MoveItem(item.Get(), 3));
    for (index = 0; index <= list->GetCount(); ++index)
        story.TellOut<IObject>("GetItem", [&](auto** out) { return list->GetItem(index, out); });
    story.Tell("GetItem null", list->GetItem(0, nullptr));
    story.Tell("RefCount of the item", item->GetRefCount());
    bool contained = false;
    story.Tell("Contains", list->Contains(item.Get(), &contained));
    story.Tell("contained", contained);
    story.Tell("Clear", list->Clear());
    story.Tell("RemoveLast", list->RemoveLast());
    story.Tell("IsUnique of the item", item->IsUnique());
}

void TellOfImages(LibraryManager& manager, Story& story)
{
    const auto factory = *manager.GetExportAs<IImageFactory>(test::ImageExport);
    auto image = story.TellOut<IImage>("Create", [&](auto** out) { return factory->Create(2, 3, 1, 0, 0, out); });
    story.Tell("GetStride", image->GetStride());
    story.Tell("data unlocked", image->GetData() != nullptr);
    image->LockWrite();
    story.Tell("IsWriteLocked", image->IsWriteLocked());
    std::memset(image->GetWritableData(), 7, 18);
    story.Tell("SetRowOrder", image->SetRowOrder(1));
    story.Tell("SetColorFormat", image->SetColorFormat(2));
    image->Unlock();
    story.Tell("SetRowOrder unlocked", image->SetRowOrder(0));
    const auto copy = story.TellOut<IConstImage>("CreateConstCopy", [&](auto** out)
                                                 { return factory->CreateConstCopy(image.Get(), out); });
    story.Tell("a byte", static_cast<int>(static_cast<const char*>(copy->GetData())[5]));
    story.Tell("Create null", factory->Create(1, 1, 1, 1, 1, nullptr));
    {
        const auto second = image;
        story.TellOut<IConstImage>("MakeConst held twice",
                                   [&](auto** out) { return factory->MakeConst(image.Get(), out); });
    }
    story.TellOut<IConstImage>("MakeConst", [&](auto** out) { return factory->MakeConst(image.Get(), out); });
    story.Tell("width of what is left", image->GetWidth());
}

void TellOfVariants(LibraryManager& manager, Story& story)
{
    const auto factory = *manager.GetExportAs<IVariantFactory>(test::VariantExport);
    const auto number =
        story.TellOut<IVariant>("CreateFloat", [&](auto** out) { return factory->CreateFloat(1.5F, out); });
    float value = 0;
    story.Tell("GetFloat", number->GetFloat(&value));
    story.Tell("value", value);
    story.TellOut<IString>("GetString of a number", [&](auto** out) { return number->GetString(out); });
    const auto text =
        story.TellOut<IVariant>("CreateString", [&](auto** out) { return factory->CreateString("abc", out); });
    const auto string = story.TellOut<IString>("GetString", [&](auto** out) { return text->GetString(out); });
    const auto shared = story.TellOut<IVariant>("CreateStringFromIString", [&](auto** out)
                                                { return factory->CreateStringFromIString(string.Get(), out); });
    story.Tell("RefCount of the string", string->GetRefCount());
    story.Tell("IObject of a string", static_cast<bool>(Query<IObject>(string.Get())));
    void* out = &story;
    story.Tell("an unknown interface", number->QueryInterface("com.example.IUnknown/1.0", &out));
    story.Tell("untouched", out == &story);
    story.Tell("no interface", number->QueryInterface(nullptr, &out));
    story.Tell("no place", number->QueryInterface(IObject::Id, nullptr));
}

std::string TellEverything(bool traced, std::string& output)
{
    Story story;
    LifeTracer tracer([](std::string_view) {});
    const auto tell = [&]
    {
        LibraryManager manager(test::MakeRealCatalog());
        if (traced)
            manager.TraceLives(tracer);
        TellOfMaps(manager, story);
        TellOfCollections(manager, story);
        TellOfImages(manager, story);
        TellOfVariants(manager, story);
    };
    output = CaptureOutput(tell);
    EXPECT_THAT(tracer.GetFindings(), IsEmpty());
    EXPECT_THAT(tracer.GetHeld(), IsEmpty());
    return story.GetText();
}

TEST(TracedStory, AnswersAndReportsAsTheModuleDoes)
{
    std::string plainOutput;
    std::string tracedOutput;
    const auto plain = TellEverything(false, plainOutput);
    EXPECT_EQ(plain, TellEverything(true, tracedOutput));
    EXPECT_EQ(plainOutput, tracedOutput);
    EXPECT_GT(plain.size(), 1000U);
    EXPECT_NE(plainOutput, "");
}

}  // namespace
}  // namespace tvx::host
