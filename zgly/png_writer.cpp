#include "zgly/png_writer.h"

#include <png.h>

#include <cstdint>
#include <string>
#include <vector>

#include "core/general_exception.h"
#include "zgly/binary_file.h"
#include "zgly/text_renderer.h"

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

// Encodes into memory; false with sink.Error set when libpng fails. Kept free
// of objects with destructors between setjmp and the end, for longjmp.
bool Encode(const CRgbImage& image, const std::vector<png_bytep>& rows, CPngSink& sink) {
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, &sink, OnError, OnWarning);
    if (!png) return false;
    png_infop info = png_create_info_struct(png);
    if (!info || setjmp(png_jmpbuf(png))) {
        png_destroy_write_struct(&png, info ? &info : nullptr);
        return false;
    }
    png_set_write_fn(png, &sink, AppendBytes, NoFlush);
    png_set_IHDR(png, info, static_cast<png_uint_32>(image.Width), static_cast<png_uint_32>(image.Height), 8,
                 PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_write_info(png, info);
    png_write_image(png, const_cast<png_bytepp>(rows.data()));
    png_write_end(png, nullptr);
    png_destroy_write_struct(&png, &info);
    return true;
}

}  // namespace

void WritePng(const std::filesystem::path& path, const CRgbImage& image) {
    if (image.Width <= 0 || image.Height <= 0 ||
        image.Rgb.size() != static_cast<std::size_t>(image.Width) * image.Height * 3)
        ThrowError("Internal Error:\n Empty or malformed picture for %s.", path);
    std::vector<png_bytep> rows(static_cast<std::size_t>(image.Height));
    for (int y = 0; y < image.Height; ++y)
        rows[y] = const_cast<png_bytep>(image.Rgb.data() + static_cast<std::size_t>(y) * image.Width * 3);
    CPngSink sink;
    if (!Encode(image, rows, sink)) ThrowError("Internal Error:\n PNG encoding failed (%s).", sink.Error);
    CBinaryFile file(path);
    file.Open(CBinaryFile::Mode::Write);
    file.Write(sink.Bytes.data(), static_cast<uint32_t>(sink.Bytes.size()));
    file.Close();
}
