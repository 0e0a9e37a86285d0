#include "cli/preview_command.h"

#include <new>

#include "cli/options.h"
#include "core/general_exception.h"
#include "zgly/font_block_set.h"
#include "zgly/png_writer.h"
#include "zgly/text_renderer.h"

int RunPreviewCommand(const CliOptions& options, std::FILE* err) {
    try {
        CFontBlockSet set;
        LoadZglyForPreview(options.InfoPath, set);
        CTextRenderer renderer(set);
        CPreviewOptions look;
        look.Zoom = options.Zoom;
        look.Guides = options.Guides;
        look.Ink = options.Ink;
        look.Paper = options.Paper;
        const CRgbImage image = options.Sheet ? renderer.DrawSheet(look) : renderer.DrawText(options.PreviewText, look);
        WritePng(options.PngPath, image);
        return 0;
    } catch (const CGeneralException& e) {
        std::fprintf(err, "%s\n", e.Message.c_str());
        return 1;
    } catch (const std::bad_alloc&) {
        std::fprintf(err, "Internal Error:\n Out of memory.\n");
        return 1;
    }
}
