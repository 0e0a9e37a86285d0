#include "preview/png_writer.h"

#include <png.h>

#include <cstdint>
#include <string>
#include <vector>

#include "core/general_exception.h"
#include "zgly/binary_file.h"
#include "preview/text_renderer.h"

namespace {

struct CPngSink {
    std::vector<uint8_t> Bytes;
    std::string Error;
};

void AppendBytes(png_structp png, png_bytep data, png_size_t length) {
    auto* sink = static_cast<CPngSink*>(png_get_io_ptr(png));
    sink->Bytes.insert(sink->Bytes.end(), data, data + length);
}

void NoFlush(png_structp) {}

void OnError(png_structp png, png_const_charp message) {
    auto* sink = static_cast<CPngSink*>(png_get_error_ptr(png));
    sink->Error = message ? message : "unknown";
    png_longjmp(png, 1);
}

void OnWarning(png_structp, png_const_charp) {}

// The text chunks point into the picture's strings. They are built outside
// Encode, whose setjmp must not share a function with objects that unwind.
std::vector<png_text> TextChunks(const CPngRows& picture) {
    std::vector<png_text> texts(picture.Text.size());
    for (std::size_t i = 0; i < texts.size(); ++i) {
        texts[i].compression = PNG_TEXT_COMPRESSION_NONE;
        texts[i].key = const_cast<char*>(picture.Text[i].first.c_str());
        texts[i].text = const_cast<char*>(picture.Text[i].second.c_str());
    }
    return texts;
}

// Encodes into memory; false with sink.Error set when libpng fails. Kept free
// of objects with destructors between setjmp and the end, for longjmp.
bool Encode(const CPngRows& picture, const std::vector<png_color>& palette, std::vector<png_text>& texts,
            CPngSink& sink) {
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, &sink, OnError, OnWarning);
    if (!png) return false;
    png_infop info = png_create_info_struct(png);
    if (!info || setjmp(png_jmpbuf(png))) {
        png_destroy_write_struct(&png, info ? &info : nullptr);
        return false;
    }
    png_set_write_fn(png, &sink, AppendBytes, NoFlush);
    png_set_IHDR(png, info, static_cast<png_uint_32>(picture.Width), static_cast<png_uint_32>(picture.Height), 8,
                 palette.empty() ? PNG_COLOR_TYPE_RGB : PNG_COLOR_TYPE_PALETTE, PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    if (!palette.empty()) png_set_PLTE(png, info, palette.data(), static_cast<int>(palette.size()));
    if (!texts.empty()) png_set_text(png, info, texts.data(), static_cast<int>(texts.size()));
    png_write_info(png, info);
    png_write_image(png, const_cast<png_bytepp>(picture.Rows.data()));
    png_write_end(png, nullptr);
    png_destroy_write_struct(&png, &info);
    return true;
}

}  // namespace

void WritePngRows(const std::filesystem::path& path, const CPngRows& picture) {
    if (picture.Width <= 0 || picture.Height <= 0 || picture.Rows.size() != static_cast<std::size_t>(picture.Height) ||
        picture.Palette.size() > 256)
        ThrowError("Internal Error:\n Empty or malformed picture for %s.", path);
    std::vector<png_color> palette;
    for (uint32_t c : picture.Palette)
        palette.push_back(
            png_color{static_cast<png_byte>(c >> 16), static_cast<png_byte>(c >> 8), static_cast<png_byte>(c)});
    CPngSink sink;
    std::vector<png_text> texts = TextChunks(picture);
    if (!Encode(picture, palette, texts, sink)) ThrowError("Internal Error:\n PNG encoding failed (%s).", sink.Error);
    CBinaryFile file(path);
    file.Open(CBinaryFile::Mode::Write);
    file.Write(sink.Bytes.data(), static_cast<uint32_t>(sink.Bytes.size()));
    file.Close();
}

void WritePng(const std::filesystem::path& path, const CRgbImage& image) {
    if (image.Width <= 0 || image.Height <= 0 ||
        image.Rgb.size() != static_cast<std::size_t>(image.Width) * image.Height * 3)
        ThrowError("Internal Error:\n Empty or malformed picture for %s.", path);
    CPngRows picture;
    picture.Width = image.Width;
    picture.Height = image.Height;
    for (int y = 0; y < image.Height; ++y)
        picture.Rows.push_back(image.Rgb.data() + static_cast<std::size_t>(y) * image.Width * 3);
    WritePngRows(path, picture);
}
