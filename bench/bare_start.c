/* The start-up yardstick: a C program linked with FreeType that prints a
 * version line, as `glyphwright-cli --version` does, and does nothing else. */
#include <stdio.h>

#include <ft2build.h>
#include FT_FREETYPE_H

int main(int argc, char** argv) {
    (void)argc;
    (void)argv;
    /* Referenced so that the library is linked and loaded, never called. */
    void* volatile keep = (void*)&FT_Init_FreeType;
    (void)keep;
    printf("bare_start %d.%d.%d\n", FREETYPE_MAJOR, FREETYPE_MINOR, FREETYPE_PATCH);
    return 0;
}
