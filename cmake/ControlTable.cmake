# controls.tsv beside the program: the control table for user-interface tests and support. The
# writer runs on the building machine, so it is built with that machine's compiler.
find_program(HOST_CXX NAMES g++ c++ REQUIRED)
set(control_writer "${PROJECT_BINARY_DIR}/generated/WriteControls")
add_custom_command(
    OUTPUT "${PROJECT_BINARY_DIR}/controls.tsv"
    COMMAND "${HOST_CXX}" -std=c++20 -I "${PROJECT_SOURCE_DIR}/src" -o "${control_writer}"
            "${PROJECT_SOURCE_DIR}/cmake/WriteControls.cpp"
    COMMAND "${control_writer}" > "${PROJECT_BINARY_DIR}/controls.tsv"
    DEPENDS "${PROJECT_SOURCE_DIR}/cmake/WriteControls.cpp"
            "${PROJECT_SOURCE_DIR}/src/ui/form/ControlCatalogue.h"
    COMMENT "Writing controls.tsv"
    VERBATIM)
add_custom_target(control_table ALL DEPENDS "${PROJECT_BINARY_DIR}/controls.tsv")
