#include "cli/factories.h"

#include "core/general_exception.h"
#include "zgly/alternate_char.h"
#include "zgly/zarnic_font_reader.h"
#include "zgly/zarnic_font_writer.h"

std::string UnavailableReason(const CliOptions& o) {
    switch (o.Input) {
    case InputKind::Bmp: return "the --from-bmp input is not available yet in this build";
    case InputKind::Font: return "the --from-font input is not available yet in this build";
    case InputKind::Lc: return "the --from-lc input is not available yet in this build";
    default: break;
    }
    if (o.Output == OutputKind::Bmp) return "the --to-bmp output is not available yet in this build";
    return "";
}

std::unique_ptr<CFontReader> CreateReader(const CliOptions& o) {
    if (o.Input == InputKind::Zgly) return std::make_unique<CZarnicFontReader>(o.InputPath);
    throw CGeneralException("Internal Error:\n This input is not available.");
}

std::unique_ptr<CFontWriter> CreateWriter(const CliOptions& o) {
    if (o.Output == OutputKind::Zgly) {
        // As the output panel reads its alternate character field.
        uint16_t alternate = o.AltCharGiven ? ParseAlternateChar(o.AltCharText, o.Encoding) : NotGiven;
        return std::make_unique<CZarnicFontWriter>(o.OutputPath, alternate, o.LineHeight, o.DefaultWidth,
                                                   o.DefaultLeft, o.DefaultRight, o.Encoding, o.Rotation);
    }
    throw CGeneralException("Internal Error:\n This output is not available.");
}
