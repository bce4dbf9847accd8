# project_options: the language standard and the warnings that every target of this project takes.
add_library(project_options INTERFACE)
target_compile_features(project_options INTERFACE cxx_std_20)
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
target_compile_options(
    project_options
    INTERFACE
        -Wall
        -Wextra
        -Wpedantic
        -Wconversion
        -Wshadow
        -Werror
        $<$<COMPILE_LANGUAGE:CXX>:-Wnon-virtual-dtor>
        $<$<COMPILE_LANGUAGE:CXX>:-Wold-style-cast>)

if(WIN32)
    target_compile_definitions(
        project_options
        INTERFACE
            UNICODE
            _UNICODE
            WIN32_LEAN_AND_MEAN
            NOMINMAX
            # Windows 7, the oldest one that the program runs on.
            _WIN32_WINNT=0x0601
            WINVER=0x0601)
endif()

if(CORVANE_SANITIZE)
    set(sanitizers -fsanitize=address,undefined -fno-sanitize-recover=all)
    add_compile_options(${sanitizers} -fno-omit-frame-pointer)
    add_link_options(${sanitizers})
endif()

if(CORVANE_LIBFUZZER)
    # Tells libFuzzer what an input reaches.
    add_compile_options(-fsanitize=fuzzer-no-link)
endif()

# Shipped programs are small: optimised for size, and what nobody calls is left out. Link-time
# optimisation stays off: it ends in an internal error of MinGW's GCC 12.
if(WIN32)
    foreach(language C CXX)
        set(CMAKE_${language}_FLAGS_RELEASE "-Os -DNDEBUG")
    endforeach()
    add_compile_options($<$<CONFIG:Release>:-ffunction-sections> $<$<CONFIG:Release>:-fdata-sections>)
    add_link_options($<$<CONFIG:Release>:-Wl,--gc-sections>)
    # Symbols change no byte of the program itself; scripts/release.sh sees to it.
    if(CORVANE_SYMBOLS)
        add_compile_options(-g "-ffile-prefix-map=${PROJECT_SOURCE_DIR}/=")
    else()
        add_link_options($<$<CONFIG:Release>:-s>)
    endif()
endif()
