// glyphwright-cli template: a blank glyph grid for an order, ready to draw in.
#pragma once

#include <string>
#include <vector>

struct TemplateOptions {
    std::string Order;
    std::string OutPath;
    int CellWidth = 0;
    int CellHeight = 0;
    int Baseline = -1;
    int Bpp = 1;
    bool Vertical = false;
};

// args excludes the program name. Throws CUsageError.
TemplateOptions ParseTemplateCommand(const std::vector<std::string>& args);
// Throws CGeneralException with the message of the failed check or write.
void RunTemplateCommand(const TemplateOptions& options);
