#include "cli/preview_command.h"

#include "cli/options.h"
#include "core/general_exception.h"
#include "zgly/font_block_set.h"
#include "zgly/png_writer.h"
#include "zgly/text_renderer.h"

void RunPreviewCommand(const CliOptions& options) {
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
}
