# What is written from the control table: controls.tsv beside the program, for user-interface tests
# and support, and settings.md, the page of the documentation on the stored options. The writer runs
# on the building machine, so it is built with that machine's compiler.
find_program(HOST_CXX NAMES g++ c++ REQUIRED)
set(control_writer "${PROJECT_BINARY_DIR}/generated/WriteControls")
add_custom_command(
    OUTPUT "${PROJECT_BINARY_DIR}/controls.tsv" "${PROJECT_BINARY_DIR}/settings.md"
    COMMAND "${HOST_CXX}" -std=c++20 -I "${PROJECT_SOURCE_DIR}/src" -o "${control_writer}"
            "${PROJECT_SOURCE_DIR}/cmake/WriteControls.cpp"
    COMMAND "${control_writer}" controls > "${PROJECT_BINARY_DIR}/controls.tsv"
    COMMAND "${control_writer}" settings > "${PROJECT_BINARY_DIR}/settings.md"
    DEPENDS "${PROJECT_SOURCE_DIR}/cmake/WriteControls.cpp"
            "${PROJECT_SOURCE_DIR}/src/settings/SettingsCatalogue.h"
            "${PROJECT_SOURCE_DIR}/src/ui/form/ControlCatalogue.h"
    COMMENT "Writing controls.tsv and settings.md"
    VERBATIM)
add_custom_target(control_table ALL
    DEPENDS "${PROJECT_BINARY_DIR}/controls.tsv" "${PROJECT_BINARY_DIR}/settings.md")
