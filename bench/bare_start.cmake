# A bare C program linked with FreeType: the start-up yardstick of --version.
enable_language(C)
add_executable(bare_start ${CMAKE_CURRENT_LIST_DIR}/bare_start.c)
target_link_libraries(bare_start PRIVATE Freetype::Freetype)
