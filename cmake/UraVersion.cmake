# The version, for programs: the header ura_version.h, which every layer sees as one of vlib's, here and where it is
# installed.

set(generated_headers "${PROJECT_BINARY_DIR}/include")
configure_file("${PROJECT_SOURCE_DIR}/cmake/ura_version.h.in" "${generated_headers}/ura_version.h" @ONLY)
target_sources(vlib PUBLIC FILE_SET generated TYPE HEADERS BASE_DIRS "${generated_headers}"
               FILES "${generated_headers}/ura_version.h")
