// glyphwright-cli template: a blank glyph grid for an order, ready to draw in.
#pragma once

#include <string>
#include <vector>

#include "bmpfont/grid_template.h"

struct TemplateOptions {
    std::string Order;
    std::string OutPath;
    GridTemplateSettings Grid;
};

// args excludes the program name. Throws CUsageError.
TemplateOptions ParseTemplateCommand(const std::vector<std::string>& args);
// Throws CGeneralException with the message of the failed check or write.
void RunTemplateCommand(const TemplateOptions& options);
