# The window's progress redraws and event processing during a conversion,
# measured on the real main window; built only with the desktop window.
find_package(Qt6 COMPONENTS Widgets QUIET)
if(Qt6_FOUND AND GLYPHWRIGHT_BUILD_UI)
  add_executable(window_progress ${CMAKE_CURRENT_LIST_DIR}/window_progress.cpp)
  # glyphwright_ui is defined after this folder; the name resolves at generation.
  target_link_libraries(window_progress PRIVATE glyphwright_ui)
endif()
