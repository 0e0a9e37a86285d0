# What `cmake --install` puts beside the programs, and the Debian package
# built from it (scripts/package.sh).

# Who answers for the package; a distributor sets their own at configure time.
set(GLYPHWRIGHT_MAINTAINER "glyphwright developers <glyphwright@example.org>"
  CACHE STRING "Maintainer field and changelog signature of the Debian package")

# Man pages and the changelog go in compressed, as Debian's policy asks;
# -n keeps the archives identical from build to build.
find_program(GZIP_PROGRAM gzip REQUIRED)
set(glyphwright_pkg_dir ${CMAKE_BINARY_DIR}/package)
configure_file(${CMAKE_SOURCE_DIR}/data/package/changelog.in ${glyphwright_pkg_dir}/changelog @ONLY)
set(glyphwright_man_pages glyphwright-cli.1)
if(TARGET glyphwright)
  list(APPEND glyphwright_man_pages glyphwright.1)
endif()
set(glyphwright_gz_files)
foreach(page ${glyphwright_man_pages})
  add_custom_command(OUTPUT ${glyphwright_pkg_dir}/${page}.gz
    COMMAND ${GZIP_PROGRAM} -9nc ${CMAKE_SOURCE_DIR}/data/man/${page} > ${glyphwright_pkg_dir}/${page}.gz
    DEPENDS ${CMAKE_SOURCE_DIR}/data/man/${page} VERBATIM)
  list(APPEND glyphwright_gz_files ${glyphwright_pkg_dir}/${page}.gz)
  install(FILES ${glyphwright_pkg_dir}/${page}.gz DESTINATION share/man/man1)
endforeach()
add_custom_command(OUTPUT ${glyphwright_pkg_dir}/changelog.gz
  COMMAND ${GZIP_PROGRAM} -9nc ${glyphwright_pkg_dir}/changelog > ${glyphwright_pkg_dir}/changelog.gz
  DEPENDS ${glyphwright_pkg_dir}/changelog VERBATIM)
add_custom_target(glyphwright_package_docs ALL DEPENDS ${glyphwright_gz_files} ${glyphwright_pkg_dir}/changelog.gz)
install(FILES ${glyphwright_pkg_dir}/changelog.gz ${CMAKE_SOURCE_DIR}/data/package/copyright
  DESTINATION share/doc/glyphwright)

install(FILES ${CMAKE_SOURCE_DIR}/data/completion/glyphwright-cli
  DESTINATION share/bash-completion/completions)
# The example recipe with its inputs, never what a build of it left there.
install(DIRECTORY ${CMAKE_SOURCE_DIR}/examples/ DESTINATION share/doc/glyphwright/examples
  PATTERN fonts EXCLUDE PATTERN ".*" EXCLUDE)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME glyphwright)
set(CPACK_PACKAGE_VENDOR "glyphwright")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Bitmap font converter for games (ZGLY fonts and glyph grids)")
# The summary line comes first by itself; the lines after it stay under 80
# columns.
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION "glyphwright turns installed fonts, glyph-grid pictures, LC Font files and
ZGLY files into ZGLY bitmap fonts or editable glyph-grid pictures.
glyphwright is the window; glyphwright-cli is the command line, with build
recipes for a game's fonts.")
set(CPACK_PACKAGE_CONTACT "${GLYPHWRIGHT_MAINTAINER}")
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
