# corvane_add_resources(<target> <description>): the icon, the manifest and the version resource of
# the program.
set(resources "${PROJECT_SOURCE_DIR}/src/resources")
set(VERSION_NUMBERS
    "${PROJECT_VERSION_MAJOR},${PROJECT_VERSION_MINOR},${PROJECT_VERSION_PATCH},${PROJECT_VERSION_TWEAK}")
if(CMAKE_SIZEOF_VOID_P EQUAL 8)
    set(MANIFEST_ARCHITECTURE amd64)
else()
    set(MANIFEST_ARCHITECTURE x86)
endif()
configure_file("${resources}/CorvaneTo3CX.manifest.in"
               "${PROJECT_BINARY_DIR}/generated/CorvaneTo3CX.manifest" @ONLY NEWLINE_STYLE LF)

function(corvane_add_resources PROGRAM_NAME PROGRAM_DESCRIPTION)
    set(rc "${PROJECT_BINARY_DIR}/generated/${PROGRAM_NAME}.rc")
    configure_file("${resources}/CorvaneTo3CX.rc.in" "${rc}" @ONLY NEWLINE_STYLE LF)
    target_sources(${PROGRAM_NAME} PRIVATE "${rc}")
    set_source_files_properties(
        "${rc}"
        TARGET_DIRECTORY ${PROGRAM_NAME}
        PROPERTIES
            INCLUDE_DIRECTORIES
            "${PROJECT_SOURCE_DIR}/src/resources;${PROJECT_BINARY_DIR}/generated"
            OBJECT_DEPENDS
            "${PROJECT_SOURCE_DIR}/src/resources/CorvaneTo3CX.ico;${PROJECT_BINARY_DIR}/generated/CorvaneTo3CX.manifest"
    )
endfunction()
