// Xerces-C is initialised once for the whole test program.
#include "xmlfiles/glyph_order_files.h"

namespace {
CXmlPlatform XmlPlatform;
}
