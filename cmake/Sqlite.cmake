# SQLITE_DIR: the folder that holds sqlite3.c and sqlite3.h, fetched at the first configuration.
set(SQLITE_DIR "${PROJECT_SOURCE_DIR}/build/_deps/sqlite" CACHE PATH "Folder of the SQLite amalgamation")
if(NOT EXISTS "${SQLITE_DIR}/sqlite3.c" OR NOT EXISTS "${SQLITE_DIR}/sqlite3.h")
    execute_process(COMMAND "${PROJECT_SOURCE_DIR}/scripts/get-sqlite.sh" "${SQLITE_DIR}"
                    COMMAND_ERROR_IS_FATAL ANY)
endif()
