// SPDX-License-Identifier: MIT
#pragma once

#include "Host/LibraryManager.h"
#include "Interfaces/ICollection.h"
#include "Interfaces/IImage.h"
#include "Interfaces/IMap.h"
#include "Interfaces/ISerializerFactory.h"
#include "Interfaces/ISimpleMap.h"
#include "Tool/Console.h"

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

namespace tvx::tool
{

// A guided tour: each chapter does one thing with the real modules on a real settings file and shows what comes back. What
// the modules themselves write stands between the chapters' lines, as in any host.
class Tour
{
public:
    Tour(host::ModuleCatalog catalog, std::string file);

    // Ends at the first chapter that fails, with a complaint on standard error.
    ExitCode Run();

private:
    // One chapter; gives whether the tour can go on.
    bool ShowDocuments();
    bool LoadModules();
    bool WriteInBatch();
    bool ReadTyped();
    bool ReadSubMap();
    bool KeepObject();
    bool UseContainers();
    bool PaintImage();
    bool UseLogger();
    bool SerialiseMap();
    bool ReadMapBack();
    void Unload();

    void SwitchBatchOff(std::size_t count);
    // An absent key's text is empty.
    bool SayText(std::string_view words, const char* key);
    bool SayEntries(ISimpleMap& map);
    bool MakeContainers(Ref<ICollection>& collection, Ref<IMap>& dictionary);
    bool RepeatCollection(ICollection& collection);
    bool SavePictures(IImage& image);
    bool SavePicture(IImage& image, const std::filesystem::path& file);
    bool TurnImage(IImage& image);
    bool MovePixels(IImageFactory& images, IImage& image);
    bool ConfigureLogger(const std::filesystem::path& file, const std::string& text);
    bool SayFile(const std::filesystem::path& file);
    void OpenChapter(std::string_view title);
    bool Fail(const host::Error& error);
    // Fails when result is not the one wanted. A key that is there or not makes it the settings file's fault.
    bool Expect(std::string_view what, Result result, Result wanted);

    // The same for an operation that gives an object: a null with the result wanted is a failure, too.
    template <class Interface>
    bool Expect(std::string_view what, Result result, Result wanted, const Ref<Interface>& given)
    {
        return Expect(what, result, wanted) && (given || FailForNull(what));
    }
    bool FailForNull(std::string_view what);

    host::ModuleCatalog catalog_;
    std::string file_;
    int chapter_ = 0;
    ExitCode code_ = Ok;

    // In this order, so that the objects go before the modules that they came from.
    std::unique_ptr<host::LibraryManager> manager_;
    Ref<ISerializerFactory> serializers_;
    Ref<ISimpleMap> map_;
    Ref<ISimpleMap> copy_;
    std::string document_;
};

}  // namespace tvx::tool
