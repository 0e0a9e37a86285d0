// Readers and writers from the command line's options, as the window's
// panels build them from their fields.
#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "cli/options.h"
#include "cli/run_summary.h"
#include "core/font_io.h"

// An .xlor path as given, or the shipped order of that name (with or without
// its extension); anything else is returned as given for the path checks.
std::filesystem::path ResolveGlyphOrder(const std::string& text);

// Throw the panels' parameter messages as CGeneralException.
// One source's reader, as the input panel builds it.
std::unique_ptr<CFontReader> CreateSourceReader(const CliSource& source);
// The run's reader: the one source's, or all sources merged (first one wins).
// summary gets the source names and later the glyphs each gave.
std::unique_ptr<CFontReader> CreateReader(const CliOptions& options, CRunSummary& summary);
std::unique_ptr<CFontWriter> CreateWriter(const CliOptions& options);
