add_executable(freetype_baseline ${CMAKE_CURRENT_LIST_DIR}/freetype_baseline.cpp)
target_link_libraries(freetype_baseline PRIVATE Freetype::Freetype)
