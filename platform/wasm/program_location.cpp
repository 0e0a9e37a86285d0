#include "platform/program_location.h"

#include <emscripten.h>

#include <cstdlib>
#include <string>

// Under Node the program is the script the npm package runs (its data files
// sit beside it in the real file system); in a browser its data is built into
// the module under /glyphwright.
EM_JS(char*, ScriptDirectoryText, (), {
    var dir = (typeof process === "object" && typeof __dirname === "string") ? __dirname : "/glyphwright";
    var size = lengthBytesUTF8(dir) + 1;
    var text = _malloc(size);
    stringToUTF8(dir, text, size);
    return text;
});

std::filesystem::path ProgramDirectory() {
    char* text = ScriptDirectoryText();
    std::filesystem::path dir(text);
    free(text);
    return dir;
}
