#include "cli/preview_command.h"

#include <cstdio>

#include "cli/options.h"
#include "cli/preview_missing.h"
#include "core/general_exception.h"
#include "zgly/font_block_set.h"
#include "preview/png_writer.h"
#include "preview/text_renderer.h"

void RunPreviewCommand(const CliOptions& options) {
    CFontBlockSet set;
    LoadZglyForPreview(options.InfoPath, set);
    CTextRenderer renderer(set);
    CPreviewOptions look;
    look.Zoom = options.Zoom;
    look.Guides = options.Guides;
    look.Ink = options.Ink;
    look.Paper = options.Paper;
    if (!options.Sheet)
        for (const auto& warning : MissingCharWarnings(set, options.PreviewText))
            std::fprintf(stderr, "Warning: %s\n", warning.c_str());
    const CRgbImage image = options.Sheet ? renderer.DrawSheet(look) : renderer.DrawText(options.PreviewText, look);
    WritePng(options.PngPath, image);
}
