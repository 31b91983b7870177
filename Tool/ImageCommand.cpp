// SPDX-License-Identifier: MIT
#include "Host/ImageAccess.h"
#include "Host/LibraryManager.h"
#include "Host/PictureImage.h"
#include "Host/PngFile.h"
#include "Tool/Commands.h"
#include "Tool/DocumentPrinter.h"

#include <memory>
#include <string>

namespace tvx::tool
{

namespace
{

struct ImageOptions
{
    SearchOptions search;
    std::string in;
    std::string out;
    bool swapChannels = false;
    bool flip = false;
    bool info = false;
    bool json = false;
};

// An operation that the image refused: when that was to be expected of such a picture, the answer is no.
ExitCode Refused(const Console& console, bool expected, const std::string& reason, Result result)
{
    if (!expected)
        return console.Fail(
            {host::ErrorKind::Misbehaved, "the image refuses the operation, result " + std::to_string(result)});
    console.Complain(reason);
    return AnswerIsNo;
}

ExitCode SwapChannels(const Console& console, IImage& image, const std::string& name)
{
    const auto result = image.SetColorFormat(ColorFormat::ThreeChannelsReversed);
    if (!TVX_FAILED(result))
        return Ok;
    const auto channels = host::GetChannelCount(image.GetColorFormat());
    return Refused(console, channels != 3, name + ": only 3 channels can be swapped, not " + std::to_string(channels),
                   result);
}

ExitCode Flip(const Console& console, IImage& image, const std::string& name)
{
    const auto result = image.SetRowOrder(image.GetRowOrder() + 1);
    if (!TVX_FAILED(result))
        return Ok;
    return Refused(console, image.GetHeight() < 2, name + ": one row alone cannot be flipped", result);
}

ExitCode Change(const Console& console, IImage& image, const ImageOptions& options)
{
    const host::WriteLock lock(image);
    const auto swapped = options.swapChannels ? SwapChannels(console, image, options.in) : Ok;
    if (swapped != Ok || !options.flip)
        return swapped;
    return Flip(console, image, options.in);
}

nlohmann::ordered_json Describe(IImage& image, const host::PictureFormat& picture)
{
    return {
        {"width", image.GetWidth()},
        {"height", image.GetHeight()},
        {"channels", picture.channels},
        {"bits", picture.bits},
        {"pixelSize", image.GetPixelSize()},
        {"stride", image.GetStride()},
        {"colorFormat", image.GetColorFormat()},
        {"dataType", image.GetDataType()},
        {"rowOrder", image.GetRowOrder()},
    };
}

void PrintInfo(const Console& console, const nlohmann::ordered_json& description, bool json)
{
    if (json)
        return console.Print(PrintJson(description));
    std::string lines;
    for (const auto& [name, value] : description.items())
        lines.append(name).append(": ").append(value.dump()).append("\n");
    console.Print(lines);
}

// The bytes go out as they stand in memory: a picture with swapped channels shows red and blue exchanged.
ExitCode Save(const Console& console, IImage& image, const std::string& file)
{
    const auto picture = host::MakePicture(image, host::ReversedChannels::Keep);
    if (!picture)
        return console.Fail(picture.GetError());
    const auto written = host::WritePng(file, *picture);
    return written ? Ok : console.Fail(written.GetError());
}

ExitCode Work(const Console& console, IImage& image, const host::PictureFormat& picture, const ImageOptions& options)
{
    const auto changed = Change(console, image, options);
    if (changed != Ok)
        return changed;
    const auto saved = options.out.empty() ? Ok : Save(console, image, options.out);
    if (saved == Ok && options.info)
        PrintInfo(console, Describe(image, picture), options.json);
    return saved;
}

ExitCode Run(const ImageOptions& options)
{
    if (options.out.empty() && !options.info)
        throw CLI::RequiredError("OUT or --info");
    const Console console;
    auto picture = host::ReadPng(options.in);
    if (!picture)
        return console.Fail(picture.GetError());
    host::LibraryManager manager(options.search.MakeCatalog());
    const auto factory = manager.GetExportAs<IImageFactory>(host::ImageExport);
    if (!factory)
        return console.Fail(factory.GetError());
    const auto format = picture->GetFormat();
    const auto image =
        host::MakeImage(**factory, *std::move(picture));  // its memory is free before the image is worked on
    if (!image)
        return console.Fail(image.GetError());
    return Work(console, **image, format, options);
}

}  // namespace

void AddImageCommand(CLI::App& program, ExitCode& code)
{
    const auto options = std::make_shared<ImageOptions>();
    auto* const command =
        program.add_subcommand("image", "Turn a PNG picture into an image object, work on it, save it");
    command->add_option("IN", options->in, "The picture")->type_name("FILE")->required();
    command->add_option("OUT", options->out, "Where to save it as PNG; may be left out with --info")->type_name("FILE");
    command->add_flag("--swap-channels", options->swapChannels,
                      "Exchange red and blue; exit code 1 without 3 channels");
    command->add_flag("--flip", options->flip, "Reverse the order of the rows; exit code 1 for a single row");
    auto* const info = command->add_flag("--info", options->info, "Print what the image says of itself");
    command->add_flag("--json", options->json, "Print that as JSON")->needs(info);
    options->search.AddTo(*command);
    command->callback([options, &code] { code = Run(*options); });
}

}  // namespace tvx::tool
