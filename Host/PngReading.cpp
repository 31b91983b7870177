// SPDX-License-Identifier: MIT
#include "Host/ModuleFile.h"
#include "Host/PngFile.h"
#include "Host/PngRun.h"

#include <array>
#include <fstream>
#include <new>
#include <string>
#include <system_error>

namespace tvx::host
{

namespace
{

constexpr std::size_t SignatureSize = 8;
constexpr png_alloc_size_t MaxChunk = 16 * 1024 * 1024;  // in memory

// Reads one picture whose signature has been read: the header, what the pixels will be like, the pixels.
class PngReader final : public PngRun
{
public:
    explicit PngReader(std::istream& stream) : stream_(stream) {}
    ~PngReader() { png_destroy_read_struct(&png_, &info_, nullptr); }

    void ReadHeader();
    void Expand();
    void ReadPixels();

    std::uint32_t GetWidth() const { return png_get_image_width(png_, info_); }
    std::uint32_t GetHeight() const { return png_get_image_height(png_, info_); }

    // What the pixels are like, once they have been expanded.
    PictureFormat GetFormat() const
    {
        return {GetWidth(), GetHeight(), png_get_channels(png_, info_), png_get_bit_depth(png_, info_)};
    }

    // Where the pixels go, borrowed.
    void SetPicture(Picture& picture) { picture_ = &picture; }

private:
    static void OnRead(png_structp png, png_bytep bytes, std::size_t count);

    void Distrust();

    std::istream& stream_;
    Picture* picture_ = nullptr;
    int passes_ = 1;
};

void PngReader::OnRead(png_structp png, png_bytep bytes, std::size_t count)
{
    auto& stream = *static_cast<std::istream*>(png_get_io_ptr(png));
    stream.read(reinterpret_cast<char*>(bytes), static_cast<std::streamsize>(count));
    if (static_cast<std::size_t>(stream.gcount()) != count)
        png_error(png, "the file ends too early");
}

void PngReader::ReadHeader()
{
    png_ = png_create_read_struct(PNG_LIBPNG_VER_STRING, this, &OnError, &OnWarning);
    info_ = png_ == nullptr ? nullptr : png_create_info_struct(png_);
    if (info_ == nullptr)
        Leave("out of memory");
    png_set_read_fn(png_, &stream_, &OnRead);
    png_set_sig_bytes(png_, SignatureSize);
    Distrust();
    png_read_info(png_, info_);
}

// The sides are left to whoever asks for them: it can say what is wrong. Of the chunks that are known only those that make
// the pixels are looked into.
void PngReader::Distrust()
{
    png_set_user_limits(png_, PNG_UINT_31_MAX, PNG_UINT_31_MAX);
    png_set_chunk_malloc_max(png_, MaxChunk);
    png_set_crc_action(png_, PNG_CRC_ERROR_QUIT, PNG_CRC_ERROR_QUIT);
    png_set_keep_unknown_chunks(png_, PNG_HANDLE_CHUNK_NEVER, nullptr, -1);
}

void PngReader::Expand()
{
    const auto type = png_get_color_type(png_, info_);
    const bool hasAlpha = (type & PNG_COLOR_MASK_ALPHA) != 0 || png_get_valid(png_, info_, PNG_INFO_tRNS) != 0;
    png_set_expand(png_);
    if (hasAlpha && (type & PNG_COLOR_MASK_COLOR) == 0)
        png_set_gray_to_rgb(png_);
    SwapWhereNeeded(png_get_bit_depth(png_, info_));
    passes_ = png_set_interlace_handling(png_);
    png_read_update_info(png_, info_);
}

void PngReader::ReadPixels()
{
    for (int pass = 0; pass < passes_; ++pass)
    {
        for (std::size_t y = 0; y < picture_->GetFormat().height; ++y)
            png_read_row(png_, reinterpret_cast<png_bytep>(picture_->GetRow(y).data()), nullptr);
    }
    png_read_end(png_, nullptr);
}

bool ReadSignature(std::istream& stream)
{
    std::array<char, SignatureSize> bytes{};
    stream.read(bytes.data(), bytes.size());
    return stream.gcount() == SignatureSize &&
           png_sig_cmp(reinterpret_cast<png_const_bytep>(bytes.data()), 0, SignatureSize) == 0;
}

Error Fail(const std::filesystem::path& file, const std::istream& stream, const std::string& what)
{
    if (stream.bad())
        return MakeError(ErrorKind::CannotRead, DisplayName(file) + " cannot be read");
    return MakeError(ErrorKind::BadPicture, DisplayName(file) + what);
}

Outcome<Picture> Decode(const std::filesystem::path& file, std::istream& stream)
{
    if (!ReadSignature(stream))
        return Fail(file, stream, " is no PNG file");
    const std::string broken = " is a broken PNG file: ";
    PngReader reader(stream);
    if (!reader.Do(&PngReader::ReadHeader))
        return Fail(file, stream, broken + reader.GetProblem());
    if (!IsWithinLimits(reader.GetWidth(), reader.GetHeight()))
        return Fail(file, stream,
                    " has too many pixels: " + std::to_string(reader.GetWidth()) + " x " +
                        std::to_string(reader.GetHeight()));
    if (!reader.Do(&PngReader::Expand))
        return Fail(file, stream, broken + reader.GetProblem());
    Picture picture(reader.GetFormat());
    reader.SetPicture(picture);
    if (!reader.Do(&PngReader::ReadPixels))
        return Fail(file, stream, broken + reader.GetProblem());
    return picture;
}

}  // namespace

Outcome<Picture> ReadPng(const std::filesystem::path& file)
{
    std::error_code failed;
    if (std::filesystem::is_directory(file, failed))
        return MakeError(ErrorKind::CannotRead, DisplayName(file) + " is a folder");
    std::ifstream stream(file, std::ios::binary);
    if (!stream)
        return MakeError(ErrorKind::CannotRead,
                         DisplayName(file) +
                             (std::filesystem::exists(file, failed) ? " cannot be read" : " does not exist"));
    try
    {
        return Decode(file, stream);
    }
    catch (const std::bad_alloc&)
    {
        return MakeError(ErrorKind::BadPicture, DisplayName(file) + " does not fit into memory");
    }
}

}  // namespace tvx::host
