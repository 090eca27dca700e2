include(${CMAKE_CURRENT_LIST_DIR}/nevrelTargets.cmake)
