// Readers and writers from the command line's options, as the window's
// panels build them from their fields.
#pragma once

#include <memory>
#include <string>

#include "cli/options.h"
#include "core/font_io.h"

// "" when this build can run the options' input and output, else a line
// saying which one is not available yet.
std::string UnavailableReason(const CliOptions& options);

// Throw the panels' parameter messages as CGeneralException.
std::unique_ptr<CFontReader> CreateReader(const CliOptions& options);
std::unique_ptr<CFontWriter> CreateWriter(const CliOptions& options);
