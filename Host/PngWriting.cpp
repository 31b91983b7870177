// SPDX-License-Identifier: MIT
#include "Host/ModuleFile.h"
#include "Host/PngFile.h"
#include "Host/PngRun.h"
#include "Host/TextFile.h"

#include <sstream>
#include <string_view>

namespace tvx::host
{

namespace
{

// Writes one picture into memory.
class PngWriter final : public PngRun
{
public:
    explicit PngWriter(const Picture& picture) : picture_(picture) {}
    ~PngWriter() { png_destroy_write_struct(&png_, &info_); }

    void Write();

    std::string_view GetBytes() const { return stream_.view(); }

private:
    static void OnWrite(png_structp png, png_bytep bytes, std::size_t count);

    void WriteHeader();

    const Picture& picture_;
    std::ostringstream stream_;  // no exception may cross the library, and a stream throws none
};

void PngWriter::OnWrite(png_structp png, png_bytep bytes, std::size_t count)
{
    auto& stream = *static_cast<std::ostream*>(png_get_io_ptr(png));
    if (!stream.write(reinterpret_cast<const char*>(bytes), static_cast<std::streamsize>(count)))
        png_error(png, "out of memory");
}

void PngWriter::Write()
{
    png_ = png_create_write_struct(PNG_LIBPNG_VER_STRING, this, &OnError, &OnWarning);
    info_ = png_ == nullptr ? nullptr : png_create_info_struct(png_);
    if (info_ == nullptr)
        Leave("out of memory");
    png_set_write_fn(png_, static_cast<std::ostream*>(&stream_), &OnWrite, [](png_structp) {});
    WriteHeader();
    for (std::size_t y = 0; y < picture_.GetFormat().height; ++y)
        png_write_row(png_, reinterpret_cast<png_const_bytep>(picture_.GetRow(y).data()));
    png_write_end(png_, nullptr);
}

void PngWriter::WriteHeader()
{
    constexpr int types[] = {0, PNG_COLOR_TYPE_GRAY, 0, PNG_COLOR_TYPE_RGB, PNG_COLOR_TYPE_RGB_ALPHA};
    const auto& format = picture_.GetFormat();
    png_set_user_limits(png_, MaxPictureSide, MaxPictureSide);
    png_set_IHDR(png_, info_, format.width, format.height, static_cast<int>(format.bits), types[format.channels],
                 PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_write_info(png_, info_);
    SwapWhereNeeded(format.bits);
}

}  // namespace

Outcome<std::size_t> WritePng(const std::filesystem::path& file, const Picture& picture)
{
    if (!IsSound(picture.GetFormat()))
        return MakeError(ErrorKind::BadPicture, DisplayName(file) + " cannot be written: it would be no picture");
    PngWriter writer(picture);
    if (!writer.Do(&PngWriter::Write))
        return MakeError(ErrorKind::BadPicture, DisplayName(file) + " cannot be written: " + writer.GetProblem());
    return WriteTextFile(file, writer.GetBytes());
}

}  // namespace tvx::host
