#include "cli/cli_front_end.h"

#include "cli/factories.h"

std::unique_ptr<CFontReader> CCliFrontEnd::CreateReader() { return ::CreateReader(Options); }
std::unique_ptr<CFontWriter> CCliFrontEnd::CreateWriter() { return ::CreateWriter(Options); }
