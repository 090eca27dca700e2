# OpenImageIO as the target nevrel_openimageio. Its own package files insist on what only some of its optional parts
# need (OpenCV, Python bindings), so library and headers are looked up here.
if(NOT TARGET nevrel_openimageio)
  find_path(NEVREL_OPENIMAGEIO_INCLUDE OpenImageIO/imageio.h REQUIRED)
  find_library(NEVREL_OPENIMAGEIO OpenImageIO REQUIRED)
  find_library(NEVREL_OPENIMAGEIO_UTIL OpenImageIO_Util REQUIRED)
  add_library(nevrel_openimageio INTERFACE)
  target_include_directories(nevrel_openimageio SYSTEM INTERFACE ${NEVREL_OPENIMAGEIO_INCLUDE})
  target_link_libraries(nevrel_openimageio INTERFACE ${NEVREL_OPENIMAGEIO} ${NEVREL_OPENIMAGEIO_UTIL})
endif()
