# Write and read of a 10 000-glyph synthetic ZGLY font; also the demo's font maker.
add_executable(zgly_roundtrip
  ${CMAKE_CURRENT_LIST_DIR}/zgly_roundtrip.cpp
  ${CMAKE_SOURCE_DIR}/tests/zgly/synthetic_font.cpp)
target_include_directories(zgly_roundtrip PRIVATE ${CMAKE_SOURCE_DIR}/tests ${CMAKE_SOURCE_DIR}/tests/zgly)
target_link_libraries(zgly_roundtrip PRIVATE glyphwright_cli)
