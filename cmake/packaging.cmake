# What `cmake --install` puts beside the programs, and the Debian package
# built from it (scripts/package.sh).
install(FILES ${CMAKE_SOURCE_DIR}/data/man/glyphwright-cli.1 DESTINATION share/man/man1)
install(FILES ${CMAKE_SOURCE_DIR}/data/completion/glyphwright-cli
  DESTINATION share/bash-completion/completions)
# The example recipe with its inputs, never what a build of it left there.
install(DIRECTORY ${CMAKE_SOURCE_DIR}/examples/ DESTINATION share/doc/glyphwright/examples
  PATTERN fonts EXCLUDE PATTERN ".*" EXCLUDE)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME glyphwright)
set(CPACK_PACKAGE_VENDOR "glyphwright")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Bitmap font converter for games (ZGLY fonts and glyph grids)")
set(CPACK_PACKAGE_DESCRIPTION
  "glyphwright turns installed fonts, glyph-grid BMP pictures, LC Font files and ZGLY files into ZGLY bitmap fonts or glyph-grid pictures: glyphwright is the window, glyphwright-cli the command line with build recipes for a game's fonts.")
set(CPACK_PACKAGE_CONTACT "glyphwright developers <glyphwright@localhost>")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION graphics)
# The run-time libraries come from what the programs link.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# Loaded at run time, so the libraries do not tell: the window's display
# plugins (a build without Qt has no window to need them).
if(TARGET glyphwright)
  set(CPACK_DEBIAN_PACKAGE_DEPENDS "qt6-qpa-plugins")
endif()
# fontconfig finds no face at all without some font installed.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "fonts-dejavu-core")
set(CPACK_STRIP_FILES ON)
include(CPack)
