# generated/Version.h: the version from project() as C++ constants.
configure_file("${CMAKE_CURRENT_LIST_DIR}/Version.h.in" "${PROJECT_BINARY_DIR}/generated/Version.h"
               @ONLY)
