# What is written from the control table: controls.tsv beside the program, for user-interface tests
# and support; settings.md, the page of the documentation on the stored options; and the registry
# file with their defaults. The writer runs on the building machine, so it is built with that
# machine's compiler.
find_program(HOST_CXX NAMES g++ c++ REQUIRED)
set(control_writer "${PROJECT_BINARY_DIR}/generated/WriteControls")
set(control_files "${PROJECT_BINARY_DIR}/controls.tsv" "${PROJECT_BINARY_DIR}/settings.md"
                  "${PROJECT_BINARY_DIR}/CorvaneTo3CX-settings.reg")
add_custom_command(
    OUTPUT ${control_files}
    COMMAND "${HOST_CXX}" -std=c++20 -I "${PROJECT_SOURCE_DIR}/src" -o "${control_writer}"
            "${PROJECT_SOURCE_DIR}/cmake/WriteControls.cpp"
    COMMAND "${control_writer}" controls "${PROJECT_BINARY_DIR}/controls.tsv"
    COMMAND "${control_writer}" settings "${PROJECT_BINARY_DIR}/settings.md"
    COMMAND "${control_writer}" reg "${PROJECT_BINARY_DIR}/CorvaneTo3CX-settings.reg"
    DEPENDS "${PROJECT_SOURCE_DIR}/cmake/WriteControls.cpp"
            "${PROJECT_SOURCE_DIR}/src/settings/SettingsCatalogue.h"
            "${PROJECT_SOURCE_DIR}/src/ui/form/ControlCatalogue.h"
    COMMENT "Writing what comes from the control table"
    VERBATIM)
add_custom_target(control_table ALL DEPENDS ${control_files})
