// The encodings a definition file may declare beyond the parser's own (UTF-8,
// UTF-16, ISO-8859-1, US-ASCII): Shift_JIS and Windows-1252, the code pages
// the program already converts for font files.
#pragma once

#include <expat.h>

// The parser's hook for an encoding it does not know; fills info and returns
// XML_STATUS_OK for a known name, XML_STATUS_ERROR otherwise.
int XMLCALL XmlUnknownEncoding(void* data, const XML_Char* name, XML_Encoding* info);
