# The window's progress redraws and event processing during a conversion;
# built only where Qt 6 is.
find_package(Qt6 COMPONENTS Widgets QUIET)
if(Qt6_FOUND)
  add_executable(window_progress ${CMAKE_CURRENT_LIST_DIR}/window_progress.cpp)
  target_link_libraries(window_progress PRIVATE glyphwright_core Qt6::Widgets)
endif()
