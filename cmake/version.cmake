# The version as the host packs it, and the header resources/version.h.
set(release_stage 3)
math(EXPR NEVREL_VERSION_WORD "${PROJECT_VERSION_MAJOR} << 19 | ${PROJECT_VERSION_MINOR} << 15 | \
  ${PROJECT_VERSION_PATCH} << 11 | ${release_stage} << 9 | ${NEVREL_BUILD_NUMBER}" OUTPUT_FORMAT HEXADECIMAL)
configure_file(${PROJECT_SOURCE_DIR}/resources/version.h.in ${CMAKE_BINARY_DIR}/resources/version.h @ONLY)
